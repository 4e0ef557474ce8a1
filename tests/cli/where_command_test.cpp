// Which line of the sources had a number: from the map of a build, and from the sources alone.
#include "cli/numbers/number_map.h"
#include "cli/output/json_text.h"
#include "tests/cli/command_run.h"
#include "tests/support/project_generator.h"
#include "tests/support/wild_module.h"
#include "workspace/read_file.h"

#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

Json MapIn(const CommandTest& test) {
    return Json::parse(test.Read("out/lintara-map.json"));
}

// The map's procedures of that name.
std::vector<Json> ProceduresIn(const Json& map, std::string_view name) {
    std::vector<Json> found;
    for (const Json& component : map["components"]) {
        for (const Json& procedure : component["procedures"]) {
            if (procedure["name"] == name) {
                found.push_back(procedure);
            }
        }
    }
    return found;
}

std::vector<std::string> LinesOf(const std::string& bytes) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t end = std::min(bytes.find_first_of("\r\n", at), bytes.size());
        lines.push_back(bytes.substr(at, end - at));
        at = end + (bytes.compare(end, 2, "\r\n") == 0 ? 2 : 1);
    }
    return lines;
}

TEST(NumberMap, ComesWithANumberedCopy) {
    CommandTest test;
    test.WriteShop();
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers --base 20000 --step 10 --output @out").status, 0);
    const Json map = MapIn(test);
    EXPECT_EQ(map["version"], 1);
    EXPECT_EQ(map["numbering"], "procedure");
    EXPECT_EQ(map["base"], 20000);
    EXPECT_EQ(map["step"], 10);
    ASSERT_EQ(map["components"].size(), 2U);
    EXPECT_EQ(map["components"][0]["file"], "Main.bas");
    EXPECT_EQ(map["components"][1]["project"], "Shop");
    EXPECT_EQ(map["components"][1]["component"], "Stock");
    EXPECT_EQ(map["components"][1]["file"], "lib/Stock.bas");
    const Json main = ProceduresIn(map, "Main").at(0);
    EXPECT_EQ(main["kind"], "Sub");
    EXPECT_EQ(main["line"], 4);
    EXPECT_EQ(main["fileLine"], 5);
    EXPECT_EQ(main["numbers"], Json::parse("[[20000, 5, 6], [20010, 6, 7]]"));
    EXPECT_FALSE(main.contains("inserted"));
    EXPECT_EQ(ProceduresIn(map, "Size").at(1)["kind"], "Property Let");
}

TEST(NumberMap, MarksLinesOfHandlers) {
    CommandTest test;
    test.WriteShop();
    ASSERT_EQ(test.Run("insert @Shop.vbp --error-handlers --line-numbers -o @out").status, 0);
    const Json main = ProceduresIn(MapIn(test), "Main").at(0);
    EXPECT_EQ(main["numbers"], Json::parse("[[10005, 5, 6], [10010, 6, 7]]"));
    ASSERT_GT(main["inserted"].size(), 2U);
    EXPECT_EQ(main["inserted"][0], Json::parse("[10000, 4, 5]")) << "ahead of all lines: the header";
    EXPECT_EQ(main["inserted"][1][1], 7) << "behind them: the closing line";
}

TEST(NumberMap, IsWrittenWithNumbersAndIntoCopiesAlone) {
    CommandTest test;
    test.WriteShop();
    EXPECT_EQ(test.Run("insert @Shop.vbp --error-handlers -o @out").status, 0);
    EXPECT_FALSE(test.Files().contains("out/lintara-map.json"));
    EXPECT_EQ(test.Run("insert @Shop.vbp --line-numbers").status, 0);
    EXPECT_FALSE(test.Files().contains("lintara-map.json"));
}

TEST(NumberMap, TakesThePlaceOfAnOlderOne) {
    CommandTest test;
    test.WriteShop();
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers -o @out").status, 0);
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers -o @out --base 30000").status, 0);
    EXPECT_EQ(MapIn(test)["base"], 30000);
}

// Each row: what is run into the folder of an earlier numbered copy.
class StaleNumberMap : public testing::TestWithParam<std::string> {};

TEST_P(StaleNumberMap, DoesNotStayBesideAnotherCopy) {
    CommandTest test;
    test.WriteShop();
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers -o @out").status, 0);
    (void)test.Run(GetParam());
    EXPECT_FALSE(test.Files().contains("out/lintara-map.json"));
}

