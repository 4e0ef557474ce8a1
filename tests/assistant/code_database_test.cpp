// How the code database is found, opened and remembered.

#include "assistant/lintara.h"
#include "base/constants.h"
#include "platform/memory_settings.h"
#include "tests/support/code_fixture.h"
#include "tests/support/faulty_host.h"
#include "tests/support/memory_database.h"
#include "tests/support/recorded_screen.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara {
namespace {

using hostmodel::Database;
using hostmodel::MousePointer;
using support::BufferRows;
using support::CodeFixture;
using support::Fault;
using support::FaultPlan;
using testing::ElementsAre;
using testing::IsEmpty;

const Text Remembered = u"D:\\Remembered";
const Text Chosen = u"D:\\Chosen";
const Text Beside = u"C:\\Program Files\\Suite";

constexpr SettingName FolderSetting = {u"Tarnwick", u"Assistants", u"CodeDbPath"};

// What the machine offers, scripted. Every call is noted in `calls`.
struct Machine {
    std::vector<std::string> calls;
    // By the full path of their files.
    std::map<Text, std::shared_ptr<BufferRows>> databases;
    std::set<Text> damaged;  // files that are there and cannot be opened
    Text answer;             // the user's, who is asked for a folder
    // What fails, by the name that is noted in `calls`, up to the blank.
    std::set<std::string> failing;
    std::set<std::string> throwing;

    void Note(const std::string& call, TextView argument) {
        calls.push_back(call + " " + std::string(argument.begin(), argument.end()));
        if (throwing.contains(call)) {
            throw std::runtime_error("the test wants this call to throw");
        }
    }
    [[nodiscard]] bool Fails(const std::string& call) const { return failing.contains(call); }
    static std::unexpected<HostError> Broken() {
        return Failure(ErrorNumber::HostFailure, "the test wants this call to fail");
    }
};

using MachinePtr = std::shared_ptr<Machine>;

class ScriptedEngine : public hostmodel::DatabaseEngine {
  public:
    explicit ScriptedEngine(MachinePtr machine) : machine_(std::move(machine)) {}

    Result<bool> FileExists(TextView path) override {
        machine_->Note("Exists", path);
        if (machine_->Fails("Exists")) {
            return Machine::Broken();
        }
        return machine_->databases.contains(Text(path)) || machine_->damaged.contains(Text(path));
    }
    Result<std::shared_ptr<Database>> OpenDatabase(TextView path) override {
        machine_->Note("Open", path);
        const auto found = machine_->databases.find(Text(path));
        if (machine_->Fails("Open") || found == machine_->databases.end()) {
            return Machine::Broken();
        }
        return std::make_shared<support::MemoryDatabase>(found->second);
    }

  private:
    MachinePtr machine_;
};

class ScriptedLocator : public hostmodel::DatabaseLocator {
  public:
    explicit ScriptedLocator(MachinePtr machine) : machine_(std::move(machine)) {}

    Result<Text> BrowseForCodeDb(TextView folder) override {
        machine_->Note("Browse", folder);
        return machine_->Fails("Browse") ? Result<Text>(Machine::Broken()) : machine_->answer;
    }

  private:
    MachinePtr machine_;
};

class ScriptedSettings : public SettingsStore {
  public:
    explicit ScriptedSettings(MachinePtr machine) : machine_(std::move(machine)) {}

    Result<std::optional<Text>> Find(SettingName name) override {
        machine_->Note("Find", name.key);
        return machine_->Fails("Find") ? Machine::Broken() : stored.Find(name);
    }
    Result<void> Save(SettingName name, TextView value) override {
        machine_->Note("Save", value);
        return machine_->Fails("Save") ? Result<void>(Machine::Broken()) : stored.Save(name, value);
    }

    platform::MemorySettings stored;

  private:
    MachinePtr machine_;
};

std::shared_ptr<BufferRows> RowsWith(const Text& code) {
    auto rows = std::make_shared<BufferRows>();
    rows->codeByKey = {{0, code}};
    return rows;
}

class CodeDatabaseSearchTest : public testing::Test {
  public:
    CodeDatabaseSearchTest() { assistant_.oG = globals(); }

