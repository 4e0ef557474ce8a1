// The user's settings with another label for error handlers laid over them: the library reads the label that
// it takes handlers out by from there.
#pragma once

#include "base/constants.h"
#include "base/settings_store.h"

#include <memory>

namespace lintara::cli {

class LabelSettings final : public SettingsStore {
  public:
    // `below` may be null: then nothing but the label is stored.
    LabelSettings(std::shared_ptr<SettingsStore> below, Text label)
        : below_(std::move(below)), label_(std::move(label)) {}

    void SetLabel(TextView label) { label_ = label; }

    [[nodiscard]] Result<std::optional<Text>> Find(SettingName name) override {
        if (name.application == constants::SettingsApplication &&
            name.section == constants::CodeAutomationSection && name.key == constants::ErrorHandlerLabelKey) {
            return label_;
        }
        return below_ == nullptr ? std::nullopt : below_->Find(name);
    }

    // What is saved goes below; the label that is laid over it stays.
    [[nodiscard]] Result<void> Save(SettingName name, TextView value) override {
        if (below_ == nullptr) {
            return Failure(ErrorNumber::ObjectNotSet, "there is no settings store");
        }
        return below_->Save(name, value);
    }

  private:
    std::shared_ptr<SettingsStore> below_;
    Text label_;
};

}  // namespace lintara::cli
