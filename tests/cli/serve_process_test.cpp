// The endpoint as a client meets it: a real process over pipes, every method of the protocol.
#include "cli/serve/method.h"
#include "tests/cli/command_run.h"
#include "tests/cli/serve_child.h"

#include <algorithm>
#include <csignal>
#include <set>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using nlohmann::json;
using testing::HasSubstr;

constexpr std::string_view code =
    "Private total As Long\r\n"
    "\r\n"
    "Public Sub Add(ByVal n As Long)\r\n"
    "    total = total + n\r\n"
    "    Debug.Print total\r\n"
    "End Sub\r\n"
    "\r\n"
    "Public Property Get Count() As Long\r\n"
    "    Count = total\r\n"
    "End Property\r\n"
    "Public Property Let Count(ByVal n As Long)\r\n"
    "    total = n\r\n"
    "End Property\r\n"
    "\r\n"
    "Private Sub cmdOk_Click()\r\n"
    "    Add 1\r\n"
    "End Sub";

const json place = {{"project", "Demo"}, {"component", "Main"}};

json With(json params, const json& more) {
    params.update(more);
    return params;
}

json Member(std::string_view name, const json& more = json::object()) {
    return With({{"sProject", "Demo"}, {"sComponent", "Main"}, {"sMember", name}}, more);
}

class ServeProcess : public testing::Test {
  protected:
    void MakeDemo() {
        ASSERT_EQ(child.ResultOf("workspace.newProject", {{"name", "Demo"}}), json::object());
        ASSERT_EQ(child.ResultOf("workspace.addComponent",
                                 {{"project", "Demo"},
                                  {"name", "Main"},
                                  {"type", 5},
                                  {"text", code},
                                  {"controls", {{{"name", "cmdOk"}, {"className", "CommandButton"}}}}}),
                  json::object());
    }
    json Lines(int first, int count) {
        return child.ResultOf("codemodule.Lines",
                              With(place, {{"startLine", first}, {"count", count}}))["value"];
    }
    std::string Text() { return child.ResultOf("codemodule.Text", place)["value"]; }
    void PutCaret(int line, int column) {
        EXPECT_EQ(child.ResultOf("ide.activate", With(place, {{"startLine", line},
                                                              {"startColumn", column},
                                                              {"endLine", line},
                                                              {"endColumn", column}})),
                  json::object());
    }

    void AskCodeModule();
    void AskQueries();
    void AskTextArithmetic();
    void AskBuffers();
    void AskTransformers();
    void AskSettingsAndNames();
    void AskFiles();

    CommandTest files;
    ServeChild child;
};

