// The endpoint on files: what it opens, compares and saves, with others at work on the same project.
#include "tests/cli/command_run.h"
#include "tests/cli/endpoint_test.h"
#include "tests/support/other_process.h"
#include "workspace/descriptor.h"
#include "workspace/open.h"
#include "workspace/save.h"

#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class ServeFiles : public testing::Test {
  protected:
    void SetUp() override { files.WriteShop(); }

    json Open(const std::string& name, const json& more = json::object()) {
        json params = {{"path", files.Path(name)}};
        params.update(more);
        return endpoint.ResultOf("workspace.open", params);
    }
    void Number(const std::string& component = "Main", const std::string& member = "Main", int base = 10) {
        EXPECT_EQ(endpoint.ErrorOf("lintara.LineNumbersInserter", {{"sProject", "Shop"},
                                                                   {"sComponent", component},
                                                                   {"sMember", member},
                                                                   {"iLNBase", base},
                                                                   {"iLNStep", 10}}),
                  0);
    }
    json Save() { return endpoint.ResultOf("workspace.save"); }
    json Changes() { return endpoint.ResultOf("workspace.changes")["files"]; }
    void ReplaceLine(int line, const std::string& text) {
        EXPECT_EQ(
            endpoint.ErrorOf("codemodule.ReplaceLine",
                             {{"project", "Shop"}, {"component", "Main"}, {"line", line}, {"text", text}}),
            0);
    }

    CommandTest files;
    EndpointTest endpoint;
};

TEST_F(ServeFiles, SavesAgainAndAgain) {
    Open("Shop.vbp");
    Number();
    EXPECT_EQ(Save()["files"].size(), 1U);
    EXPECT_EQ(Save()["files"].size(), 0U) << "nothing has changed since";
    Number("Main", "Sell", 500);
    ASSERT_EQ(Changes().size(), 1U);
    EXPECT_THAT(Changes()[0]["diff"].get<std::string>(),
                AllOf(HasSubstr("+500:     Sell = n - 1"), testing::Not(HasSubstr("+10:"))));
    EXPECT_EQ(Save()["files"].size(), 1U);
    EXPECT_THAT(files.Read("Main.bas"),
                AllOf(HasSubstr("10:     count = 1\r\n"), HasSubstr("500:     Sell = n - 1\r\n"),
                      testing::StartsWith("Attribute VB_Name")));
}

TEST_F(ServeFiles, RefusesToSaveOverAFileThatChanged) {
    Open("Shop.vbp");
    Number();
    Number("Stock", "Size");
    files.Write("Main.bas", "Attribute VB_Name = \"Main\"\r\n' somebody's work\r\n");
    const auto before = files.Files();
    const json error = Save();
    EXPECT_EQ(error["code"], -32000);
    EXPECT_THAT(error["message"].get<std::string>(),
                AllOf(HasSubstr(files.Path("Main.bas")), HasSubstr("changed on disk since it was read")));
    EXPECT_EQ(files.Files(), before) << "all or nothing";
    EXPECT_EQ(Changes().size(), 2U) << "the edits are still there";
}

TEST_F(ServeFiles, RefusesToSaveOverAFileThatChangedSinceItsOwnSave) {
    Open("Shop.vbp");
    Number();
    EXPECT_EQ(Save()["files"].size(), 1U);
    files.Write("Main.bas", files.Read("Main.bas") + "' somebody's work\r\n");
    Number("Main", "Sell");
    EXPECT_EQ(Save()["code"], -32000);
    EXPECT_THAT(files.Read("Main.bas"), HasSubstr("somebody's work"));
}

TEST_F(ServeFiles, RefusesToSaveWhatAFileCannotHold) {
    Open("Shop.vbp");
    ReplaceLine(1, "' \u4e2d");
    Number("Stock", "Size");
    const auto before = files.Files();
    const json error = Save();
    EXPECT_EQ(error["code"], -32000);
    EXPECT_THAT(error["message"].get<std::string>(), HasSubstr("Main.bas"));
    EXPECT_EQ(files.Files(), before) << "all or nothing";
}

