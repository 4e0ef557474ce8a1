#ifdef _WIN32

#include "platform/registry_settings.h"

#include "platform/registry_key.h"
#include "platform/wide_text.h"

#include <array>
#include <string>

#include <gtest/gtest.h>

namespace lintara::platform {
namespace {

constexpr SettingName label{.application = u"Lintara test", .section = u"CodeAutomation", .key = u"EHLabel"};
constexpr const wchar_t* area = L"Software\\VB and VBA Program Settings\\Lintara test";

class RegistrySettingsOfATest : public testing::Test {
  protected:
    ~RegistrySettingsOfATest() override { ::RegDeleteTreeW(HKEY_CURRENT_USER, area); }

    static RegistryKey Section() {
        RegistryKey key;
        EXPECT_EQ(key.Create(HKEY_CURRENT_USER, std::wstring(area) + L"\\CodeAutomation", KEY_ALL_ACCESS),
                  ERROR_SUCCESS);
        return key;
    }

    RegistrySettings settings_;
};

TEST_F(RegistrySettingsOfATest, ReadAsAbsentBeforeTheyAreSaved) {
    EXPECT_EQ(settings_.Find(label), std::nullopt);
    EXPECT_EQ(settings_.Get(label, u"hErr"), u"hErr");
}

TEST_F(RegistrySettingsOfATest, GiveBackWhatWasSaved) {
    const Text texts[] = {u"",       u"hErr",         u"two\r\nlines \t ", u"\u00e9\u4e2d\xD83D\xDE00",
                          u"\xDC00", Text(255, u'x'), Text(256, u'x'),     Text(70000, u'y')};
    for (const Text& text : texts) {
        ASSERT_TRUE(settings_.Save(label, text));
        EXPECT_EQ(settings_.Find(label), text);
    }
}

TEST_F(RegistrySettingsOfATest, LieWhereTheLanguageKeepsItsOwn) {
    ASSERT_TRUE(settings_.Save(label, u"hErr"));
    std::array<wchar_t, 16> text{};
    DWORD bytes = sizeof text;
    DWORD type = 0;
    ASSERT_EQ(::RegGetValueW(HKEY_CURRENT_USER,
                             L"Software\\VB and VBA Program Settings\\Lintara test\\CodeAutomation",
                             L"EHLabel", RRF_RT_ANY, &type, text.data(), &bytes),
              ERROR_SUCCESS);
    EXPECT_EQ(type, DWORD{REG_SZ});
    EXPECT_EQ(FromWide(text.data()), u"hErr");
    EXPECT_EQ(bytes, 10U);  // with the zero at its end, and nothing behind it
}

TEST_F(RegistrySettingsOfATest, SectionsAndKeysAreOfOneLetterCase) {
    ASSERT_TRUE(settings_.Save(label, u"hErr"));
    EXPECT_EQ(settings_.Find({u"lintara TEST", u"codeautomation", u"ehlabel"}), u"hErr");
}

TEST_F(RegistrySettingsOfATest, AValueOfAnotherTypeIsAbsent) {
    const RegistryKey section = Section();
    const DWORD number = 5;
    ASSERT_EQ(::RegSetValueExW(section.get(), L"EHLabel", 0, REG_DWORD,
                               reinterpret_cast<const BYTE*>(&number), sizeof number),
              ERROR_SUCCESS);
    EXPECT_EQ(settings_.Find(label), std::nullopt);
    ASSERT_TRUE(settings_.Save(label, u"again"));
    EXPECT_EQ(settings_.Find(label), u"again");
}

TEST_F(RegistrySettingsOfATest, ATextWithoutItsZeroIsReadAsItIs) {
    const RegistryKey section = Section();
    const std::array<wchar_t, 3> text = {L'a', L'b', L'c'};
    ASSERT_EQ(::RegSetValueExW(section.get(), L"EHLabel", 0, REG_SZ,
                               reinterpret_cast<const BYTE*>(text.data()), sizeof text),
              ERROR_SUCCESS);
    EXPECT_EQ(settings_.Find(label), u"abc");
}

TEST_F(RegistrySettingsOfATest, NamesThatLeadElsewhereAreRefused) {
    using namespace std::string_view_literals;
    const SettingName names[] = {
        {u"", u"S", u"K"},
        {u"Lintara test", u"", u"K"},
        {u"A\\B", u"S", u"K"},
        {u"Lintara test", u"S\\T", u"K"},
        {u"A\0B"sv, u"S", u"K"},
        {u"Lintara test", u"S\0T"sv, u"K"},
        {u"Lintara test", u"S", u"K\0L"sv},
    };
    for (const SettingName& name : names) {
        EXPECT_FALSE(settings_.Find(name));
        EXPECT_FALSE(settings_.Save(name, u"x"));
    }
}

TEST_F(RegistrySettingsOfATest, ATextThatOtherProgramsWouldCutIsRefused) {
    using namespace std::string_view_literals;
    ASSERT_TRUE(settings_.Save(label, u"before"));
    EXPECT_FALSE(settings_.Save(label, u"a\0b"sv));
    EXPECT_EQ(settings_.Find(label), u"before");
}

}  // namespace
}  // namespace lintara::platform

#endif