void ServeProcess::AskCodeModule() {
    const auto ask = [&](const std::string& operation, const json& more = json::object()) {
        return child.ResultOf("codemodule." + operation, With(place, more));
    };
    EXPECT_EQ(ask("CountOfLines")["value"], 17);
    EXPECT_EQ(ask("CountOfDeclarationLines")["value"], 1);
    EXPECT_EQ(Lines(3, 2), "Public Sub Add(ByVal n As Long)\r\n    total = total + n");
    EXPECT_EQ(ask("ProcStartLine", {{"name", "add"}, {"kind", 0}}), (json{{"value", 2}}));
    EXPECT_EQ(ask("ProcBodyLine", {{"name", "Count"}, {"kind", 3}}), (json{{"value", 8}}));
    EXPECT_EQ(ask("ProcCountLines", {{"name", "Count"}, {"kind", 1}}), (json{{"value", 3}}));
    EXPECT_EQ(ask("ProcOfLine", {{"line", 12}}), (json{{"value", "Count"}, {"out", {{"kind", 1}}}}));
    EXPECT_EQ(ask("ProcOfLine", {{"line", 1}}), (json{{"value", ""}, {"out", {{"kind", 0}}}}));
    const json flags = {{"wholeWord", true}, {"matchCase", false}, {"patternSearch", false}};
    const json all = With(flags, {{"startLine", 1}, {"startColumn", 1}, {"endLine", -1}, {"endColumn", -1}});
    EXPECT_EQ(ask("Find", With(all, {{"target", "TOTAL"}})),
              (json{{"value", true},
                    {"out", {{"startLine", 1}, {"startColumn", 9}, {"endLine", 1}, {"endColumn", 14}}}}));
    EXPECT_EQ(ask("Find", With(all, {{"target", "nowhere"}})),
              (json{{"value", false},
                    {"out", {{"startLine", 1}, {"startColumn", 1}, {"endLine", -1}, {"endColumn", -1}}}}));
    const json members = ask("Members")["value"];
    ASSERT_EQ(members.size(), 4U);
    EXPECT_EQ(members[0], (json{{"name", "total"}, {"type", 3}, {"codeLocation", 1}}));
    EXPECT_EQ(members[2], (json{{"name", "Count"}, {"type", 2}, {"codeLocation", 8}}));
    EXPECT_EQ(ask("InsertLines", {{"line", 1}, {"text", "' one\r\nif a then b"}}), json::object());
    EXPECT_EQ(Lines(1, 2), "' one\r\nIf a Then b");
    EXPECT_EQ(ask("ReplaceLine", {{"line", 1}, {"text", "' two"}}), json::object());
    EXPECT_EQ(Lines(1, 1), "' two");
    EXPECT_EQ(ask("DeleteLines", {{"startLine", 1}, {"count", 2}}), json::object());
    EXPECT_EQ(Text(), code);
    EXPECT_EQ(child.ResultOf("inspect.procedureRanges", Member("Count")), (json{{"Found", true},
                                                                                {"Start1", 9},
                                                                                {"End1", 10},
                                                                                {"Start2", 12},
                                                                                {"End2", 13},
                                                                                {"Start3", 0},
                                                                                {"End3", 0}}));
    EXPECT_EQ(child.ResultOf("inspect.procedureRanges", Member("None"))["Found"], false);
}

void ServeProcess::AskQueries() {
    EXPECT_EQ(child.ResultOf("lintara.GetMemberName")["value"], "") << "no code window is active";
    EXPECT_EQ(child.ResultOf("lintara.GetLineNumber")["value"], 0);
    PutCaret(16, 3);
    EXPECT_EQ(child.ResultOf("lintara.GetLineNumber")["value"], 16);
    EXPECT_EQ(child.ResultOf("lintara.GetMemberName")["value"], "cmdOk_Click");
    EXPECT_EQ(child.ResultOf("lintara.GetMemberType")["value"], "?") << "a blank line begins its block";
    PutCaret(9, 1);
    EXPECT_EQ(child.ResultOf("lintara.GetMemberName")["value"], "Count");
    EXPECT_EQ(child.ResultOf("lintara.GetMemberTypeEx",
                             {{"sComponentName", "Main"}, {"sMemberName", "Add"}})["value"],
              "Sub");
    EXPECT_EQ(child.ResultOf("lintara.ParsePseudoCode",
                             {{"APseudoCodeString", "{ProjectName}.{ComponentName}.{MemberName}"}})["value"],
              "Demo.Main.Count");
    EXPECT_EQ(
        child.ResultOf("lintara.ParsePseudoCodeEx", {{"APseudoCodeString", "{MemberName}: {ControlName}"},
                                                     {"AComponentName", "Main"},
                                                     {"AMemberName", "cmdOk_Click"}})["value"],
        "cmdOk_Click: cmdOk");
    EXPECT_EQ(child.ResultOf("lintara.GeneratePseudoCode", {{"sCode", "Demo.Main"}})["value"],
              "{ProjectName}.{ComponentName}");
    EXPECT_EQ(child.ResultOf("ide.deactivate"), json::object());
    EXPECT_EQ(child.ResultOf("lintara.GetMemberName")["value"], "");
}

