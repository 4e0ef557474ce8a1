// The endpoint's protocol: what is a request, what is answered, and with which error.
#include "tests/cli/endpoint_test.h"

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

constexpr std::string_view oneModule = "Sub A()\r\n    Beep\r\nEnd Sub";

TEST(ServeProtocol, AnswersWithResultAndId) {
    EndpointTest endpoint;
    EXPECT_EQ(endpoint.Serve(R"({"jsonrpc":"2.0","id":7,"method":"lintara.GetLineNumber"})"),
              R"({"jsonrpc":"2.0","id":7,"result":{"value":0}})");
    EXPECT_EQ(
        endpoint.Serve(" {\"method\":\"workspace.reset\",\"params\":{},\"id\":\"x\",\"jsonrpc\":\"2.0\"}\r"),
        R"({"jsonrpc":"2.0","id":"x","result":{}})");
}

TEST(ServeProtocol, IdsComeBackAsTheyWere) {
    EndpointTest endpoint;
    for (const std::string id : {"0", "-0", "1.50", "1e3", "-1E+2", "123456789012345678901234567890", "1e999",
                                 "null", "\"\"", "\"a\\\"\\n\\u0001b\"", "\"\xc3\xa4\xf0\x9f\x98\x80\""}) {
        EXPECT_EQ(endpoint.Serve(R"({"jsonrpc":"2.0","id":)" + id + R"(,"method":"lintara.ShowHistory"})"),
                  R"({"jsonrpc":"2.0","id":)" + id + R"(,"result":{}})");
        EXPECT_THAT(endpoint.Serve(R"({"jsonrpc":"2.0","id":)" + id + R"(,"method":"nothing"})"),
                    StartsWith(R"({"jsonrpc":"2.0","id":)" + id + R"(,"error":{"code":-32601,)"));
    }
}

// The code of the error that a line is answered with, and the id.
struct Refused {
    std::string line;
    int code;
    json id = nullptr;
};

TEST(ServeProtocol, RefusesWhatIsNoRequest) {
    EndpointTest endpoint;
    const std::vector<Refused> cases = {
        {"", -32700},
        {"{", -32700},
        {R"({"jsonrpc":"2.0","id":1,"id":2,"method":"lintara.ShowHistory"})", -32700},
        {R"({"jsonrpc":"2.0","id":1,"method":"lintara.ShowHistory","params":{"\ud83d":1}})", -32700},
        {"[1e400,", -32700},
        {"1", -32600},
        {"null", -32600},
        {"\"x\"", -32600},
        {"[]", -32600},
        {"{}", -32600},
        {R"({"jsonrpc":"2.0","id":5})", -32600, 5},
        {R"({"jsonrpc":"2.0","id":5,"method":1})", -32600, 5},
        {R"({"jsonrpc":"2.0","method":1})", -32600},
        {R"({"id":5,"method":"lintara.ShowHistory"})", -32600, 5},
        {R"({"jsonrpc":"1.0","id":"a","method":"lintara.ShowHistory"})", -32600, "a"},
        {R"({"jsonrpc":2.0,"id":5,"method":"lintara.ShowHistory"})", -32600, 5},
        {R"({"jsonrpc":"2.0","id":{},"method":"lintara.ShowHistory"})", -32600},
        {R"({"jsonrpc":"2.0","id":[1],"method":"lintara.ShowHistory"})", -32600},
        {R"({"jsonrpc":"2.0","id":true,"method":"lintara.ShowHistory"})", -32600},
        {R"({"jsonrpc":"2.0","id":5,"method":"lintara.ShowHistory","params":1})", -32600, 5},
        {R"({"jsonrpc":"2.0","id":5,"method":"lintara.ShowHistory","params":null})", -32600, 5},
        {R"({"jsonrpc":"2.0","id":5,"method":"lintara.showHistory"})", -32601, 5},
        {R"({"jsonrpc":"2.0","id":5,"method":"lintara.oG.get"})", -32601, 5},
        {R"({"jsonrpc":"2.0","id":5,"method":""})", -32601, 5},
        {R"({"jsonrpc":"2.0","id":5,"method":"lintara.ShowHistory","params":[1]})", -32602, 5},
    };
    for (const Refused& each : cases) {
        const json answer = json::parse(endpoint.Serve(each.line));
        EXPECT_EQ(answer["error"]["code"], each.code) << each.line;
        EXPECT_EQ(answer["id"], each.id) << each.line;
        EXPECT_EQ(answer["jsonrpc"], "2.0");
        EXPECT_FALSE(answer.contains("result"));
        EXPECT_FALSE(answer["error"]["message"].get<std::string>().empty());
    }
    EXPECT_EQ(endpoint.ErrorOf("lintara.ShowHistory"), 0) << "the next request is served";
    EXPECT_EQ(endpoint.ErrorOf("lintara.ShowHistory", json::array()), 0) << "no argument has no position";
}