    [[nodiscard]] std::shared_ptr<hostmodel::Globals> globals() { return fixture_.globals(); }

    void Remember(const Text& folder) { EXPECT_TRUE(settings_->stored.Save(FolderSetting, folder)); }
    void PutDatabase(const Text& folder, const Text& code) {
        machine_->databases[folder + u"\\Assistants.mdb"] = RowsWith(code);
    }
    void PutDamaged(const Text& folder) { machine_->damaged.insert(folder + u"\\Assistants.mdb"); }

    [[nodiscard]] std::optional<Text> StoredFolder() { return settings_->stored.Find(FolderSetting).value(); }
    [[nodiscard]] Text SessionFolder() { return globals()->CodeDbPath().value(); }
    [[nodiscard]] bool IsOpen() { return globals()->CodeDb().value() != nullptr; }
    [[nodiscard]] Text Loaded() const { return assistant_.AdditionalCPBuffer(0); }
    [[nodiscard]] const std::vector<std::string>& calls() const { return machine_->calls; }

    Platform MakePlatform() {
        return {.screen = screen_,
                .settings = settings_,
                .databaseEngine = std::make_shared<ScriptedEngine>(machine_),
                .makeDatabaseLocator =
                    [machine = machine_] {
                        machine->Note("MakeLocator", {});
                        return machine->Fails("MakeLocator") ? nullptr
                                                             : std::make_shared<ScriptedLocator>(machine);
                    },
                .libraryFolder = Beside};
    }

