#include "cli/options/used_settings.h"

#include "base/constants.h"
#include "base/numbers.h"
#include "base/settings_table.h"

#include <utility>
#include <vector>

namespace lintara::cli {
namespace {

Text Decimal(std::int32_t number) {
    Text text;
    AppendDecimal(text, number);
    return text;
}

Text CheckBox(bool checked) {
    return checked ? u"1" : u"0";
}

}  // namespace

Result<void> SaveUsedSettings(SettingsStore& store, const InsertionOptions& used) {
    std::vector<std::pair<TextView, Text>> values = {
        {constants::InsertLineNumbersKey, CheckBox(used.work.lineNumbers)},
        {constants::InsertErrorHandlersKey, CheckBox(used.work.errorHandlers)},
    };
    // Numbers by module use neither base nor step.
    if (used.work.lineNumbers && used.numbers.numbering == Numbering::Procedure) {
        values.emplace_back(constants::LineNumberBaseKey, Decimal(used.numbers.base));
        values.emplace_back(constants::LineNumberStepKey, Decimal(used.numbers.step));
    }
    if (used.work.errorHandlers) {
        values.emplace_back(constants::ErrorHandlerLabelKey, used.handler.label);
        values.emplace_back(constants::ErrorHandlerCodeKey, used.handler.code);
    }
    for (const auto& [key, value] : values) {
        if (auto saved = store.Save(FindSetting(key)->name(), value); !saved) {
            return saved;
        }
    }
    return {};
}

}  // namespace lintara::cli