TEST(ServeProtocol, NotificationsAreCarriedOutAndNotAnswered) {
    EndpointTest endpoint;
    EXPECT_EQ(endpoint.Serve(R"({"jsonrpc":"2.0","method":"workspace.newProject","params":{"name":"P"}})"),
              "");
    EXPECT_EQ(endpoint.Serve(R"({"jsonrpc":"2.0","method":"nothing"})"), "");
    EXPECT_EQ(endpoint.Serve(R"({"jsonrpc":"2.0","method":"workspace.newProject","params":{}})"), "");
    EXPECT_EQ(endpoint.ResultOf("workspace.projects")["projects"][0]["name"], "P");
}

TEST(ServeProtocol, BatchesAreAnsweredWithAnArray) {
    EndpointTest endpoint;
    const json answers = json::parse(
        endpoint.Serve(R"([{"jsonrpc":"2.0","id":1,"method":"workspace.newProject","params":{"name":"P"}},)"
                       R"({"jsonrpc":"2.0","method":"workspace.newProject","params":{"name":"Q"}},)"
                       R"(17,{"jsonrpc":"2.0","id":2,"method":"nothing"},[],)"
                       R"({"jsonrpc":"2.0","id":3,"method":"workspace.newProject","params":{"name":"q"}}])"));
    ASSERT_EQ(answers.size(), 5U);
    EXPECT_EQ(answers[0], (json{{"jsonrpc", "2.0"}, {"id", 1}, {"result", json::object()}}));
    EXPECT_EQ(answers[1]["error"]["code"], -32600);
    EXPECT_EQ(answers[1]["id"], nullptr);
    EXPECT_EQ(answers[2]["error"]["code"], -32601);
    EXPECT_EQ(answers[3]["error"]["code"], -32600);
    EXPECT_EQ(answers[4]["error"]["code"], -32000) << "the notification was carried out";
    EXPECT_EQ(endpoint.Serve(
                  R"([{"jsonrpc":"2.0","method":"lintara.ShowHistory"},{"jsonrpc":"2.0","method":"x"}])"),
              "");
    EXPECT_EQ(json::parse(endpoint.Serve("[1]")).size(), 1U);
}

