#include "platform/toml_settings.h"

#include "platform/locked_file.h"
#include "platform/user_folders.h"
#include "tests/platform/without_locks.h"
#include "tests/support/other_process.h"
#include "tests/support/random.h"
#include "tests/support/temporary_folder.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::platform {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Key;
using testing::SizeIs;
using testing::UnorderedElementsAre;

constexpr const char* settingsFile = "Tarnwick/settings.toml";

SettingName Name(TextView key) {
    return {u"Tarnwick", u"CodeAutomation", key};
}

class TomlSettingsTest : public testing::Test {
  protected:
    TomlSettings Store() {
        return TomlSettings(folder_.path(),
                            [this](const SettingsNotice& notice) { notices_.push_back(notice); });
    }

    std::vector<std::string> FileNames() {
        std::vector<std::string> names;
        for (const auto& [name, bytes] : folder_.Files()) {
            names.push_back(name);
        }
        return names;
    }

    support::TemporaryFolder folder_;
    std::vector<SettingsNotice> notices_;
};

TEST_F(TomlSettingsTest, GiveBackWhatWasSaved) {
    TomlSettings store = Store();
    ASSERT_TRUE(store.Save(Name(u"EHLabel"), u"hErr"));
    ASSERT_TRUE(store.Save({u"Tarnwick", u"Assistants", u"CodeDbPath"}, u"C:\\Data"));
    ASSERT_TRUE(store.Save(Name(u"EHLabel"), u" other\r\n"));
    EXPECT_EQ(Store().Find(Name(u"EHLabel")), u" other\r\n");
    EXPECT_EQ(Store().Find({u"Tarnwick", u"Assistants", u"CodeDbPath"}), u"C:\\Data");
    EXPECT_EQ(Store().Find(Name(u"ehlabel")), std::nullopt);
    EXPECT_EQ(
        folder_.Read(settingsFile),
        "[CodeAutomation]\nEHLabel = \"\"\"\n other\n\"\"\"\n\n[Assistants]\nCodeDbPath = \"C:\\\\Data\"\n");
    EXPECT_THAT(notices_, IsEmpty());
}

TEST_F(TomlSettingsTest, AreForTheUserAlone) {
    ASSERT_TRUE(Store().Save(Name(u"A"), u"1"));
    EXPECT_EQ(fs::status(folder_ / settingsFile).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(folder_ / "Tarnwick").permissions(), fs::perms::owner_all);
}

TEST_F(TomlSettingsTest, AreReadWithoutMakingAnything) {
    EXPECT_EQ(Store().Find(Name(u"A")), std::nullopt);
    EXPECT_EQ(Store().Get(Name(u"A"), u"default"), u"default");
    EXPECT_TRUE(fs::is_empty(folder_.path()));
    TomlSettings deep(folder_ / "not/there/yet");
    EXPECT_EQ(deep.Find(Name(u"A")), std::nullopt);
    EXPECT_TRUE(fs::is_empty(folder_.path()));
    ASSERT_TRUE(deep.Save(Name(u"A"), u"1"));
    EXPECT_EQ(deep.Find(Name(u"A")), u"1");
}

TEST_F(TomlSettingsTest, SeeWhatAnotherStoreOrAPersonWrote) {
    TomlSettings store = Store();
    ASSERT_TRUE(store.Save(Name(u"A"), u"1"));
    ASSERT_TRUE(Store().Save(Name(u"A"), u"2"));
    EXPECT_EQ(store.Find(Name(u"A")), u"2");
    folder_.Write(settingsFile, "[CodeAutomation]\nA = 3 # mine\n");
    EXPECT_EQ(store.Find(Name(u"A")), u"3");
    ASSERT_TRUE(store.Save(Name(u"B"), u"x"));
    EXPECT_EQ(folder_.Read(settingsFile), "[CodeAutomation]\nA = 3 # mine\nB = \"x\"\n");
}

TEST_F(TomlSettingsTest, KeepTheModeOfTheFile) {
    folder_.Write(settingsFile, "");
    ASSERT_EQ(::chmod((folder_ / settingsFile).c_str(), 0664), 0);
    ASSERT_TRUE(Store().Save(Name(u"A"), u"1"));
    EXPECT_EQ(fs::status(folder_ / settingsFile).permissions(), static_cast<fs::perms>(0664));
}