INSTANTIATE_TEST_SUITE_P(
    Commands, StaleNumberMap,
    testing::Values("insert @Shop.vbp --error-handlers -o @out", "remove @Shop.vbp --line-numbers -o @out",
                    "replace @Shop.vbp --component Main --find count --replace n -o @out"));

// Each row: what ends without having touched the copy, whose map still is the right one.
class NumberMapOfACopy : public testing::TestWithParam<std::string> {};

TEST_P(NumberMapOfACopy, StaysWithItWhenNoOtherIsMade) {
    CommandTest test;
    test.WriteShop();
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers -o @out").status, 0);
    const auto before = test.Files();
    EXPECT_NE(test.Run(GetParam()).status, 0);
    EXPECT_EQ(test.Files(), before);
}

INSTANTIATE_TEST_SUITE_P(Commands, NumberMapOfACopy,
                         testing::Values("remove @Shop.vbp --line-numbers -o @out --diff",
                                         "insert @Shop.vbp --line-numbers --component None -o @out",
                                         "insert @None.vbp --line-numbers -o @out",
                                         "insert @out/Shop.vbp --line-numbers --renumber -o @out"));

TEST(NumberMap, OfAnotherProgramStaysBesideACopy) {
    CommandTest test;
    test.WriteShop();
    test.Write("out/lintara-map.json", "{\"version\": 3}");
    ASSERT_EQ(test.Run("insert @Shop.vbp --error-handlers -o @out").status, 0);
    EXPECT_EQ(test.Read("out/lintara-map.json"), "{\"version\": 3}");
}

TEST(NumberMap, DoesNotReplaceAFileOfTheProject) {
    CommandTest test;
    test.WriteShop();
    test.Write("Shop.vbp",
               "Type=Exe\r\nModule=Main; Main.bas\r\nRelatedDoc=Lintara-Map.json\r\nName=\"Shop\"\r\n");
    test.Write("Lintara-Map.json", "{}");
    const Outcome outcome = test.Run("insert @Shop.vbp --line-numbers -o @out");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err,
                HasSubstr("DIR/Lintara-Map.json: error: has the name of a file that the copy gets"));
    EXPECT_FALSE(std::filesystem::exists(test.Path("out")));
}

TEST(NumberMap, IsNotLeftByAFailedRun) {
    CommandTest test;
    test.WriteShop();
    test.Write("out/lib", "a file where a folder is needed");
    EXPECT_EQ(test.Run("insert @Shop.vbp --line-numbers -o @out").status, 3);
    EXPECT_FALSE(test.Files().contains("out/lintara-map.json"));
}

TEST(Where, NamesFileLineAndText) {
    CommandTest test;
    test.WriteShop();
    const std::string line = "DIR/Main.bas:7: Main.Main: Sell count\n";
    const Outcome fromSources = test.Run("where @Shop.vbp --component Main --procedure main --erl 10005");
    EXPECT_EQ(fromSources.status, 0);
    EXPECT_EQ(fromSources.out, line);
    EXPECT_EQ(fromSources.err, "");
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers -o @out").status, 0);
    EXPECT_EQ(test.Run("where @Shop.vbp --component Shop.Main --erl 10005 --map @out/lintara-map.json").out,
              line);
}

TEST(Where, WritesNothing) {
    CommandTest test;
    test.WriteShop();
    const auto before = test.Files();
    EXPECT_EQ(test.Run("where @Shop.vbp --error-handlers --erl 10005").status, 0);
    EXPECT_EQ(test.Files(), before);
}

TEST(Where, ListsEveryCandidate) {
    CommandTest test;
    test.WriteShop();
    EXPECT_EQ(test.Run("where @Shop.vbp --erl 10000").out,
              "DIR/Main.bas:6: Main.Main: count = 1\n"
              "DIR/Main.bas:12: Main.Sell: Sell = n - 1\n"
              "DIR/lib/Stock.bas:3: Stock.Size: Size = 3\n"
              "DIR/lib/Stock.bas:6: Stock.Size: Debug.Print v\n");
    EXPECT_EQ(test.Run("where @Shop.vbp --procedure Size --kind let --erl 10000").out,
              "DIR/lib/Stock.bas:6: Stock.Size: Debug.Print v\n");
}