TEST(ServeProtocol, LongBatchesAreAnsweredOnOneLine) {
    EndpointTest endpoint;
    endpoint.MakeModule(std::string(10'000, 'x'));
    json batch = json::array();
    for (int i = 0; i < 100; ++i) {
        batch.push_back({{"jsonrpc", "2.0"},
                         {"id", i},
                         {"method", "codemodule.Text"},
                         {"params", {{"project", "P"}, {"component", "M"}}}});
    }
    const json answers = json::parse(endpoint.Serve(batch.dump()));
    ASSERT_EQ(answers.size(), 100U);
    EXPECT_EQ(answers[99]["id"], 99);
    EXPECT_EQ(answers[99]["result"]["value"].get<std::string>().size(), 10'000U);
}

struct WrongArguments {
    std::string method;
    std::string params;
    std::string named;  // what the message names
};

TEST(ServeProtocol, NamesTheArgumentThatIsWrong) {
    EndpointTest endpoint;
    endpoint.MakeModule(std::string(oneModule));
    const std::string place = R"("project":"P","component":"M")";
    const std::string member = R"("sProject":"P","sComponent":"M","sMember":"A")";
    const std::vector<WrongArguments> cases = {
        {"codemodule.Lines", "{" + place + R"(,"startLine":1})", "\"count\" is missing"},
        {"codemodule.Lines", R"({"component":"M","startLine":1,"count":1})", "\"project\" is missing"},
        {"codemodule.Lines", "{" + place + R"(,"startLine":1,"count":1,"cuont":2})", "no argument \"cuont\""},
        {"codemodule.Lines", "{" + place + R"(,"startLine":1,"Count":1})", "no argument \"Count\""},
        {"codemodule.Lines", "{" + place + R"(,"startLine":"1","count":1})",
         "\"startLine\" has to be a whole"},
        {"codemodule.Lines", "{" + place + R"(,"startLine":1.5,"count":1})",
         "\"startLine\" has to be a whole"},
        {"codemodule.Lines", "{" + place + R"(,"startLine":null,"count":1})", "\"startLine\""},
        {"codemodule.Lines", "{" + place + R"(,"startLine":true,"count":1})", "\"startLine\""},
        {"codemodule.Lines", "{" + place + R"(,"startLine":2147483648,"count":1})",
         "-2147483648 to 2147483647"},
        {"codemodule.Lines", "{" + place + R"(,"startLine":-2147483649,"count":1})", "\"startLine\""},
        {"codemodule.Lines", "{" + place + R"(,"startLine":1e400,"count":1})", "\"startLine\""},
        {"codemodule.Lines", "{" + place + R"(,"startLine":1e-400,"count":1})", "\"startLine\""},
        {"codemodule.Lines", "{" + place + R"(,"startLine":99999999999999999999,"count":1})",
         "\"startLine\""},
        {"codemodule.Lines", R"({"project":1,"component":"M","startLine":1,"count":1})",
         "\"project\" has to be a"},
        {"codemodule.Find",
         "{" + place +
             R"(,"target":"a","startLine":1,"startColumn":1,"endLine":-1,"endColumn":-1,"wholeWord":0,"matchCase":false,"patternSearch":false})",
         "\"wholeWord\" has to be true or false"},
        {"codemodule.ProcOfLine", "{" + place + R"(,"line":1,"kind":"x"})", "\"kind\""},
        {"lintara.CustomCodeInserter",
         "{" + member + R"(,"sCodeToInsert":"x","fNoDelimiters":false,"iWhere":32768,"iLine":1,"ID":1})",
         "\"iWhere\" has to be from -32768 to 32767"},
        {"lintara.CustomCodeRemover", "{" + member + R"(,"ID":-32769})", "\"ID\""},
        {"lintara.SearchAndReplace",
         R"({"AComponentName":"M","ASoughtString":"a","AReplacementString":"b","AStartLine":1,"AEndLine":1,"WholeWord":false,"GoThroughDelete":false,"AFound":0})",
         "\"AFound\""},
        {"lintara.AdditionalCPBuffer.set", R"({"Index":1})", "\"value\""},
        {"lintara.ShowHistory", R"({"x":1})", "takes none"},
        {"workspace.open", R"({"path":""})", "\"path\""},
        {"workspace.open", R"({"path":"a\u0000b"})", "\"path\""},
        {"workspace.open", R"({"path":"/","codePage":"klingon"})", "\"codePage\""},
        {"workspace.open", R"({"path":"/","recursive":"yes"})", "\"recursive\""},
        {"workspace.newProject", R"({"name":""})", "\"name\""},
        {"workspace.addComponent", R"({"project":"P","name":"N","type":4,"text":""})", "\"type\""},
        {"workspace.addComponent", R"({"project":"P","name":"","type":1,"text":""})", "\"name\""},
        {"workspace.addComponent",
         R"({"project":"P","name":"N","type":1,"text":"","controls":[{"name":"a","className":"b"}]})",
         "\"controls\""},
        {"workspace.addComponent", R"({"project":"P","name":"N","type":5,"text":"","controls":{}})",
         "\"controls\""},
        {"workspace.addComponent", R"({"project":"P","name":"N","type":5,"text":"","controls":[1]})",
         "\"controls\""},
        {"workspace.addComponent",
         R"({"project":"P","name":"N","type":5,"text":"","controls":[{"name":"a"}]})", "\"controls\""},
        {"workspace.addComponent",
         R"({"project":"P","name":"N","type":5,"text":"","controls":[{"name":"a","className":1}]})",
         "\"controls\""},
        {"globals.set", R"({"ComputerName":"a","UserName":1})", "\"UserName\""},
    };
    const json before = endpoint.ResultOf("workspace.projects");
    for (const WrongArguments& each : cases) {
        const std::string line =
            R"({"jsonrpc":"2.0","id":1,"method":")" + each.method + R"(","params":)" + each.params + "}";
        const json answer = json::parse(endpoint.Serve(line));
        ASSERT_TRUE(answer.contains("error")) << line;
        EXPECT_EQ(answer["error"]["code"], -32602) << line;
        EXPECT_THAT(answer["error"]["message"].get<std::string>(),
                    AllOf(StartsWith(each.method + ": "), HasSubstr(each.named)));
    }
    EXPECT_EQ(endpoint.ResultOf("workspace.projects"), before) << "nothing has changed";
    EXPECT_EQ(endpoint.TextOfModule(), oneModule);
}

TEST(ServeProtocol, LongNamesOfArgumentsAreCut) {
    EndpointTest endpoint;
    const std::string answer =
        endpoint.Serve(R"({"jsonrpc":"2.0","id":1,"method":"globals.set","params":{")" +
                       std::string(1'000'000, 'x') + R"(":1}})");
    EXPECT_THAT(answer, HasSubstr("xx ...\\\""));
    EXPECT_LT(answer.size(), 400U);
}