TEST_F(TomlSettingsTest, FollowSymbolicLinks) {
    folder_.Write("dotfiles/mine.toml", "# mine\n");
    fs::create_directory(folder_ / "Tarnwick");
    fs::create_symlink("../dotfiles/mine.toml", folder_ / settingsFile);
    ASSERT_TRUE(Store().Save(Name(u"A"), u"1"));
    EXPECT_TRUE(fs::is_symlink(folder_ / settingsFile));
    EXPECT_EQ(folder_.Read("dotfiles/mine.toml"), "# mine\n\n[CodeAutomation]\nA = \"1\"\n");
    fs::remove(folder_ / "dotfiles/mine.toml");
    EXPECT_EQ(Store().Find(Name(u"A")), std::nullopt);
    ASSERT_TRUE(Store().Save(Name(u"A"), u"2"));
    EXPECT_EQ(folder_.Read("dotfiles/mine.toml"), "[CodeAutomation]\nA = \"2\"\n");
    EXPECT_THAT(FileNames(), UnorderedElementsAre("dotfiles/mine.toml", settingsFile));
}

TEST_F(TomlSettingsTest, OfOtherApplicationsStayInFoldersOfTheirOwn) {
    const Text names[] = {u"Other",
                          u"..",
                          u"../Tarnwick",
                          u".",
                          u"",
                          u"a/b",
                          u"%",
                          u"%2F",
                          u"/",
                          u".hidden",
                          Text(u"a\0b", 3),
                          u"\u00e9",
                          Text(1, char16_t{0xD800}),
                          u"CON:"};
    fs::create_directory(folder_ / "config");
    TomlSettings store(folder_ / "config");
    for (const Text& name : names) {
        ASSERT_TRUE(store.Save({name, u"S", u"K"}, name));
    }
    for (const Text& name : names) {
        EXPECT_EQ(store.Find({name, u"S", u"K"}), name);
        EXPECT_EQ(store.FileOf(name).parent_path().parent_path(), folder_ / "config");
    }
    EXPECT_THAT(folder_.Files(), SizeIs(std::size(names)));
}

