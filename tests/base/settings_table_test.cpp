#include "base/settings_table.h"

#include "base/constants.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

namespace lintara {
namespace {

class MemoryStore final : public SettingsStore {
  public:
    Result<std::optional<Text>> Find(SettingName name) override {
        const auto found = values_.find(KeyOf(name));
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }
    Result<void> Save(SettingName name, TextView value) override {
        values_.insert_or_assign(KeyOf(name), Text(value));
        return {};
    }

  private:
    static std::tuple<Text, Text, Text> KeyOf(SettingName name) {
        return {Text(name.application), Text(name.section), Text(name.key)};
    }

    std::map<std::tuple<Text, Text, Text>, Text> values_;
};

TEST(SettingsTable, IsTheOneThatStoredSettingsFollow) {
    using enum SettingKind;
    const SettingInfo expected[] = {
        {u"InsertLN", u"CodeAutomation", u"1", CheckBox},
        {u"InsertEH", u"CodeAutomation", u"1", CheckBox},
        {u"LNBase", u"CodeAutomation", u"10000", WholeNumber},
        {u"LNStep", u"CodeAutomation", u"5", WholeNumber},
        {u"EHLabel", u"CodeAutomation", u"hErr", Label},
        {u"EHCode", u"CodeAutomation", constants::DefaultErrorHandlerCode, FreeText},
        {u"RemoveLN", u"CodeAutomation", u"1", CheckBox},
        {u"RemoveEH", u"CodeAutomation", u"1", CheckBox},
        {u"LastCustomCode", u"CodeAutomation", u"", FreeText},
        {u"UseDelimiters", u"CodeAutomation", u"1", CheckBox},
        {u"CodeDbPath", u"Assistants", u"", FreeText},
    };
    EXPECT_TRUE(std::ranges::equal(SettingsTable(), expected));
}

TEST(SettingsTable, FindsByKey) {
    std::set<TextView> keys;
    for (const SettingInfo& setting : SettingsTable()) {
        EXPECT_EQ(FindSetting(setting.key), &setting);
        EXPECT_TRUE(keys.insert(setting.key).second);
        EXPECT_EQ(setting.name().application, u"Tarnwick");
    }
    EXPECT_EQ(FindSetting(u"insertln"), nullptr);
    EXPECT_EQ(FindSetting(u""), nullptr);
}

TEST(SettingsTable, TellsWhatAFirstRunShows) {
    MemoryStore store;
    for (const SettingInfo& setting : SettingsTable()) {
        if (setting.kind == SettingKind::CheckBox) {
            EXPECT_EQ(ReadCheckBox(store, setting.name()), 1);
        }
    }
    EXPECT_EQ(ReadSetting(store, *FindSetting(u"LNBase")), u"10000");
    EXPECT_EQ(ReadSetting(store, *FindSetting(u"LNStep")), u"5");
    EXPECT_EQ(ReadSetting(store, *FindSetting(u"EHLabel")), u"hErr");
    EXPECT_EQ(ReadSetting(store, *FindSetting(u"EHCode")), constants::DefaultErrorHandlerCode);
    EXPECT_EQ(ReadSetting(store, *FindSetting(u"LastCustomCode")), u"");
}

TEST(SettingsTable, TheBoxesOfTheRemoveDialogAreStoredUnderEachOthersKey) {
    MemoryStore store;
    const auto name = [](TextView key) { return FindSetting(key)->name(); };
    ASSERT_TRUE(SaveCheckBox(store, name(constants::RemoveErrorHandlersKey), 0));
    ASSERT_TRUE(SaveCheckBox(store, name(constants::RemoveLineNumbersKey), 1));
    EXPECT_EQ(store.Find({u"Tarnwick", u"CodeAutomation", u"RemoveLN"}), u"0");
    EXPECT_EQ(store.Find({u"Tarnwick", u"CodeAutomation", u"RemoveEH"}), u"1");
}

TEST(CheckBoxSetting, IsTheNumberThatIsStored) {
    struct Case {
        Text stored;
        Result<std::int32_t> value;
    };
    const auto mismatch = Result<std::int32_t>(std::unexpect, HostError{ErrorNumber::TypeMismatch, {}});
    const auto overflow = Result<std::int32_t>(std::unexpect, HostError{ErrorNumber::Overflow, {}});
    const Case cases[] = {
        {u"0", 0},
        {u"1", 1},
        {u" 1 ", 1},
        {u"2", 2},
        {u"-1", -1},
        {u"0.4", 0},
        {u"true", 1},
        {u"false", 0},
        {u"True", 1},
        {u"FALSE", 0},
        {u"truer", mismatch},
        {u"true ", mismatch},
        {u"", mismatch},
        {u"yes", mismatch},
        {u"&H1", 1},
        {u"1x", mismatch},
        {u"99999", overflow},
    };
    const SettingName name = SettingsTable()[0].name();
    for (const Case& c : cases) {
        MemoryStore store;
        ASSERT_TRUE(store.Save(name, c.stored));
        const Result<std::int32_t> value = ReadCheckBox(store, name);
        ASSERT_EQ(value.has_value(), c.value.has_value()) << std::string(c.stored.begin(), c.stored.end());
        if (value) {
            EXPECT_EQ(*value, *c.value);
        } else {
            EXPECT_EQ(value.error().number, c.value.error().number);
        }
    }
}

TEST(CheckBoxSetting, IsStoredAsDecimalText) {
    MemoryStore store;
    const SettingName name = SettingsTable()[0].name();
    for (const auto& [value, text] : {std::pair(0, u"0"), std::pair(1, u"1"), std::pair(-1, u"-1")}) {
        ASSERT_TRUE(SaveCheckBox(store, name, value));
        EXPECT_EQ(store.Find(name), text);
        EXPECT_EQ(ReadCheckBox(store, name), value);
    }
}

class UnreadableStore final : public SettingsStore {
  public:
    Result<std::optional<Text>> Find(SettingName) override { return Denied(); }
    Result<void> Save(SettingName, TextView) override { return Denied(); }

  private:
    static std::unexpected<HostError> Denied() { return Failure(ErrorNumber::HostFailure, "denied"); }
};

TEST(CheckBoxSetting, IsCheckedWhenTheStoreCannotBeRead) {
    UnreadableStore store;
    EXPECT_EQ(ReadCheckBox(store, SettingsTable()[0].name()), 1);
    EXPECT_FALSE(SaveCheckBox(store, SettingsTable()[0].name(), 0));
    EXPECT_EQ(ReadSetting(store, *FindSetting(u"EHLabel")), u"hErr");
}

}  // namespace
}  // namespace lintara