void ServeProcess::AskTextArithmetic() {
    EXPECT_EQ(
        child.ResultOf(
            "lintara.GetTextSelection",
            {{"sLines", "abc\r\ndef"}, {"iStartLine", 1}, {"iEndLine", 3}, {"iStartCol", 2}, {"iEndCol", 1}}),
        (json{{"value", "bc\r\ndef\r\n"}, {"out", {{"sLines", "abc\r\ndef\r\n"}}}}));
    EXPECT_EQ(
        child.ResultOf("lintara.InsertTextInLine", {{"sLine", "ac"}, {"sText", "b"}, {"iCol", 2}})["value"],
        "abc");
    EXPECT_EQ(child.ResultOf("lintara.TranslateCarret", {{"iLine", 1}, {"iCol", 1}, {"sText", "ab"}}),
              (json{{"out", {{"iLine", 1}, {"iCol", 3}}}}));
}

void ServeProcess::AskBuffers() {
    const auto get = [&](int index) {
        return child.ResultOf("lintara.AdditionalCPBuffer.get", {{"Index", index}})["value"];
    };
    const auto set = [&](int index, const std::string& value) {
        EXPECT_EQ(child.ResultOf("lintara.AdditionalCPBuffer.set", {{"Index", index}, {"value", value}}),
                  json::object());
    };
    EXPECT_EQ(child.ResultOf("lintara.TarnwickCPBuffer.set", {{"value", "main"}}), json::object());
    EXPECT_EQ(child.ResultOf("lintara.TarnwickCPBuffer.get")["value"], "main");
    EXPECT_EQ(child.ResultOf("lintara.InitCodeAutomation"), json::object());
    set(3, "kept");
    set(10, "in memory only");
    set(11, "nowhere");
    EXPECT_EQ(get(11), "");
    EXPECT_EQ(child.ResultOf("lintara.CloseCodeAutomation"), json::object());
    set(3, "changed");
    set(10, "changed");
    EXPECT_EQ(child.ResultOf("lintara.InitCodeAutomation"), json::object());
    EXPECT_EQ(get(3), "kept");
    EXPECT_EQ(get(10), "changed");
    EXPECT_EQ(child.ResultOf("lintara.ShowHistory"), json::object());
}

void ServeProcess::AskTransformers() {
    EXPECT_EQ(
        child.ResultOf("lintara.LineNumbersInserter", Member("Add", {{"iLNBase", 10000}, {"iLNStep", 5}})),
        json::object());
    EXPECT_EQ(Lines(4, 2), "10000:     total = total + n\r\n10005:     Debug.Print total");
    EXPECT_EQ(child.ResultOf("lintara.LineNumbersRemover", Member("Add")), json::object());
    EXPECT_EQ(Text(), code);
    EXPECT_EQ(child.ResultOf("settings.save",
                             {{"section", "CodeAutomation"}, {"key", "EHLabel"}, {"value", "hErr"}}),
              json::object());
    EXPECT_EQ(child.ResultOf(
                  "lintara.ErrorHandlerInserter",
                  Member("Add", {{"sEHLabel", "hErr"}, {"sEHCode", "    Debug.Print \"{MemberName}\""}})),
              json::object());
    EXPECT_THAT(Text(), HasSubstr("    Debug.Print \"Add\"\r\n"));
    EXPECT_EQ(child.ResultOf("lintara.ErrorHandlerRemover", Member("Add")), json::object());
    EXPECT_THAT(Text(), testing::Not(HasSubstr("hErr")));
    EXPECT_EQ(child.ResultOf("lintara.CustomCodeInserter", Member("cmdOk_Click", {{"sCodeToInsert", "Beep"},
                                                                                  {"fNoDelimiters", false},
                                                                                  {"iWhere", 1},
                                                                                  {"iLine", 0},
                                                                                  {"ID", 7}})),
              json::object());
    EXPECT_THAT(Text(), HasSubstr("TWCustomCode begin - please do not modify or remove this line 7"));
    EXPECT_EQ(child.ResultOf("lintara.CustomCodeRemover", Member("cmdOk_Click", {{"ID", 7}})),
              json::object());
    EXPECT_THAT(Text(), testing::Not(HasSubstr("TWCustomCode")));
    EXPECT_EQ(child.ResultOf("lintara.SearchAndReplace", {{"AComponentName", "Main"},
                                                          {"ASoughtString", "total"},
                                                          {"AReplacementString", "amount"},
                                                          {"AStartLine", 1},
                                                          {"AEndLine", 1},
                                                          {"WholeWord", true},
                                                          {"GoThroughDelete", false}}),
              (json{{"out", {{"AFound", true}}}}));
    EXPECT_EQ(Lines(1, 1), "Private amount As Long");
}

