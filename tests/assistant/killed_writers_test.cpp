// Processes that are killed while they write: what they leave is whole, the old or the new.

#include "assistant/lintara.h"
#include "base/constants.h"
#include "platform/database_file.h"
#include "platform/path_text.h"
#include "platform/sqlite_engine.h"
#include "platform/toml_settings.h"
#include "tests/support/code_fixture.h"
#include "tests/support/other_process.h"
#include "tests/support/random.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <set>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara {
namespace {

using std::chrono::milliseconds;

constexpr int Kills = 200;

// The n-th text that a writer stores: long enough to need several pages, and its number can be told from any
// part of it.
Text Version(int n) {
    const std::string number = std::to_string(n) + "\r\n";
    Text text;
    for (int i = 0; i < 800; ++i) {
        text.append(number.begin(), number.end());
    }
    return text;
}

// Has `work` done in another process, which is killed after a random time, `longest` at most.
void KillDuring(const std::function<void()>& work, support::Random& random, milliseconds longest) {
    const support::OtherProcess writer([&] {
        work();
        return std::string();
    });
    const auto limit = static_cast<std::size_t>(std::chrono::microseconds(longest).count());
    std::this_thread::sleep_for(std::chrono::microseconds(random.Below(limit)));
    ::kill(writer.id(), SIGKILL);
}

class KilledSessionTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(platform::CreateCodeDatabase(folder_.path()), platform::Creation::Made);
    }

    [[nodiscard]] Platform MakePlatform() const {
        return {.databaseEngine = std::make_shared<platform::SqliteEngine>(),
                .libraryFolder = platform::FolderToText(folder_.path())};
    }

    // Sessions without end, each storing the next version in all ten buffers.
    void StoreVersions(int first) const {
        support::CodeFixture fixture("");
        Lintara assistant(MakePlatform());
        assistant.oG = fixture.globals();
        assistant.InitCodeAutomation();
        for (int n = first;; ++n) {
            Store(assistant, n);
        }
    }

    // How long it takes to begin a session and to store a version in it.
    [[nodiscard]] milliseconds TimeOfOneVersion() const {
        const auto begun = std::chrono::steady_clock::now();
        support::CodeFixture fixture("");
        Lintara assistant(MakePlatform());
        assistant.oG = fixture.globals();
        assistant.InitCodeAutomation();
        Store(assistant, 0);
        return std::chrono::ceil<milliseconds>(std::chrono::steady_clock::now() - begun);
    }

    static void Store(Lintara& assistant, int version) {
        for (std::int32_t index = 0; index <= 9; ++index) {
            assistant.SetAdditionalCPBuffer(index, Version(version));
        }
        assistant.CloseCodeAutomation();
    }

    // The texts that a new session finds, each once.
    [[nodiscard]] std::set<Text> Load() const {
        support::CodeFixture fixture("");
        Lintara assistant(MakePlatform());
        assistant.oG = fixture.globals();
        assistant.InitCodeAutomation();
        EXPECT_NE(fixture.globals()->CodeDb().value(), nullptr);
        std::set<Text> texts;
        for (std::int32_t index = 0; index <= 9; ++index) {
            texts.insert(assistant.AdditionalCPBuffer(index));
        }
        return texts;
    }

    support::TemporaryFolder folder_;
};

TEST_F(KilledSessionTest, TheTenBuffersAreTheOldOnesOrTheNewOnes) {
    support::Random random(1);
    std::set<Text> seen;
    const milliseconds longest = std::max(milliseconds(60), 3 * TimeOfOneVersion());
    int next = 0;
    for (int kill = 0; kill < Kills; ++kill) {
        KillDuring([&] { StoreVersions(next); }, random, longest);
        const std::set<Text> texts = Load();
        ASSERT_EQ(texts.size(), 1U) << "after " << kill;
        const Text& text = *texts.begin();
        if (!text.empty()) {
            const int n = std::stoi(std::string(text.begin(), text.begin() + 9));
            ASSERT_TRUE(text == Version(n));
            ASSERT_GE(n + 1, next) << "a stored version is gone";
            next = n + 1;
        }
        seen.insert(text);
    }
    EXPECT_GT(seen.size(), 20U) << "most were killed before they had done anything";
}

TEST(KilledSettingsTest, ASettingIsTheOldOneOrTheNewOne) {
    constexpr SettingName name = {u"Tarnwick", u"CodeAutomation", u"EHCode"};
    const support::TemporaryFolder folder;
    support::Random random(2);
    std::set<Text> seen;
    int next = 0;
    for (int kill = 0; kill < Kills; ++kill) {
        KillDuring(
            [&] {
                platform::TomlSettings settings(folder.path());
                for (int n = next;; ++n) {
                    if (!settings.Save(name, Version(n))) {
                        return;
                    }
                }
            },
            random, milliseconds(25));
        std::vector<std::string> notices;
        platform::TomlSettings settings(
            folder.path(), [&](const platform::SettingsNotice& notice) { notices.push_back(notice.text); });
        const auto found = settings.Find(name);
        ASSERT_TRUE(found);
        EXPECT_THAT(notices, testing::IsEmpty());
        if (*found) {
            const int n = std::stoi(std::string((*found)->begin(), (*found)->begin() + 9));
            ASSERT_TRUE(**found == Version(n));
            ASSERT_GE(n + 1, next) << "a stored version is gone";
            next = n + 1;
        } else {
            ASSERT_EQ(next, 0);
        }
        seen.insert(found->value_or(Text()));
    }
    EXPECT_GT(seen.size(), 20U) << "most were killed before they had done anything";
}

}  // namespace
}  // namespace lintara