TEST_F(TomlSettingsTest, ThatAreDamagedAreSetAsideWhenTheFileIsWritten) {
    std::string binary;
    for (int byte = 0; byte < 256; ++byte) {
        binary += static_cast<char>(byte);
    }
    const std::string damaged[] = {
        "[CodeAutomation]\nA = \"cut o",
        "[CodeAutomation]\nA = \"1\"\n[CodeAutomation]\nA = \"2\"\n",
        "complete nonsense",
        std::string("\xFF\xFE[\0S\0]\0", 8),
        binary,
        std::string(4096, '\0'),
        std::string(17 * 1024 * 1024, '#'),
        std::string(100'000, '['),
        "a = " + std::string(100'000, '['),
        "[CodeAutomation]\nA = \"\xED\xA0\x80\"\n",
    };
    TomlSettings store = Store();
    int number = 0;
    for (const std::string& bytes : damaged) {
        folder_.Write(settingsFile, bytes);
        notices_.clear();
        EXPECT_EQ(store.Find(Name(u"A")), std::nullopt);
        EXPECT_EQ(folder_.Read(settingsFile), bytes) << "a read has changed the file";
        ASSERT_TRUE(store.Save(Name(u"A"), u"new"));
        EXPECT_EQ(store.Find(Name(u"A")), u"new");
        const std::string kept =
            std::string(settingsFile) + ".bad" + (number == 0 ? "" : "." + std::to_string(number));
        EXPECT_TRUE(folder_.Read(kept) == bytes) << kept;
        ASSERT_FALSE(notices_.empty());
        EXPECT_THAT(notices_.back().text, HasSubstr(fs::path(kept).filename().string()));
        EXPECT_FALSE(notices_.back().isError);
        EXPECT_EQ(notices_.back().file, folder_ / settingsFile);
        ++number;
    }
}

TEST_F(TomlSettingsTest, ThatAreNoTextsAreToldOfAndNeverOverwritten) {
    const struct {
        std::string bytes;
        std::size_t line;
        std::string_view what;
    } cases[] = {
        {"[CodeAutomation]\nA = [1] # mine\n", 2, "\"A\" is a list or a table, not a text"},
        {"[CodeAutomation.A]\n# mine\nx = 1\n", 1, "\"A\" is a list or a table, not a text"},
        {"\nCodeAutomation = 3\n", 2, "\"CodeAutomation\" is no section here, but another value"},
    };
    for (const auto& c : cases) {
        folder_.Write(settingsFile, c.bytes);
        notices_.clear();
        TomlSettings store = Store();
        EXPECT_EQ(store.Find(Name(u"A")), std::nullopt);
        EXPECT_EQ(store.Get(Name(u"A"), u"default"), u"default");
        ASSERT_THAT(notices_, SizeIs(1)) << c.bytes;
        EXPECT_EQ(notices_[0].line, c.line) << c.bytes;
        EXPECT_THAT(notices_[0].text, testing::StartsWith(std::string(c.what)));
        EXPECT_FALSE(notices_[0].isError);
        EXPECT_FALSE(store.Save(Name(u"A"), u"1"));
        ASSERT_THAT(notices_, SizeIs(2)) << c.bytes;
        EXPECT_EQ(notices_[1].line, c.line) << c.bytes;
        EXPECT_EQ(notices_[1].text, c.what);
        EXPECT_TRUE(notices_[1].isError);
        EXPECT_EQ(folder_.Read(settingsFile), c.bytes);
        EXPECT_THAT(FileNames(), ElementsAre(settingsFile));
    }
}

TEST_F(TomlSettingsTest, ThatAreDamagedAreSetAsideWhereASymbolicLinkLeads) {
    folder_.Write("dotfiles/mine.toml", "damaged");
    fs::create_directory(folder_ / "Tarnwick");
    fs::create_symlink("../dotfiles/mine.toml", folder_ / settingsFile);
    ASSERT_TRUE(Store().Save(Name(u"A"), u"1"));
    EXPECT_EQ(folder_.Read("dotfiles/mine.toml.bad"), "damaged");
    ASSERT_THAT(notices_, SizeIs(1));
    EXPECT_THAT(notices_[0].text, HasSubstr(fs::canonical(folder_ / "dotfiles/mine.toml.bad").string()));
}

TEST_F(TomlSettingsTest, ThatAKilledWriterHasSetAsideAreNotSetAsideTwice) {
    const fs::path file = folder_.Write(settingsFile, "damaged");
    fs::create_hard_link(file, folder_ / "Tarnwick/settings.toml.bad");
    ASSERT_TRUE(Store().Save(Name(u"A"), u"1"));
    EXPECT_EQ(folder_.Read("Tarnwick/settings.toml.bad"), "damaged");
    EXPECT_THAT(FileNames(), UnorderedElementsAre(settingsFile, "Tarnwick/settings.toml.bad"));
}

TEST_F(TomlSettingsTest, AreNotSetAsideByALinkToThemselves) {
    folder_.Write(settingsFile, "damaged");
    fs::create_symlink("settings.toml", folder_ / "Tarnwick/settings.toml.bad");
    ASSERT_TRUE(Store().Save(Name(u"A"), u"1"));
    EXPECT_EQ(folder_.Read("Tarnwick/settings.toml.bad.1"), "damaged");
}

TEST_F(TomlSettingsTest, ThatAreDamagedStayWhereNoNameIsLeftForThem) {
    folder_.Write(settingsFile, "damaged");
    folder_.Write("Tarnwick/settings.toml.bad", "older");
    for (int number = 1; number < 10'000; ++number) {
        const std::string name = "Tarnwick/settings.toml.bad." + std::to_string(number);
        ASSERT_EQ(::symlink("settings.toml.bad", (folder_ / name).c_str()), 0);
    }
    EXPECT_FALSE(Store().Save(Name(u"A"), u"1"));
    EXPECT_EQ(folder_.Read(settingsFile), "damaged");
    ASSERT_THAT(notices_, SizeIs(1));
    EXPECT_THAT(notices_[0].text, HasSubstr("too many copies with the ending .bad are there"));
}

TEST_F(TomlSettingsTest, WarnOncePerDamage) {
    folder_.Write(settingsFile, "[CodeAutomation]\nA = \"1\"\nB =\n");
    TomlSettings store = Store();
    EXPECT_EQ(store.Get(Name(u"A"), u"default"), u"default");
    EXPECT_EQ(store.Get(Name(u"B"), u"default"), u"default");
    ASSERT_THAT(notices_, SizeIs(1));
    EXPECT_EQ(notices_[0].line, 3U);
}

TEST_F(TomlSettingsTest, FailWhereThereIsNoFile) {
    fs::create_directories(folder_ / settingsFile);
    TomlSettings store = Store();
    EXPECT_FALSE(store.Find(Name(u"A")));
    EXPECT_FALSE(store.Save(Name(u"A"), u"1"));
    EXPECT_EQ(store.Get(Name(u"A"), u"default"), u"default");
    ASSERT_THAT(notices_, SizeIs(1));
    EXPECT_EQ(notices_[0].text, "is a folder, not a file");
    EXPECT_TRUE(notices_[0].isError);
    EXPECT_TRUE(fs::is_directory(folder_ / settingsFile));
}

TEST_F(TomlSettingsTest, FailAtAPipeWithoutWaiting) {
    fs::create_directory(folder_ / "Tarnwick");
    ASSERT_EQ(::mkfifo((folder_ / settingsFile).c_str(), 0600), 0);
    EXPECT_FALSE(Store().Find(Name(u"A")));
    EXPECT_FALSE(Store().Save(Name(u"A"), u"1"));
}

TEST_F(TomlSettingsTest, FailWhereAFileStandsForTheFolder) {
    folder_.Write("Tarnwick", "mine");
    EXPECT_FALSE(Store().Find(Name(u"A")));
    EXPECT_FALSE(Store().Save(Name(u"A"), u"1"));
    EXPECT_EQ(folder_.Read("Tarnwick"), "mine");
}

TEST_F(TomlSettingsTest, FailWhereAFileStandsAboveTheFolder) {
    folder_.Write("config", "mine");
    TomlSettings store(folder_ / "config/deep/deeper",
                       [this](const SettingsNotice& notice) { notices_.push_back(notice); });
    EXPECT_FALSE(store.Find(Name(u"A")));
    EXPECT_FALSE(store.Save(Name(u"A"), u"1"));
    ASSERT_THAT(notices_, SizeIs(2));
    EXPECT_THAT(notices_[0].text, HasSubstr("cannot be read"));
    EXPECT_THAT(notices_[1].text, HasSubstr("its folder cannot be made"));
    EXPECT_EQ(folder_.Read("config"), "mine");
}

TEST_F(TomlSettingsTest, WhatAKilledWriterLeftGoesAndNothingElse) {
    folder_.Write(settingsFile, "[CodeAutomation]\nA = \"1\"\n");
    folder_.Write("Tarnwick/.settings.toml.Ab3dE6.tmp", "half");
    const std::string others[] = {"Tarnwick/.other.toml.Ab3dE6.tmp", "Tarnwick/.settings.toml.Ab3dE6",
                                  "Tarnwick/.settings.toml.longer.name.tmp"};
    for (const std::string& other : others) {
        folder_.Write(other, "somebody's");
    }
    ASSERT_TRUE(Store().Save(Name(u"A"), u"2"));
    EXPECT_THAT(FileNames(), UnorderedElementsAre(settingsFile, others[0], others[1], others[2]));
}

TEST_F(TomlSettingsTest, FailWithoutAHome) {
    TomlSettings store(fs::path{});
    EXPECT_FALSE(store.Find(Name(u"A")));
    EXPECT_FALSE(store.Save(Name(u"A"), u"1"));
}

TEST_F(TomlSettingsTest, FailAndStayWhereRightsAreMissing) {
    folder_.Write(settingsFile, "[CodeAutomation]\nA = \"1\"\n");
    const auto attempt = [&](const char* place, mode_t mode) {
        const fs::path path = folder_ / place;
        return support::AsOrdinaryUser(folder_.path(), [&]() -> std::string {
            ::chmod(path.c_str(), mode);
            TomlSettings store(folder_.path());
            const std::string found = store.Find(Name(u"A")) ? "found " : "unread ";
            const std::string saved = store.Save(Name(u"A"), u"2") ? "saved" : "unsaved";
            ::chmod(path.c_str(), 0700);
            return found + saved;
        });
    };
    EXPECT_EQ(attempt(settingsFile, 0000), "unread unsaved");
    EXPECT_EQ(attempt(settingsFile, 0400), "found unsaved");
    EXPECT_EQ(attempt("Tarnwick", 0500), "found unsaved");
    EXPECT_EQ(attempt("Tarnwick", 0000), "unread unsaved");
    EXPECT_EQ(folder_.Read(settingsFile), "[CodeAutomation]\nA = \"1\"\n");
    EXPECT_THAT(FileNames(), ElementsAre(settingsFile));
}

TEST_F(TomlSettingsTest, OfDamagedFilesStayWhenTheNewOneCannotBeWritten) {
    folder_.Write(settingsFile, "damaged");
    const std::string outcome = support::AsOrdinaryUser(folder_.path(), [&]() -> std::string {
        ::chmod((folder_ / settingsFile).c_str(), 0400);
        return TomlSettings(folder_.path()).Save(Name(u"A"), u"2") ? "saved" : "unsaved";
    });
    EXPECT_EQ(outcome, "unsaved");
    EXPECT_THAT(FileNames(), ElementsAre(settingsFile));
    EXPECT_EQ(folder_.Read(settingsFile), "damaged");
}

// On the file system of a test there is always space; a limit on the size of files does the same to a writer.
TEST_F(TomlSettingsTest, StayWhenThereIsNoSpaceForTheNewOnes) {
    for (const std::string before : {"[CodeAutomation]\nA = \"1\"\n", "damaged"}) {
        folder_.Write(settingsFile, before);
        const std::string outcome = support::InOtherProcess([&]() -> std::string {
            const rlimit limit{.rlim_cur = 1000, .rlim_max = 1000};
            if (std::signal(SIGXFSZ, SIG_IGN) == SIG_ERR || ::setrlimit(RLIMIT_FSIZE, &limit) != 0) {
                return "no limit";
            }
            TomlSettings store = Store();
            const bool saved = store.Save(Name(u"A"), Text(5000, u'v')).has_value();
            return (saved ? "saved: " : "unsaved: ") + (notices_.empty() ? "" : notices_.back().text);
        });
        EXPECT_THAT(outcome, testing::StartsWith("unsaved: cannot be written: "));
        EXPECT_EQ(folder_.Read(settingsFile), before);
        EXPECT_THAT(FileNames(), ElementsAre(settingsFile));
    }
}

Text KeyOf(char writer, int number) {
    const std::string name = writer + std::to_string(number);
    return {name.begin(), name.end()};
}

std::string WriteMany(const fs::path& folder, char writer, int count) {
    TomlSettings store(folder);
    for (int i = 0; i < count; ++i) {
        if (!store.Save(Name(KeyOf(writer, i)), u"value\r\nof two lines")) {
            return "failed";
        }
    }
    return "done";
}

TEST_F(TomlSettingsTest, OfTwoProcessesAreAllKept) {
    constexpr int count = 200;
    support::OtherProcess one([&] { return WriteMany(folder_.path(), 'a', count); });
    support::OtherProcess two([&] { return WriteMany(folder_.path(), 'b', count); });
    EXPECT_EQ(one.Answer(), "done");
    EXPECT_EQ(two.Answer(), "done");
    TomlSettings store = Store();
    for (int i = 0; i < count; ++i) {
        ASSERT_EQ(store.Find(Name(KeyOf('a', i))), u"value\r\nof two lines") << i;
        ASSERT_EQ(store.Find(Name(KeyOf('b', i))), u"value\r\nof two lines") << i;
    }
    EXPECT_THAT(FileNames(), ElementsAre(settingsFile));
}

TEST_F(TomlSettingsTest, OfTwoThreadsAreAllKept) {
    constexpr int count = 50;
    std::thread one([&] { EXPECT_EQ(WriteMany(folder_.path(), 'a', count), "done"); });
    std::thread two([&] { EXPECT_EQ(WriteMany(folder_.path(), 'b', count), "done"); });
    one.join();
    two.join();
    for (int i = 0; i < count; ++i) {
        ASSERT_TRUE(*Store().Find(Name(KeyOf('a', i)))) << i;
        ASSERT_TRUE(*Store().Find(Name(KeyOf('b', i)))) << i;
    }
}

TEST_F(TomlSettingsTest, AreOldOrNewWhenTheWriterIsKilled) {
    const Text old(200'000, u'o');
    const Text fresh(200'000, u'n');
    ASSERT_TRUE(Store().Save(Name(u"A"), old));
    support::Random random(3);
    for (int round = 0; round < 30; ++round) {
        support::OtherProcess writer([&]() -> std::string {
            TomlSettings store(folder_.path());
            while (true) {
                (void)store.Save(Name(u"A"), fresh);
                (void)store.Save(Name(u"A"), old);
            }
        });
        std::this_thread::sleep_for(std::chrono::microseconds(random.Below(20'000)));
        ::kill(writer.id(), SIGKILL);
        (void)writer.Answer();
        const auto found = Store().Find(Name(u"A"));
        ASSERT_TRUE(found && *found);
        ASSERT_TRUE(**found == old || **found == fresh) << round;
    }
    ASSERT_TRUE(Store().Save(Name(u"A"), u"done"));
    EXPECT_THAT(FileNames(), ElementsAre(settingsFile)) << "what killed writers left is still there";
    EXPECT_THAT(notices_, IsEmpty());
}

TEST_F(TomlSettingsTest, AreNeverSeenHalfWritten) {
    ASSERT_TRUE(Store().Save(Name(u"A"), u"first"));
    support::OtherProcess writer([&] { return WriteMany(folder_.path(), 'a', 100); });
    TomlSettings store = Store();
    while (!writer.HasEnded()) {
        ASSERT_EQ(store.Find(Name(u"A")), u"first");
    }
    EXPECT_EQ(writer.Answer(), "done");
    EXPECT_THAT(notices_, IsEmpty());
}

TEST_F(TomlSettingsTest, WaitForAnotherWriterOnlySoLong) {
    const fs::path file = folder_.Write(settingsFile, "");
    const auto holder = LockedFile::Open(file, std::chrono::milliseconds(0));
    ASSERT_TRUE(holder);
    const auto second = LockedFile::Open(file, std::chrono::milliseconds(20));
    ASSERT_FALSE(second);
    EXPECT_THAT(second.error(), HasSubstr("another program"));
}

TEST_F(TomlSettingsTest, AreWrittenWithoutALockWhereThereIsNone) {
    TomlSettings store = Store();
    {
        const support::WithoutLocks noLocks(ENOLCK);
        ASSERT_TRUE(store.Save(Name(u"A"), u"1"));
        ASSERT_TRUE(store.Save(Name(u"A"), u"2"));
    }
    ASSERT_TRUE(store.Save(Name(u"B"), u"3"));
    EXPECT_EQ(store.Find(Name(u"A")), u"2");
    ASSERT_THAT(notices_, SizeIs(1));
    EXPECT_THAT(notices_[0].text, HasSubstr("at the same time"));
    EXPECT_FALSE(notices_[0].isError);
}

// As network file systems do that lock only what is open for writing.
TEST_F(TomlSettingsTest, AreOpenForWritingWhileTheyAreLocked) {
    const support::WithoutLocks noLocks(EBADF, support::WithoutLocks::Of::FilesOpenForReading);
    ASSERT_TRUE(Store().Save(Name(u"A"), u"1"));
    EXPECT_THAT(notices_, IsEmpty());
}

class SavedVariable {
  public:
    explicit SavedVariable(const char* name) : name_(name) {
        if (const char* value = std::getenv(name)) {
            value_ = value;
        }
    }
    ~SavedVariable() { Set(value_ ? value_->c_str() : nullptr); }
    SavedVariable(const SavedVariable&) = delete;
    SavedVariable& operator=(const SavedVariable&) = delete;

    void Set(const char* value) const {
        if (value == nullptr) {
            ::unsetenv(name_);
        } else {
            ::setenv(name_, value, 1);
        }
    }

  private:
    const char* name_;
    std::optional<std::string> value_;
};

TEST(UserConfigFolder, IsTheOneThatTheDesktopAgreedOn) {
    const SavedVariable config("XDG_CONFIG_HOME");
    const SavedVariable home("HOME");
    home.Set("/home/ada");
    config.Set("/etc/mine");
    EXPECT_EQ(UserConfigFolder(), "/etc/mine");
    config.Set("relative");
    EXPECT_EQ(UserConfigFolder(), "/home/ada/.config");
    config.Set("");
    EXPECT_EQ(UserConfigFolder(), "/home/ada/.config");
    config.Set(nullptr);
    home.Set(nullptr);
    const fs::path ofAccount = UserConfigFolder();
    EXPECT_TRUE(ofAccount.is_absolute());
    EXPECT_EQ(ofAccount.filename(), ".config");
    home.Set("also/relative");
    EXPECT_EQ(UserConfigFolder(), ofAccount);
}

TEST(UserStateFolder, IsTheOneThatTheDesktopAgreedOn) {
    const SavedVariable state("XDG_STATE_HOME");
    const SavedVariable home("HOME");
    home.Set("/home/ada");
    state.Set("/var/mine");
    EXPECT_EQ(UserStateFolder(), "/var/mine");
    state.Set("relative");
    EXPECT_EQ(UserStateFolder(), "/home/ada/.local/state");
    state.Set(nullptr);
    EXPECT_EQ(UserStateFolder(), "/home/ada/.local/state");
}

}  // namespace
}  // namespace lintara::platform