TEST(Where, TakesTheOptionsOfTheBuild) {
    CommandTest test;
    test.WriteShop();
    EXPECT_THAT(test.Run("where @Shop.vbp --erl 20003 --base 20000 --step 3").out,
                StartsWith("DIR/Main.bas:7: Main.Main: Sell count\n"));
    EXPECT_EQ(test.Run("where @Shop.vbp --erl 10006 --numbering module --component Main").out,
              "DIR/Main.bas:7: Main.Main: Sell count\n");
    test.Write(".lintara.toml", "error-handlers = true\n");
    EXPECT_EQ(test.Run("where @Shop.vbp --erl 10010 --component Main --procedure Main").out,
              "DIR/Main.bas:7: Main.Main: Sell count\n");
    EXPECT_EQ(test.Run("where @Shop.vbp --erl 10000 --procedure Main").out,
              "DIR/Main.bas:5: Main.Main: Public Sub Main() (of a line that was inserted there)\n");
    EXPECT_EQ(test.Run("where @Shop.vbp --erl 10005 --component Main --procedure Main --line-numbers").out,
              "DIR/Main.bas:7: Main.Main: Sell count\n")
        << "the command line asks for numbers alone";
}

TEST(Where, TakesNumbersOfTheSourcesWhenAsked) {
    CommandTest test;
    test.WriteShop();
    EXPECT_EQ(test.Run("where @Shop.vbp --erl 10005 --line-numbers=false").status, 1);
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers").status, 0);
    EXPECT_EQ(test.Run("where @Shop.vbp --erl 10005 --line-numbers=false").out,
              "DIR/Main.bas:7: Main.Main: 10005:     Sell count\n");
}

TEST(Where, IsJsonForPrograms) {
    CommandTest test;
    test.WriteShop();
    const Outcome outcome = test.Run("where @Shop.vbp --component Main --procedure Main --erl 10005 --json");
    const Json answer = Json::parse(outcome.out);
    EXPECT_EQ(answer["erl"], 10005);
    EXPECT_EQ(answer["from"], "sources");
    EXPECT_EQ(answer["found"], Json::parse(R"([{"project": "Shop", "component": "Main", "procedure": "Main",
        "kind": "Sub", "file": "DIR/Main.bas", "line": 6, "fileLine": 7, "text": "    Sell count",
        "inserted": false, "changed": false, "copyChanged": false}])"));
    EXPECT_EQ(Json::parse(test.Run("where @Shop.vbp --erl 77777 --json").out)["found"], Json::array());
}

struct NotFoundCase {
    const char* options;
    int status;
    const char* message;
};

class WhereNotFound : public testing::TestWithParam<NotFoundCase> {};

TEST_P(WhereNotFound, SaysWhy) {
    CommandTest test;
    test.WriteShop();
    const Outcome outcome = test.Run("where @Shop.vbp " + std::string(GetParam().options));
    EXPECT_EQ(outcome.status, GetParam().status);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, HasSubstr(GetParam().message));
}

const NotFoundCase notFoundCases[] = {
    {"--erl 10003 --procedure Main", 1,
     "no line has the number 10003 in Main; the nearest numbers are 10000 and 10005"},
    {"--erl 99999 --procedure Main", 1, "the nearest number is 10005"},
    {"--erl 0", 1, "Erl is 0 when no numbered line ran ahead of the error"},
    {"--erl 10000 --procedure Odd", 1, "there are no numbers there"},
    {"--erl 10000 --procedure Odd", 1, "warning: Sub Odd in Stock was skipped: "},
    {"--erl 10000 --procedure Mian", 2, "--procedure: there is no procedure 'Mian'. Did you mean Main?"},
    {"--erl 10000 --component Stok", 2, "--component: there is no component 'Stok'. Did you mean Stock?"},
    {"--erl 10000 --component Main --procedure Size", 2, "there is no procedure 'Size'"},
    {"", 2, "--erl is required"},
    {"--erl -5", 2, "--erl: line numbers are not below 0"},
    {"--erl x", 2, "--erl: 'x' is not a whole number"},
    {"--erl 10000 --kind sub", 2, "--kind: 'sub' is none of get, let, set"},
    {"--erl 10000 --map no.json", 3, "no.json: error: "},
    {"--erl 10000 --map no.json --base 20000", 2, "--base: the map knows how the build was made"},
    {"--erl 10000 --base 5", 2, "--base: numbers must have five digits"},
};

INSTANTIATE_TEST_SUITE_P(Cases, WhereNotFound, testing::ValuesIn(notFoundCases));

class WhereMap : public testing::Test {
  protected:
    void SetUp() override {
        test.WriteShop();
        ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers -o @out").status, 0);
    }