void ServeProcess::AskSettingsAndNames() {
    const json name = {{"section", "Mine"}, {"key", "Color"}};
    EXPECT_EQ(child.ResultOf("settings.get", With(name, {{"default", "red"}}))["value"], "red");
    EXPECT_EQ(child.ResultOf("settings.save", With(name, {{"value", "a\r\nb"}})), json::object());
    EXPECT_EQ(child.ResultOf("settings.get", With(name, {{"default", "red"}}))["value"], "a\r\nb");
    EXPECT_EQ(child.ResultOf("globals.set", {{"ComputerName", "box"}, {"UserName", "ann"}}), json::object());
    PutCaret(16, 1);
    EXPECT_EQ(child.ResultOf("lintara.ParsePseudoCode",
                             {{"APseudoCodeString", "{UserName}@{ComputerName}"}})["value"],
              "ann@box");
}

void ServeProcess::AskFiles() {
    files.WriteShop();
    const auto before = files.Files();
    const json opened = child.ResultOf("workspace.open", {{"path", files.Path("Shop.vbp")}});
    ASSERT_EQ(opened["projects"].size(), 1U);
    EXPECT_EQ(opened["projects"][0]["name"], "Shop");
    EXPECT_EQ(opened["projects"][0]["path"], files.Path("Shop.vbp"));
    EXPECT_EQ(opened["projects"][0]["components"][0],
              (json{{"name", "Main"}, {"type", 1}, {"lines", 12}, {"path", files.Path("Main.bas")}}));
    EXPECT_EQ(opened["warnings"], json::array());
    EXPECT_EQ(child.ResultOf("workspace.projects")["projects"].size(), 2U);
    EXPECT_EQ(child.ResultOf("ide.setActiveProject", {{"project", "Shop"}}), json::object());
    EXPECT_EQ(child.ResultOf("workspace.changes")["files"], json::array());
    child.ResultOf("lintara.LineNumbersInserter", {{"sProject", "Shop"},
                                                   {"sComponent", "Main"},
                                                   {"sMember", "Main"},
                                                   {"iLNBase", 10},
                                                   {"iLNStep", 10}});
    const json changes = child.ResultOf("workspace.changes")["files"];
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0]["path"], files.Path("Main.bas"));
    EXPECT_THAT(changes[0]["diff"].get<std::string>(), HasSubstr("\n+10:     count = 1\r\n"));
    EXPECT_EQ(files.Files(), before) << "nothing is written before it is asked for";
    EXPECT_EQ(child.ResultOf("workspace.save")["files"], json::array({files.Path("Main.bas")}));
    EXPECT_THAT(files.Read("Main.bas"), HasSubstr("10:     count = 1\r\n20:     Sell count\r\n"));
    EXPECT_EQ(child.ResultOf("workspace.changes")["files"], json::array());
    EXPECT_EQ(child.ResultOf("workspace.reset"), json::object());
    EXPECT_EQ(child.ResultOf("workspace.projects")["projects"], json::array());
}

TEST_F(ServeProcess, AnswersEveryMethod) {
    MakeDemo();
    AskCodeModule();
    AskQueries();
    AskTextArithmetic();
    AskBuffers();
    AskSettingsAndNames();
    AskTransformers();
    AskFiles();
    const std::set<std::string> asked(child.asked().begin(), child.asked().end());
    for (const MethodInfo& method : Methods()) {
        EXPECT_TRUE(asked.contains(method.name)) << method.name << " was not asked";
    }
    child.CloseInput();
    EXPECT_EQ(child.ReadLine(), "");
    EXPECT_EQ(child.Status(), 0);
}