    CodeFixture fixture_{""};
    MachinePtr machine_ = std::make_shared<Machine>();
    std::shared_ptr<ScriptedSettings> settings_ = std::make_shared<ScriptedSettings>(machine_);
    std::shared_ptr<support::RecordedScreen> screen_ = std::make_shared<support::RecordedScreen>();
    Lintara assistant_{MakePlatform()};
};

TEST_F(CodeDatabaseSearchTest, TheRememberedFolderIsOpenedAndNotRememberedAgain) {
    Remember(Remembered);
    PutDatabase(Remembered, u"remembered");
    PutDatabase(Beside, u"beside");
    assistant_.InitCodeAutomation();
    EXPECT_EQ(Loaded(), u"remembered");
    EXPECT_EQ(SessionFolder(), Remembered);
    EXPECT_THAT(calls(), ElementsAre("Find CodeDbPath", "Exists D:\\Remembered\\Assistants.mdb",
                                     "Open D:\\Remembered\\Assistants.mdb"));
}

TEST_F(CodeDatabaseSearchTest, WithoutItsFileTheUserIsAskedFromThatFolderAndTheAnswerReplacesIt) {
    Remember(Remembered);
    PutDatabase(Chosen, u"chosen");
    PutDatabase(Beside, u"beside");
    machine_->answer = Chosen;
    assistant_.InitCodeAutomation();
    EXPECT_EQ(Loaded(), u"chosen");
    EXPECT_EQ(SessionFolder(), Chosen);
    EXPECT_EQ(StoredFolder(), Chosen);
    EXPECT_THAT(calls(),
                ElementsAre("Find CodeDbPath", "Exists D:\\Remembered\\Assistants.mdb", "MakeLocator ",
                            "Browse D:\\Remembered", "Open D:\\Chosen\\Assistants.mdb", "Save D:\\Chosen"));
}

TEST_F(CodeDatabaseSearchTest, WhoGivesUpIsNotAskedASecondTimeAndKeepsTheSetting) {
    Remember(Remembered);
    PutDatabase(Beside, u"beside");
    assistant_.SetAdditionalCPBuffer(0, u"in memory");
    assistant_.InitCodeAutomation();
    assistant_.CloseCodeAutomation();
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(SessionFolder(), u"");
    EXPECT_EQ(StoredFolder(), Remembered);
    EXPECT_EQ(Loaded(), u"in memory");
    EXPECT_THAT(calls(), ElementsAre("Find CodeDbPath", "Exists D:\\Remembered\\Assistants.mdb",
                                     "MakeLocator ", "Browse D:\\Remembered"));
}

TEST_F(CodeDatabaseSearchTest, WithoutASettingTheFolderOfTheLibraryIsOpenedAndRemembered) {
    PutDatabase(Beside, u"beside");
    assistant_.InitCodeAutomation();
    EXPECT_EQ(Loaded(), u"beside");
    EXPECT_EQ(SessionFolder(), Beside);
    EXPECT_EQ(StoredFolder(), Beside);
    EXPECT_THAT(calls(), ElementsAre("Find CodeDbPath", "Exists C:\\Program Files\\Suite\\Assistants.mdb",
                                     "Open C:\\Program Files\\Suite\\Assistants.mdb",
                                     "Save C:\\Program Files\\Suite"));
}

TEST_F(CodeDatabaseSearchTest, AnEmptySettingCountsAsNone) {
    Remember(u"");
    PutDatabase(Beside, u"beside");
    assistant_.InitCodeAutomation();
    EXPECT_EQ(Loaded(), u"beside");
    EXPECT_EQ(StoredFolder(), Beside);
}

TEST_F(CodeDatabaseSearchTest, WithoutAnyTheUserIsAskedFromNowhere) {
    PutDatabase(Chosen, u"chosen");
    machine_->answer = Chosen;
    assistant_.InitCodeAutomation();
    EXPECT_EQ(Loaded(), u"chosen");
    EXPECT_EQ(StoredFolder(), Chosen);
    EXPECT_THAT(calls(),
                ElementsAre("Find CodeDbPath", "Exists C:\\Program Files\\Suite\\Assistants.mdb",
                            "MakeLocator ", "Browse ", "Open D:\\Chosen\\Assistants.mdb", "Save D:\\Chosen"));
}

TEST_F(CodeDatabaseSearchTest, WhoGivesUpWithoutASettingHasNoDatabaseAndNothingIsRemembered) {
    assistant_.InitCodeAutomation();
    assistant_.CloseCodeAutomation();
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(SessionFolder(), u"");
    EXPECT_EQ(StoredFolder(), std::nullopt);
}

TEST_F(CodeDatabaseSearchTest, AnOpenDatabaseIsUsedAsItIsAndReloaded) {
    Remember(Remembered);
    PutDatabase(Remembered, u"remembered");
    const auto rows = RowsWith(u"shared");
    ASSERT_TRUE(globals()->SetCodeDb(std::make_shared<support::MemoryDatabase>(rows)));
    ASSERT_TRUE(globals()->SetCodeDbPath(u"E:\\Shared"));
    assistant_.InitCodeAutomation();
    EXPECT_EQ(Loaded(), u"shared");
    rows->codeByKey[0] = Text(u"changed elsewhere");
    assistant_.InitCodeAutomation();
    EXPECT_EQ(Loaded(), u"changed elsewhere");
    EXPECT_EQ(SessionFolder(), u"E:\\Shared");
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(CodeDatabaseSearchTest, TheDatabaseIsOpenedOnceForSeveralSessions) {
    Remember(Remembered);
    PutDatabase(Remembered, u"remembered");
    assistant_.InitCodeAutomation();
    assistant_.CloseCodeAutomation();
    assistant_.InitCodeAutomation();
    Lintara second(MakePlatform());
    second.oG = globals();
    second.InitCodeAutomation();
    EXPECT_EQ(std::count(calls().begin(), calls().end(), "Open D:\\Remembered\\Assistants.mdb"), 1);
    EXPECT_EQ(second.AdditionalCPBuffer(0), u"remembered");
}

TEST_F(CodeDatabaseSearchTest, ADatabaseOfTheRememberedFolderThatCannotBeOpenedAsksNobody) {
    Remember(Remembered);
    PutDamaged(Remembered);
    machine_->answer = Chosen;
    PutDatabase(Chosen, u"chosen");
    assistant_.InitCodeAutomation();
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(SessionFolder(), Remembered);
    EXPECT_THAT(calls(), ElementsAre("Find CodeDbPath", "Exists D:\\Remembered\\Assistants.mdb",
                                     "Open D:\\Remembered\\Assistants.mdb"));
}

// Each statement stands for itself: what comes behind a failing one is done.
TEST_F(CodeDatabaseSearchTest, AFolderIsRememberedAlsoWhenItsDatabaseCannotBeOpened) {
    machine_->answer = Chosen;
    assistant_.InitCodeAutomation();
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(StoredFolder(), Chosen);
    EXPECT_EQ(SessionFolder(), Chosen);
}

TEST_F(CodeDatabaseSearchTest, TheLibrarysFolderIsRememberedAlsoWhenItsDatabaseCannotBeOpened) {
    PutDamaged(Beside);
    assistant_.InitCodeAutomation();
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(StoredFolder(), Beside);
    EXPECT_EQ(SessionFolder(), Beside);
}

TEST_F(CodeDatabaseSearchTest, WithoutAnAnswerTheRememberedFolderStays) {
    Remember(Remembered);
    machine_->failing = {"Browse"};
    assistant_.InitCodeAutomation();
    EXPECT_EQ(SessionFolder(), Remembered);
    EXPECT_THAT(calls(), ElementsAre("Find CodeDbPath", "Exists D:\\Remembered\\Assistants.mdb",
                                     "MakeLocator ", "Browse D:\\Remembered",
                                     "Open D:\\Remembered\\Assistants.mdb", "Save D:\\Remembered"));
    EXPECT_EQ(StoredFolder(), Remembered);
}

TEST_F(CodeDatabaseSearchTest, AFailingExistenceTestCountsAsNoFile) {
    Remember(Remembered);
    PutDatabase(Remembered, u"remembered");
    PutDatabase(Chosen, u"chosen");
    machine_->failing = {"Exists"};
    machine_->answer = Chosen;
    assistant_.InitCodeAutomation();
    EXPECT_EQ(Loaded(), u"chosen");
    EXPECT_EQ(StoredFolder(), Chosen);
}

TEST_F(CodeDatabaseSearchTest, SettingsThatCannotBeReadLeaveTheSessionsFolder) {
    ASSERT_TRUE(globals()->SetCodeDbPath(Chosen));
    Remember(Remembered);
    PutDatabase(Remembered, u"remembered");
    PutDatabase(Chosen, u"chosen");
    machine_->failing = {"Find"};
    assistant_.InitCodeAutomation();
    EXPECT_EQ(Loaded(), u"chosen");
    EXPECT_EQ(StoredFolder(), Remembered);
}

TEST_F(CodeDatabaseSearchTest, AnAbsentSettingEmptiesTheSessionsFolder) {
    ASSERT_TRUE(globals()->SetCodeDbPath(Chosen));
    PutDatabase(Chosen, u"chosen");
    assistant_.InitCodeAutomation();
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(SessionFolder(), u"");
}

TEST_F(CodeDatabaseSearchTest, SettingsThatCannotBeWrittenKeepNobodyFromWorking) {
    PutDatabase(Beside, u"beside");
    machine_->failing = {"Save"};
    assistant_.InitCodeAutomation();
    EXPECT_EQ(Loaded(), u"beside");
    EXPECT_EQ(StoredFolder(), std::nullopt);
}

TEST_F(CodeDatabaseSearchTest, WithoutALocatorNobodyIsAskedAndNothingRemembered) {
    Remember(Remembered);
    machine_->answer = Chosen;
    PutDatabase(Chosen, u"chosen");
    machine_->failing = {"MakeLocator"};
    assistant_.InitCodeAutomation();
    EXPECT_FALSE(IsOpen());
    EXPECT_THAT(calls(),
                ElementsAre("Find CodeDbPath", "Exists D:\\Remembered\\Assistants.mdb", "MakeLocator "));
}

TEST_F(CodeDatabaseSearchTest, WhatTheMachineLacksIsLeftOut) {
    PutDatabase(Beside, u"beside");
    PutDatabase(Chosen, u"chosen");
    machine_->answer = Chosen;
    const Platform whole = MakePlatform();

    Platform platform = whole;
    platform.databaseEngine = nullptr;
    Lintara withoutEngine(platform);
    withoutEngine.oG = globals();
    withoutEngine.InitCodeAutomation();
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(StoredFolder(), Chosen);

    platform = whole;
    platform.settings = nullptr;
    Lintara withoutSettings(platform);
    withoutSettings.oG = globals();
    withoutSettings.InitCodeAutomation();
    EXPECT_EQ(withoutSettings.AdditionalCPBuffer(0), u"beside");

    ASSERT_TRUE(globals()->SetCodeDb(nullptr));
    platform = whole;
    platform.libraryFolder = u"";
    platform.settings = nullptr;
    Lintara withoutFolder(platform);
    withoutFolder.oG = globals();
    withoutFolder.InitCodeAutomation();
    EXPECT_EQ(withoutFolder.AdditionalCPBuffer(0), u"chosen");

    ASSERT_TRUE(globals()->SetCodeDb(nullptr));
    platform.makeDatabaseLocator = nullptr;
    Lintara withoutAnybody(platform);
    withoutAnybody.oG = globals();
    withoutAnybody.InitCodeAutomation();
    EXPECT_FALSE(IsOpen());
}

TEST_F(CodeDatabaseSearchTest, WithoutAServicesObjectNothingIsLookedFor) {
    assistant_.oG = nullptr;
    assistant_.InitCodeAutomation();
    assistant_.CloseCodeAutomation();
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(CodeDatabaseSearchTest, TheHourglassShowsMeanwhileAndGoesWhateverHappens) {
    const auto shown = ElementsAre(MousePointer::Hourglass, MousePointer::Default);
    assistant_.InitCodeAutomation();
    EXPECT_THAT(screen_->pointers, shown);
    for (const std::string call : {"Find", "Exists", "MakeLocator", "Browse", "Open", "Save"}) {
        SCOPED_TRACE(call);
        screen_->pointers.clear();
        machine_->answer = Chosen;
        machine_->throwing = {call};
        assistant_.InitCodeAutomation();
        EXPECT_THAT(screen_->pointers, shown);
    }
    screen_->pointers.clear();
    assistant_.CloseCodeAutomation();
    EXPECT_THAT(screen_->pointers, shown);
}

// One failing call of the services object: the folder that counts is always the one that it then has, and
// nothing but that is ever remembered.
TEST_F(CodeDatabaseSearchTest, EveryCallOfTheServicesObjectMayFail) {
    for (const Fault fault : {Fault::Fails, Fault::Empty, Fault::Throws}) {
        support::WithEveryCallFaulty(
            fault,
            [&] {
                auto subject = std::make_unique<CodeFixture>("");
                machine_->calls.clear();
                machine_->answer = Chosen;
                Remember(Remembered);
                PutDatabase(Chosen, u"chosen");
                return subject;
            },
            [&](const std::shared_ptr<hostmodel::Globals>& globals) {
                Lintara assistant(MakePlatform());
                assistant.oG = globals;
                assistant.InitCodeAutomation();
            },
            [&](CodeFixture& subject, FaultPlan& plan, const std::string& call) {
                SCOPED_TRACE(call);
                EXPECT_EQ(plan.liveHandles, 1U) << "the services object's own";
                const Text folder = subject.globals()->CodeDbPath().value();
                EXPECT_TRUE(folder.empty() || folder == Remembered || folder == Chosen);
                EXPECT_TRUE(StoredFolder() == Remembered || StoredFolder() == Chosen ||
                            // An empty folder reads as one that was chosen where it is read again.
                            (fault == Fault::Empty && StoredFolder() == u""));
                if (call == "no fault") {
                    EXPECT_EQ(folder, Chosen);
                    EXPECT_EQ(StoredFolder(), Chosen);
                    EXPECT_NE(subject.globals()->CodeDb().value(), nullptr);
                }
            });
    }
}

}  // namespace
}  // namespace lintara