TEST_F(ServeFiles, HoldsNoLockWhileItServes) {
    Open("Shop.vbp");
    Number();
    const workspace::Descriptor folder(::open(files.folder().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    EXPECT_EQ(::flock(folder.get(), LOCK_EX | LOCK_NB), 0) << "the lock is free";
    EXPECT_EQ(::flock(folder.get(), LOCK_UN), 0);
    EXPECT_EQ(files.Run("insert @Shop.vbp --line-numbers --component Stock --procedure Size --quiet").status,
              0);
    EXPECT_EQ(Save()["files"].size(), 1U) << "what others saved was another file";
}

TEST_F(ServeFiles, OpensSeveralProjectsOnceEach) {
    EXPECT_EQ(Open("Shop.vbp")["projects"][0]["name"], "Shop");
    const json again = Open("Shop.vbp");
    EXPECT_EQ(again["code"], -32000);
    EXPECT_THAT(again["message"].get<std::string>(), HasSubstr("a project named Shop is open already"));
    EXPECT_EQ(Open("lib")["projects"][0]["name"], "lib");
    EXPECT_EQ(endpoint.ResultOf("workspace.projects")["projects"].size(), 2U);
}

TEST_F(ServeFiles, MissingComponentsAreAnErrorOrAWarning) {
    files.Write("Gap.vbp", "Name=\"Gap\"\r\nModule=Main; Main.bas\r\nModule=Gone; Gone.bas\r\n");
    const json error = Open("Gap.vbp");
    EXPECT_EQ(error["code"], -32000);
    EXPECT_THAT(error["message"].get<std::string>(), HasSubstr("Gone.bas"));
    EXPECT_EQ(endpoint.ResultOf("workspace.projects")["projects"], json::array());
    const json opened = Open("Gap.vbp", {{"skipMissing", true}});
    ASSERT_EQ(opened["warnings"].size(), 1U);
    EXPECT_EQ(opened["warnings"][0]["path"], files.Path("Gap.vbp"));
    EXPECT_EQ(opened["warnings"][0]["line"], 3);
    EXPECT_EQ(endpoint.ResultOf("workspace.projects")["warnings"], opened["warnings"]);
}

TEST_F(ServeFiles, FoldersMayBeTakenWithWhatLiesBelow) {
    EXPECT_EQ(Open("", {{"recursive", true}})["projects"][0]["components"].size(), 2U);
    endpoint.ResultOf("workspace.reset");
    EXPECT_EQ(Open("")["projects"][0]["components"].size(), 1U);
}

TEST_F(ServeFiles, DiffsAreUtf8) {
    files.Write("Main.bas",
                "Attribute VB_Name = \"Main\"\r\nSub \xc4nder()\r\n    x = \"\xe4\"\r\nEnd Sub\r\n");
    Open("Shop.vbp");
    Number("Main", "\xc3\x84nder");
    ASSERT_EQ(Changes().size(), 1U);
    EXPECT_THAT(
        Changes()[0]["diff"].get<std::string>(),
        AllOf(HasSubstr("--- a"), HasSubstr("\n Sub \xc3\x84nder()\r\n"),
              HasSubstr("\n-    x = \"\xc3\xa4\"\r\n"), HasSubstr("\n+10:     x = \"\xc3\xa4\"\r\n")));
}

TEST_F(ServeFiles, OpensInAnotherCodePage) {
    files.Write("Main.bas", "Attribute VB_Name = \"Main\"\r\n' \xe4\r\n");
    Open("Main.bas", {{"codePage", "windows-1251"}});
    EXPECT_EQ(endpoint.ResultOf("codemodule.Text", {{"project", "Main"}, {"component", "Main"}})["value"],
              "' \xd0\xb4");
}

TEST_F(ServeFiles, TellsTheCharacterThatAFileCannotHold) {
    Open("Shop.vbp");
    ReplaceLine(1, "' \xd0\xb4");
    const auto before = files.Files();
    for (const std::string method : {"workspace.changes", "workspace.save"}) {
        const json error = endpoint.ResultOf(method);
        EXPECT_EQ(error["code"], -32000);
        EXPECT_THAT(error["message"].get<std::string>(), HasSubstr(files.Path("Main.bas") + ":2: "));
    }
    EXPECT_EQ(files.Files(), before);
    ReplaceLine(1, "' plain");
    EXPECT_EQ(Save()["files"].size(), 1U);
}

TEST_F(ServeFiles, WorksThroughALinkToTheProject) {
    std::filesystem::create_directory(files.Path("links"));
    std::filesystem::create_symlink("../Shop.vbp", files.Path("links/Here.vbp"));
    const json opened = Open("links/Here.vbp");
    ASSERT_TRUE(opened.contains("projects")) << opened;
    Number();
    EXPECT_EQ(Save()["files"].size(), 1U);
    EXPECT_THAT(files.Read("Main.bas"), HasSubstr("10:     count = 1"));
    EXPECT_TRUE(std::filesystem::is_symlink(files.Path("links/Here.vbp")));
}

TEST_F(ServeFiles, ClearsUpAfterAnInterruptedSave) {
    const auto before = files.Files();
    // A process that dies when its journal is there.
    const std::string answer = support::InOtherProcess([&]() -> std::string {
        workspace::Workspace workspace;
        (void)workspace::Open(workspace, files.Path("Shop.vbp"), {});
        (void)workspace.projects()[0]->components()[0]->module->ReplaceLine(Line{1}, u"' x");
        workspace::SaveOptions options;
        int steps = 0;
        options.beforeStep = [&] {
            if (++steps == 3) {
                ::_exit(0);
            }
        };
        return workspace::Save(workspace, options) ? "saved" : "refused";
    });
    ASSERT_EQ(answer, "") << "the save was not interrupted";
    ASSERT_NE(files.Files(), before);
    const json opened = Open("Shop.vbp");
    ASSERT_EQ(opened["warnings"].size(), 1U);
    EXPECT_THAT(opened["warnings"][0]["message"].get<std::string>(),
                HasSubstr("leftovers of an interrupted save"));
    EXPECT_EQ(files.Files(), before);
}

TEST_F(ServeFiles, ComponentsInMemoryAreNotSaved) {
    Open("Shop.vbp");
    EXPECT_EQ(
        endpoint.ErrorOf("workspace.addComponent",
                         {{"project", "Shop"}, {"name", "New"}, {"type", 2}, {"text", "Sub A()\r\nEnd Sub"}}),
        0);
    EXPECT_EQ(endpoint.ErrorOf("codemodule.InsertLines",
                               {{"project", "Shop"}, {"component", "New"}, {"line", 1}, {"text", "' x"}}),
              0);
    EXPECT_EQ(Changes(), json::array());
    EXPECT_EQ(Save()["files"], json::array());
}

TEST_F(ServeFiles, AfterASaveTheCodeIsWhatTheFileHolds) {
    Open("Shop.vbp");
    EXPECT_EQ(endpoint.ErrorOf("codemodule.InsertLines", {{"project", "Shop"},
                                                          {"component", "Main"},
                                                          {"line", 6},
                                                          {"text", "Attribute Main.VB_Description = \"x\""}}),
              0);
    EXPECT_EQ(Save()["files"].size(), 1U);
    const json place = {{"project", "Shop"}, {"component", "Main"}};
    const json here = endpoint.ResultOf("codemodule.Text", place);
    endpoint.ResultOf("workspace.reset");
    Open("Shop.vbp");
    EXPECT_EQ(endpoint.ResultOf("codemodule.Text", place), here);
}

}  // namespace
}  // namespace lintara::cli