TEST_F(ServeProcess, ResetBringsBackTheStart) {
    MakeDemo();
    PutCaret(3, 1);
    child.ResultOf("globals.set", {{"UserName", "ann"}});
    child.ResultOf("settings.save", {{"section", "a"}, {"key", "b"}, {"value", "c"}});
    child.ResultOf("lintara.TarnwickCPBuffer.set", {{"value", "main"}});
    child.ResultOf("lintara.AdditionalCPBuffer.set", {{"Index", 0}, {"value", "zero"}});
    child.ResultOf("lintara.CloseCodeAutomation");
    child.ResultOf("workspace.reset");
    EXPECT_EQ(child.ResultOf("workspace.projects"),
              (json{{"projects", json::array()}, {"warnings", json::array()}}));
    EXPECT_EQ(child.ResultOf("lintara.GetLineNumber")["value"], 0);
    EXPECT_EQ(child.ResultOf("settings.get", {{"section", "a"}, {"key", "b"}, {"default", "d"}})["value"],
              "d");
    EXPECT_EQ(child.ResultOf("lintara.TarnwickCPBuffer.get")["value"], "");
    child.ResultOf("lintara.InitCodeAutomation");
    EXPECT_EQ(child.ResultOf("lintara.AdditionalCPBuffer.get", {{"Index", 0}})["value"], "");
    MakeDemo();
    PutCaret(4, 1);
    EXPECT_NE(child.ResultOf("lintara.ParsePseudoCode", {{"APseudoCodeString", "{UserName}"}})["value"],
              "ann");
}

TEST_F(ServeProcess, AnswersBeforeTheNextRequest) {
    // Without a line feed nothing is complete; with it the answer comes while the input stays open.
    child.Write(R"({"jsonrpc":"2.0","id":1,)");
    child.Write("\"method\":\"lintara.ShowHistory\"}\n{\"jsonrpc\"");
    EXPECT_EQ(child.ReadLine(), R"({"jsonrpc":"2.0","id":1,"result":{}})");
    child.Write(R"(:"2.0","id":2,"method":"lintara.ShowHistory"})");
    child.CloseInput();
    EXPECT_EQ(child.ReadLine(), R"({"jsonrpc":"2.0","id":2,"result":{}})") << "a last line without line feed";
    EXPECT_EQ(child.ReadLine(), "");
    EXPECT_EQ(child.Status(), 0);
}

TEST_F(ServeProcess, EndsQuietlyWhenNobodyReads) {
    child.CloseOutput();
    child.Write("{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"lintara.ShowHistory\"}\n");
    EXPECT_EQ(child.Status(), 3);
}

TEST_F(ServeProcess, ServesOnAfterAnythingThatIsNoRequest) {
    using namespace std::string_literals;
    MakeDemo();
    for (const std::string& line :
         {""s, "\0"s, "\xff\xfe\0x"s, "{"s, "[[[["s, std::string(3'000'000, '['), std::string(3'000'000, '{'),
          "\"" + std::string(3'000'000, 'x'), std::string(3'000'000, '9'), "1e" + std::string(3'000'000, '9'),
          "GET / HTTP/1.1\r"s}) {
        child.Write(line + "\n");
        const json answer = json::parse(child.ReadLine());
        EXPECT_TRUE(answer["error"]["code"] == -32700 || answer["error"]["code"] == -32600);
        EXPECT_EQ(answer["id"], nullptr);
    }
    EXPECT_EQ(Text(), code);
}

// The address sanitizer keeps what was freed for a while, to find late uses of it.
#ifdef __SANITIZE_ADDRESS__
constexpr bool MemoryIsGivenBack = false;
#else
constexpr bool MemoryIsGivenBack = true;
#endif