    [[nodiscard]] Outcome Where(const std::string& options) const {
        return test.Run("where @Shop.vbp --map @out/lintara-map.json " + options);
    }
    void Change(const char* file, std::string_view sought, std::string_view replacement) const {
        test.Write(file, Replaced(test.Read(file), sought, replacement));
    }

    CommandTest test;
};

TEST_F(WhereMap, WarnsOfAProcedureThatChanged) {
    Change("Main.bas", "Sell count", "Sell count + 1");
    const Outcome outcome = Where("--procedure Main --erl 10000");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "DIR/Main.bas:6: Main.Main\n") << "the text may be another one now";
    EXPECT_THAT(outcome.err,
                HasSubstr("DIR/Main.bas:6: warning: Sub Main in Main changed since the map was made; "));
    EXPECT_EQ(Json::parse(Where("--procedure Main --erl 10000 --json").out)["found"][0]["changed"], true);
    EXPECT_THAT(Where("--procedure Sell --erl 10000").err, IsEmpty()) << "that one did not change";
}

TEST_F(WhereMap, WarnsOfACopyThatChanged) {
    EXPECT_EQ(Where("--procedure Main --erl 10000").err, "");
    ASSERT_EQ(test.Run("remove @out/Shop.vbp --line-numbers --procedure Main").status, 0);
    const Outcome outcome = Where("--procedure Main --erl 10000");
    EXPECT_EQ(outcome.out, "DIR/Main.bas:6: Main.Main: count = 1\n");
    EXPECT_EQ(
        outcome.err,
        "DIR/out/Main.bas: warning: was changed since the map was made; the answer is about the numbers "
        "that it had then [copy-changed]\n");
    EXPECT_EQ(Json::parse(Where("--procedure Main --erl 10000 --json").out)["found"][0]["copyChanged"], true);
}

TEST_F(WhereMap, IsEnoughWithoutItsCopy) {
    std::filesystem::remove(test.Path("out/Main.bas"));
    EXPECT_EQ(Where("--procedure Main --erl 10000").err, "");
}

TEST_F(WhereMap, MayBeOlderThanItsWordOfTheCopy) {
    Change("out/lintara-map.json", "\"copy\": ", "\"older\": ");
    Change("out/Main.bas", "count", "counter");
    const Outcome outcome = Where("--procedure Main --erl 10000");
    EXPECT_EQ(outcome.out, "DIR/Main.bas:6: Main.Main: count = 1\n");
    EXPECT_EQ(outcome.err, "");
}

TEST_F(WhereMap, FollowsAProcedureThatMoved) {
    Change("Main.bas", "Option Explicit\r\n", "Option Explicit\r\nPrivate more As Long\r\n");
    const Outcome outcome = Where("--procedure Sell --erl 10000");
    EXPECT_EQ(outcome.out, "DIR/Main.bas:13: Main.Sell: Sell = n - 1\n");
    EXPECT_EQ(outcome.err, "");
}

TEST_F(WhereMap, DoesNotMindOtherLineEndings) {
    Change("Main.bas", "\r\n", "\n");
    EXPECT_EQ(Where("--procedure Sell --erl 10000").err, "");
}

TEST_F(WhereMap, TellsOfAComponentThatIsGone) {
    test.Write("Shop.vbp", "Type=Exe\r\nModule=Main; Main.bas\r\nName=\"Shop\"\r\n");
    const Outcome outcome = Where("--component Stock --kind get --erl 10000");
    EXPECT_EQ(outcome.out, "DIR/lib/Stock.bas:3: Stock.Size\n");
    EXPECT_THAT(outcome.err, HasSubstr("Property Get Size in Stock is no longer in the project"));
}

TEST_F(WhereMap, DoesNotTakeNumbersOfTheSourcesForTheBuilds) {
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers --base 30000").status, 0);
    EXPECT_EQ(Where("--erl 30000").status, 1);
}

TEST_F(WhereMap, ThatIsDamagedOrOfAnotherKindIsAnError) {
    for (const char* content :
         {"", "{", "[]", "{}", R"({"version": 1})", R"({"version": "x"})",
          R"({"version":1,"numbering":"procedure","base":1,"step":1,"components":[{"project":1}]})"}) {
        test.Write("out/lintara-map.json", content);
        const Outcome outcome = Where("--erl 10000");
        EXPECT_EQ(outcome.status, 3) << content;
        EXPECT_THAT(outcome.err,
                    HasSubstr("lintara-map.json: error: is no map of line numbers, or is damaged"));
    }
    test.Write("out/lintara-map.json", R"({"version": 2})");
    EXPECT_THAT(Where("--erl 10000").err, HasSubstr("is a map of another version"));
}