TEST(ServeProtocol, WholeNumbersMayBeWrittenInAnyWay) {
    EndpointTest endpoint;
    endpoint.MakeModule(std::string(oneModule));
    for (const std::string one : {"1", "1.0", "1e0", "10e-1", "0.1E+1"}) {
        const std::string request =
            R"({"jsonrpc":"2.0","id":1,"method":"codemodule.Lines","params":{"project":"P","component":"M",)"
            R"("count":1,"startLine":)" +
            one + "}}";
        EXPECT_EQ(json::parse(endpoint.Serve(request))["result"]["value"], "Sub A()") << one;
    }
}

struct HostFailureCase {
    std::string method;
    json params;
    std::string reason;
};

TEST(ServeProtocol, TellsWhyTheHostFails) {
    EndpointTest endpoint;
    endpoint.MakeModule(std::string(oneModule));
    const json place = {{"project", "P"}, {"component", "M"}};
    const auto with = [&](const json& more) {
        json params = place;
        params.update(more);
        return params;
    };
    const std::vector<HostFailureCase> cases = {
        {"codemodule.Lines", with({{"startLine", 0}, {"count", 1}}), "the line does not exist"},
        {"codemodule.Lines", with({{"startLine", 3}, {"count", 2}}), "the line does not exist"},
        {"codemodule.Lines", with({{"startLine", 1}, {"count", -1}}), "the line does not exist"},
        {"codemodule.InsertLines", with({{"line", 5}, {"text", ""}}), "the line does not exist"},
        {"codemodule.DeleteLines", with({{"startLine", 2}, {"count", 3}}), "the line does not exist"},
        {"codemodule.ReplaceLine", with({{"line", 4}, {"text", ""}}), "the line does not exist"},
        {"codemodule.ProcOfLine", with({{"line", 9}}), "the line does not exist"},
        {"codemodule.ProcStartLine", with({{"name", "B"}, {"kind", 0}}), "no procedure of that name"},
        {"codemodule.ProcBodyLine", with({{"name", "A"}, {"kind", 3}}), "no procedure of that name"},
        {"codemodule.ProcCountLines", with({{"name", "A"}, {"kind", -7}}), "no procedure of that name"},
        {"codemodule.Text", {{"project", "Q"}, {"component", "M"}}, "no project named \"Q\" is open"},
        {"codemodule.Text", {{"project", "P"}, {"component", "N"}}, "has no component named \"N\""},
        {"ide.setActiveProject", {{"project", "Q"}}, "no project named"},
        {"ide.activate",
         with({{"component", "N"}, {"startLine", 1}, {"startColumn", 1}, {"endLine", 1}, {"endColumn", 1}}),
         "has no component"},
        {"workspace.newProject", {{"name", "p"}}, "open already"},
        {"workspace.addComponent",
         {{"project", "Q"}, {"name", "M"}, {"type", 1}, {"text", ""}},
         "no project"},
        {"workspace.addComponent", {{"project", "P"}, {"name", "m"}, {"type", 1}, {"text", ""}}, "already"},
        {"workspace.open", {{"path", "/nowhere/at.vbp"}}, "/nowhere/at.vbp: cannot be opened: "},
    };
    for (const HostFailureCase& each : cases) {
        const json result = endpoint.ResultOf(each.method, each.params);
        EXPECT_EQ(result["code"], -32000) << each.method;
        EXPECT_THAT(result["message"].get<std::string>(), HasSubstr(each.reason));
    }
    EXPECT_EQ(endpoint.TextOfModule(), oneModule);
}