TEST_F(ServeProcess, TakesLinesOfManyMegabytesAndGivesTheirMemoryBack) {
    constexpr std::size_t size = 48 * 1024 * 1024;
    const auto before = child.ResidentKilobytes();
    const std::string text(size, 'x');
    child.Write(
        R"({"jsonrpc":"2.0","id":1,"method":"lintara.InsertTextInLine","params":{"sLine":"","iCol":2,"sText":")" +
        text + "\"}}\n");
    EXPECT_EQ(child.ReadLine(), R"({"jsonrpc":"2.0","id":1,"result":{"value":""}})");
    EXPECT_EQ(child.ResultOf("lintara.GetLineNumber")["value"], 0);
    if (MemoryIsGivenBack) {
        EXPECT_LT(child.ResidentKilobytes() - before, 16 * 1024);
    }
}

TEST_F(ServeProcess, RefusesALineBeyondTheLimit) {
    const std::string block(16 * 1024 * 1024, ' ');
    for (int i = 0; i < 17; ++i) {
        child.Write(block);
    }
    const json answer = json::parse(child.ReadLine());
    EXPECT_EQ(answer["error"]["code"], -32600);
    EXPECT_THAT(answer["error"]["message"].get<std::string>(), HasSubstr("longer than 268435456 bytes"));
    child.Write("{}\n");
    EXPECT_EQ(child.ResultOf("lintara.GetLineNumber")["value"], 0) << "the rest of the line is passed over";
    if (MemoryIsGivenBack) {
        EXPECT_LT(child.ResidentKilobytes(), 64 * 1024);
    }
}

TEST_F(ServeProcess, MemoryStaysFlat) {
    MakeDemo();
    PutCaret(4, 1);
    std::string round;
    int id = 0;
    const auto add = [&](const std::string& method, const json& params) {
        round += json{{"jsonrpc", "2.0"}, {"id", ++id}, {"method", method}, {"params", params}}.dump() + "\n";
    };
    add("lintara.LineNumbersInserter", Member("Add", {{"iLNBase", 10000}, {"iLNStep", 5}}));
    add("codemodule.Text", place);
    add("lintara.GetMemberName", json::object());
    add("lintara.LineNumbersRemover", Member("Add"));
    add("codemodule.Lines", With(place, {{"startLine", 99}, {"count", 1}}));
    round += "no request\n";
    const auto serve = [&](int rounds) {
        for (int i = 0; i < rounds; ++i) {
            child.Write(round);
            for (int answer = 0; answer < id + 1; ++answer) {
                EXPECT_NE(child.ReadLine(), "");
            }
        }
        return child.ResidentKilobytes();
    };
    // The room for edited lines grows for a while, until it is tidied up.
    const long warm = serve(3000);
    const long later = serve(6000);
    if (MemoryIsGivenBack) {
        EXPECT_LE(later, warm + 512) << "in KB, after 18,000 and after 54,000 requests";
    }
    EXPECT_EQ(Text(), code);
}

TEST_F(ServeProcess, WithoutIsolationTheSettingsAreTheUsers) {
    ::setenv("XDG_CONFIG_HOME", files.Path("home").c_str(), 1);
    {
        ServeChild own(std::vector<std::string>{});
        own.ResultOf("settings.save", {{"section", "CodeAutomation"}, {"key", "LNBase"}, {"value", "700"}});
        own.ResultOf("workspace.reset");
        EXPECT_EQ(own.ResultOf("settings.get",
                               {{"section", "CodeAutomation"}, {"key", "LNBase"}, {"default", ""}})["value"],
                  "700");
        ServeChild isolated;
        EXPECT_EQ(
            isolated.ResultOf("settings.get",
                              {{"section", "CodeAutomation"}, {"key", "LNBase"}, {"default", ""}})["value"],
            "");
        isolated.ResultOf("settings.save",
                          {{"section", "CodeAutomation"}, {"key", "LNBase"}, {"value", "1"}});
    }
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_THAT(files.Read("home/Tarnwick/settings.toml"), HasSubstr("LNBase = \"700\""));
}

}  // namespace
}  // namespace lintara::cli