// Each row: something in the map that is replaced by what no map has.
class WhereHostileMap : public WhereMap,
                        public testing::WithParamInterface<std::pair<const char*, const char*>> {};

TEST_P(WhereHostileMap, IsRefused) {
    const auto& [sought, replacement] = GetParam();
    ASSERT_THAT(test.Read("out/lintara-map.json"), HasSubstr(sought));
    Change("out/lintara-map.json", sought, replacement);
    const Outcome outcome = Where("--erl 10000");
    EXPECT_EQ(outcome.status, 3) << outcome.out;
    EXPECT_THAT(outcome.err, HasSubstr("lintara-map.json: error: is no map of line numbers, or is damaged"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WhereHostileMap,
    testing::Values(std::pair{"[10000,5,6]", "[10000,0,6]"}, std::pair{"[10000,5,6]", "[10000,5,-6]"},
                    std::pair{"[10000,5,6]", "[10000,4294967301,6]"},
                    std::pair{"[10000,5,6]", "[10000,5,18446744073709551615]"},
                    std::pair{"[10000,5,6]", "[10000,5.5,6]"}, std::pair{"[10000,5,6]", "[-1,5,6]"},
                    std::pair{"[10000,5,6]", "[10000000000,5,6]"}, std::pair{"[10000,5,6]", "[10000,3,6]"},
                    std::pair{"\"line\": 4", "\"line\": 0"}, std::pair{"\"fileLine\": 5", "\"fileLine\": 0"},
                    std::pair{"\"base\": 10000", "\"base\": 2147483648"},
                    std::pair{"\"kind\": \"Sub\"", "\"kind\": \"Sub\\u001b\""},
                    std::pair{"\"checksum\": \"", "\"checksum\": \"x"},
                    std::pair{"lib/Stock.bas", "/etc/passwd"}, std::pair{"lib/Stock.bas", "lib/../../x"},
                    std::pair{"lib/Stock.bas", ".."}, std::pair{"lib/Stock.bas", ""}));

TEST_F(WhereMap, MayNameFilesBesideTheProjectsFolder) {
    Change("out/lintara-map.json", "lib/Stock.bas", "../common/Gone.bas");
    Change("out/lintara-map.json", "\"Stock\"", "\"Gone\"");
    EXPECT_EQ(Where("--component Gone --kind get --erl 10000").out, "DIR/../common/Gone.bas:3: Gone.Size\n");
}

TEST_F(WhereMap, NeverSendsPeopleBelowTheLastLine) {
    Change("out/lintara-map.json", "[10000,5,6]", "[10000,2147483647,2147483647]");
    const Outcome outcome = Where("--procedure Main --erl 10000");
    EXPECT_THAT(outcome.err, HasSubstr("Sub Main in Main changed since the map was made"));
}

TEST_F(WhereMap, OfAnotherProjectIsAnError) {
    Change("Shop.vbp", "Name=\"Shop\"", "Name=\"Store\"");
    const Outcome outcome = Where("--erl 10000");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err, HasSubstr("lintara-map.json: error: is the map of another project: Shop"));
}

TEST(WhereMapOfAGroup, SpeaksOfTheOpenProjectsAlone) {
    CommandTest test;
    test.WriteShop();
    test.Write("other/Other.vbp", "Type=Exe\r\nModule=Far; Far.bas\r\nName=\"Other\"\r\n");
    test.Write("other/Far.bas", "Attribute VB_Name = \"Far\"\r\nSub Go()\r\n    x\r\nEnd Sub\r\n");
    test.Write("All.vbg", "VBGROUP 5.0\r\nStartupProject=Shop.vbp\r\nProject=other\\Other.vbp\r\n");
    ASSERT_EQ(test.Run("insert @All.vbg --line-numbers -o @out").status, 0);
    const Outcome one = test.Run("where @Shop.vbp --map @out/lintara-map.json --erl 10000");
    EXPECT_THAT(one.out, AllOf(HasSubstr("Main.Main"), Not(HasSubstr("Far"))));
    EXPECT_EQ(one.err, "");
    EXPECT_THAT(test.Run("where @All.vbg --map @out/lintara-map.json --erl 10000").out,
                HasSubstr("DIR/other/Far.bas:3: Far.Go: x"));
}

// Whatever a build has numbered, map and sources answer alike, and name the line that carries the number.
void ExpectAgreement(const CommandTest& test, const std::string& project, const std::string& options) {
    ASSERT_EQ(test.Run("insert " + project + " -q -o @out " + options).status, 0);
    std::size_t looked = 0;
    const Json map = MapIn(test);
    for (const Json& component : map["components"]) {
        const std::string file = component["file"];
        const std::vector<std::string> source = LinesOf(test.Read(file));
        const std::vector<std::string> built = LinesOf(test.Read("out/" + file));
        std::set<std::int64_t> numbers;
        for (const Json& procedure : component["procedures"]) {
            for (const Json& number : procedure["numbers"]) {
                numbers.insert(number[0].get<std::int64_t>());
            }
        }
        for (const std::int64_t number : numbers) {
            const std::string question = "where " + project + " --json --erl " + std::to_string(number) +
                                         " --component " + component["component"].get<std::string>() + " ";
            Json fromMap = Json::parse(test.Run(question + "--map @out/lintara-map.json").out);
            const Json fromSources = Json::parse(test.Run(question + options).out);
            ASSERT_EQ(fromMap["found"], fromSources["found"]) << question << options;
            for (const Json& found : fromMap["found"]) {
                const std::string& text = source.at(found["fileLine"].get<std::size_t>() - 1);
                if (!found["inserted"]) {
                    ASSERT_THAT(built, testing::Contains(std::to_string(number) + ": " + text)) << question;
                    ++looked;
                }
            }
        }
    }
    EXPECT_GT(looked, 30U);
}

class WhereAgreement : public testing::TestWithParam<const char*> {};

TEST_P(WhereAgreement, OfMapAndSourcesOnUsualCode) {
    CommandTest test;
    support::WriteProject(support::GenerateProject({.files = 2, .lines = 200, .seed = 7}), test.folder());
    ExpectAgreement(test, "@Generated.vbp", GetParam());
}

TEST_P(WhereAgreement, OfMapAndSourcesOnThePropertiesOfAShop) {
    CommandTest test;
    std::string code = "Attribute VB_Name = \"M\"\r\nOption Explicit\r\n";
    for (const char* name : {"A", "B", "C", "D", "E", "F"}) {
        for (const char* kind : {"Get", "Let", "Set"}) {
            const std::string header = "Property " + std::string(kind) + " " + name;
            code += header + "()\r\nAttribute " + name + ".VB_Description = \"x\"\r\n    x" + kind + name +
                    "\r\n    y _\r\n      z\r\n    w\r\nEnd Property\r\n";
        }
    }
    test.Write("M.bas", code);
    ExpectAgreement(test, "@M.bas", GetParam());
}

INSTANTIATE_TEST_SUITE_P(Options, WhereAgreement,
                         testing::Values("--line-numbers", "--line-numbers --numbering module",
                                         "--line-numbers --base 20000 --step 7",
                                         "--error-handlers --line-numbers",
                                         "--error-handlers --line-numbers --numbering module"));

// In wild code numbers stand that were there before; those lines are as they were.
TEST(WhereAgreementOnWildCode, OfMapAndSources) {
    std::size_t found = 0;
    for (std::uint64_t seed = 1; seed <= 12; ++seed) {
        CommandTest test;
        test.Write("Wild.bas", support::GenerateWildModule({.lines = 80, .seed = seed}));
        ASSERT_EQ(test.Run("insert @Wild.bas -q -o @out --line-numbers").status, 0);
        std::set<std::int64_t> numbers;
        const Json map = MapIn(test);
        for (const Json& component : map["components"]) {
            for (const Json& procedure : component["procedures"]) {
                for (const Json& number : procedure["numbers"]) {
                    numbers.insert(number[0].get<std::int64_t>());
                }
            }
        }
        for (const std::int64_t number : numbers) {
            const std::string question = "where @Wild.bas --json --erl " + std::to_string(number);
            const Json fromMap =
                Json::parse(test.Run(question + " --map @out/lintara-map.json").out)["found"];
            ASSERT_EQ(fromMap, Json::parse(test.Run(question).out)["found"]) << "seed " << seed;
            ASSERT_FALSE(fromMap.empty() && number != 0);
            found += fromMap.size();
        }
    }
    EXPECT_GT(found, 50U);
}

}  // namespace
}  // namespace lintara::cli