TEST(ServeProtocol, HalvesOfSurrogatePairsBecomeReplacementCharacters) {
    EndpointTest endpoint;
    endpoint.MakeModule("");
    // A pair in a line, cut in two by the selection.
    const json result = endpoint.ResultOf("lintara.GetTextSelection", {{"sLines", "a\xf0\x9f\x98\x80z"},
                                                                       {"iStartLine", 1},
                                                                       {"iEndLine", 1},
                                                                       {"iStartCol", 1},
                                                                       {"iEndCol", 3}});
    EXPECT_EQ(result["value"], "a\xef\xbf\xbd");
    EXPECT_EQ(endpoint.ResultOf("lintara.GetTextSelection", {{"sLines", "a\xf0\x9f\x98\x80z"},
                                                             {"iStartLine", 1},
                                                             {"iEndLine", 1},
                                                             {"iStartCol", 2},
                                                             {"iEndCol", 4}})["value"],
              "\xf0\x9f\x98\x80");
}

TEST(ServeProtocol, TextsKeepEveryCharacter) {
    EndpointTest endpoint;
    constexpr char characters[] = "a\0b\x7f\xe2\x80\xa8\"\\\t\r\n\xf0\x9f\x98\x80";
    const std::string text(characters, sizeof characters - 1);
    EXPECT_EQ(endpoint.ErrorOf("lintara.TarnwickCPBuffer.set", {{"value", text}}), 0);
    EXPECT_EQ(endpoint.ResultOf("lintara.TarnwickCPBuffer.get")["value"], text);
}

TEST(ServeProtocol, NoHandleStaysAlive) {
    EndpointTest endpoint;
    endpoint.MakeModule(std::string(oneModule));
    for (const MethodInfo& method : Methods()) {
        if (method.name == "workspace.reset") {
            continue;
        }
        (void)endpoint.Ask(method.name);
        (void)endpoint.Ask(method.name, {{"project", "P"}, {"component", "M"}});
        (void)endpoint.Ask(method.name, {{"sProject", "P"}, {"sComponent", "M"}, {"sMember", "A"}});
        EXPECT_EQ(endpoint.session().globals().liveHandles(), 0U) << method.name;
    }
}

}  // namespace
}  // namespace lintara::cli
