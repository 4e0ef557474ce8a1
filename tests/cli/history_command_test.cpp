// Where commands were pointed at, and the way back there.
#include "cli/history/history_store.h"
#include "cli/history/places.h"
#include "tests/cli/command_run.h"
#include "tests/cli/window_stand_in.h"
#include "tests/support/other_process.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

RecordedPlace Place(std::int32_t number) {
    return {.project = u"P",
            .component = u"M",
            .member = u"",
            .text = Text(1, static_cast<char16_t>(u'A' + number)),
            .line = Line(number + 1)};
}

std::string Letters(const std::vector<RecordedPlace>& places) {
    std::string letters;
    for (const RecordedPlace& place : places) {
        letters += static_cast<char>(place.text.front());
    }
    return letters;
}

History Visited(int count) {
    History history;
    for (int i = 0; i < count; ++i) {
        Visit(Place(i), history);
    }
    return history;
}

TEST(History, HasTheLatestPlaceFirst) {
    EXPECT_EQ(Letters(Visited(3).back), "CBA");
    EXPECT_EQ(Letters(Visited(12).back), "LKJIHGFEDC");
}

TEST(History, GoingBackMovesTheLaterPlacesToNext) {
    History history = Visited(5);
    GoBack(2, history);
    EXPECT_EQ(Letters(history.back), "CBA");
    EXPECT_EQ(Letters(history.next), "DE");
    GoBack(1, history);
    EXPECT_EQ(Letters(history.back), "BA");
    EXPECT_EQ(Letters(history.next), "CDE");
    GoBack(0, history);
    EXPECT_EQ(Letters(history.next), "CDE");
}

TEST(History, GoingForwardIsTheWayBackAgain) {
    History history = Visited(5);
    GoBack(4, history);
    EXPECT_EQ(Letters(history.next), "BCDE");
    GoForward(2, history);
    EXPECT_EQ(Letters(history.back), "DCBA");
    EXPECT_EQ(Letters(history.next), "E");
}

TEST(History, ANewPlaceClearsNextAndTheSameOneDoesNot) {
    History history = Visited(3);
    GoBack(1, history);
    Visit(history.back.front(), history);
    EXPECT_EQ(Letters(history.next), "C");
    Visit(Place(7), history);
    EXPECT_EQ(Letters(history.back), "HBA");
    EXPECT_THAT(history.next, IsEmpty());
}

TEST(History, FindsALineWhereItHasMovedTo) {
    const auto module = workspace::Module::FromText(
        u"Dim same\r\nSub A()\r\n    same\r\nEnd Sub\r\nSub B()\r\n    other\r\n    same\r\nEnd Sub");
    RecordedPlace place{.project = u"P", .component = u"M", .member = u"B", .text = u"same", .line = Line(3)};
    // A line that has the text at the recorded place wins, whatever procedure it is in.
    EXPECT_EQ(LineNow(place, *module), Line(3));
    place.line = Line(4);
    EXPECT_EQ(LineNow(place, *module), Line(7));
    place.text = u"Dim same";
    EXPECT_EQ(LineNow(place, *module), Line(1));
    place.text = u"gone";
    EXPECT_EQ(LineNow(place, *module), Line(5));
    place.member = u"Gone";
    EXPECT_EQ(LineNow(place, *module), Line(4));
    place.line = Line(99);
    EXPECT_EQ(LineNow(place, *module), Line(8));
}

TEST(History, FindsALineThatWasNumberedMeanwhile) {
    const auto module =
        workspace::Module::FromText(u"Sub A()\r\n10000:     new\r\n10005:     same\r\nEnd Sub");
    RecordedPlace place{.project = u"P", .component = u"M", .member = u"A", .text = u"same", .line = Line(2)};
    EXPECT_EQ(LineNow(place, *module), Line(3));
    place.text = u"20000: new";
    EXPECT_EQ(LineNow(place, *module), Line(2));
}

class HistoryCommand : public testing::Test {
  protected:
    void SetUp() override { test.WriteShop(); }

    [[nodiscard]] std::vector<std::string> Listed(const char* list) const {
        const Outcome outcome = test.Run("history @Shop.vbp --print");
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        std::vector<std::string> entries;
        const json lists = json::parse(outcome.out);
        for (const json& place : lists[list]) {
            entries.push_back(place["entry"]);
        }
        return entries;
    }

    // The one file of the history's folder that is no copy.
    [[nodiscard]] std::filesystem::path File() const {
        for (const auto& entry : std::filesystem::directory_iterator(test.stateFolder() / "history")) {
            if (entry.path().extension() == ".json") {
                return entry.path();
            }
        }
        return {};
    }

    void Choose(const std::string& key) {
        window.Answers(json{{"accepted", true}, {"HistSelKey", key}, {"HistSelObject", "x"}}.dump());
    }

    CommandTest test;
    WindowStandIn window;
};

TEST_F(HistoryCommand, CommandsRecordTheirCarets) {
    (void)test.Run("member @Shop.vbp --at Main:5");
    EXPECT_THAT(Listed("back"), ElementsAre("Main.Main|count = 1"));
    test.input = "{MemberName}";
    (void)test.Run("template expand @Shop.vbp --at Main:2");
    (void)test.Run("insert @Shop.vbp --line-numbers --at Main:11 --check");
    (void)test.Run("dialog insert-eh @Shop.vbp --at Stock:2");
    (void)test.Run("where @Shop.vbp --component Main --procedure Main --erl 10005");
    EXPECT_THAT(Listed("back"),
                ElementsAre("Main.Main|Sell count", "Stock.Size|Size = 3", "Main.Sell|Sell = n - 1",
                            "Main|Private count As Long", "Main.Main|count = 1"));
    EXPECT_THAT(Listed("next"), IsEmpty());
}

TEST_F(HistoryCommand, FailingCommandsAndThoseWithoutACaretRecordNothing) {
    (void)test.Run("member @Shop.vbp --at Main:99");
    (void)test.Run("insert @Shop.vbp --line-numbers --at Main:1");
    (void)test.Run("insert @Shop.vbp --line-numbers");
    EXPECT_THAT(Listed("back"), IsEmpty());
}

TEST_F(HistoryCommand, PrintsThePlaces) {
    (void)test.Run("member @Shop.vbp --at Main:5");
    EXPECT_EQ(json::parse(test.Run("history @Shop.vbp --print").out), json::parse(R"({
        "back": [{"entry": "Main.Main|count = 1", "file": "DIR/Main.bas", "fileLine": 6, "project": "Shop",
                  "component": "Main", "member": "Main", "line": 5, "text": "count = 1"}],
        "next": []})"));
    EXPECT_FALSE(window.wasAsked());
}

TEST_F(HistoryCommand, ShowsTheListsAndGoesToTheChosenPlace) {
    (void)test.Run("member @Shop.vbp --at Main:5");
    (void)test.Run("member @Shop.vbp --at Main:6");
    (void)test.Run("member @Shop.vbp --at Stock:2");
    Choose("Back|2");
    const Outcome back = test.Run("history @Shop.vbp");
    EXPECT_EQ(back.status, 0) << back.err;
    EXPECT_EQ(back.out, "DIR/Main.bas:6\n");
    EXPECT_EQ(window.request(),
              json::parse(R"({"window": "history", "HistSeparator": "|", "HistCurrentKey": "Back|0",
        "HistBackItem": ["Stock.Size|Size = 3", "Main.Main|Sell count", "Main.Main|count = 1"],
        "HistNextItem": []})"));
    EXPECT_THAT(Listed("back"), ElementsAre("Main.Main|count = 1"));
    EXPECT_THAT(Listed("next"), ElementsAre("Main.Main|Sell count", "Stock.Size|Size = 3"));
    Choose("Next|1");
    EXPECT_EQ(test.Run("history @Shop.vbp").out, "DIR/lib/Stock.bas:3\n");
    EXPECT_THAT(Listed("next"), IsEmpty());
    EXPECT_EQ(Listed("back").size(), 3U);
}

TEST_F(HistoryCommand, AClosedWindowChangesNothing) {
    (void)test.Run("member @Shop.vbp --at Main:5");
    const Outcome outcome = test.Run("history @Shop.vbp");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "lintara: the window was closed without a choice\n");
    EXPECT_EQ(Listed("back").size(), 1U);
}

TEST_F(HistoryCommand, WithoutAPlaceThereIsNoWindow) {
    const Outcome outcome = test.Run("history @Shop.vbp");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("is recorded yet"));
    EXPECT_FALSE(window.wasAsked());
}

TEST_F(HistoryCommand, PlacesOfComponentsThatAreGoneAreDropped) {
    (void)test.Run("member @Shop.vbp --at Stock:2");
    (void)test.Run("member @Shop.vbp --at Main:5");
    test.Write("Shop.vbp", "Type=Exe\r\nModule=Main; Main.bas\r\nName=\"Shop\"\r\n");
    (void)test.Run("history @Shop.vbp");
    EXPECT_EQ(window.request()["HistBackItem"], json::parse(R"(["Main.Main|count = 1"])"));
    EXPECT_THAT(support::ReadBytes(File()), testing::Not(HasSubstr("Stock")));
}

TEST_F(HistoryCommand, APlaceThatAnotherCommandAddsMeanwhileIsKept) {
    (void)test.Run("member @Shop.vbp --at Main:5");
    (void)test.Run("member @Shop.vbp --at Main:6");
    const auto earlier = support::ReadBytes(File());
    (void)test.Run("member @Shop.vbp --at Stock:2");
    const auto later = support::ReadBytes(File());
    test.Write("later", later);
    std::filesystem::copy_file(test.Path("later"), window.Path("later"));
    std::ofstream(File(), std::ios::binary) << earlier;
    Choose("Back|1");
    window.Does("cat \"$here/later\" > '" + File().string() + "'\ncat \"$here/answer\"");
    EXPECT_EQ(test.Run("history @Shop.vbp").out, "DIR/Main.bas:6\n");
    EXPECT_THAT(Listed("next"), ElementsAre("Main.Main|Sell count", "Stock.Size|Size = 3"));
}

TEST_F(HistoryCommand, AWindowThatFailsIsAnError) {
    (void)test.Run("member @Shop.vbp --at Main:5");
    window.Does("exit 9");
    const Outcome broken = test.Run("history @Shop.vbp");
    EXPECT_EQ(broken.status, 3);
    EXPECT_THAT(broken.err, HasSubstr("failed with status 9"));
    window.Does("exit 3");
    const Outcome noDisplay = test.Run("history @Shop.vbp");
    EXPECT_EQ(noDisplay.status, 3);
    EXPECT_THAT(noDisplay.err, HasSubstr("without a window: lintara history DIR/Shop.vbp --print\n"));
    window.Answers(R"({"accepted": true})");
    EXPECT_THAT(test.Run("history @Shop.vbp").err, HasSubstr("it has no \"HistSelKey\""));
    EXPECT_EQ(Listed("back").size(), 1U);
}

TEST_F(HistoryCommand, ADamagedFileIsSetAsideAndHindersNoCommand) {
    (void)test.Run("member @Shop.vbp --at Main:5");
    const auto file = File();
    for (const std::string damaged : {"{\"back\": [", "[]", "{\"back\": [{}], \"next\": []}"}) {
        std::ofstream(file, std::ios::binary) << damaged;
        const Outcome outcome = test.Run("member @Shop.vbp --at Main:6");
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, "");
        EXPECT_THAT(Listed("back"), ElementsAre("Main.Main|Sell count"));
    }
    EXPECT_EQ(support::ReadBytes(file.string() + ".bad"), "{\"back\": [");
}

TEST_F(HistoryCommand, TheProjectsVisitedLeastRecentlyAreForgotten) {
    const auto folder = test.stateFolder() / "history";
    std::filesystem::create_directories(folder);
    const auto now = std::filesystem::file_time_type::clock::now();
    const auto fileOf = [&](int i) { return folder / (std::to_string(1'000'000'000'000'000 + i) + ".json"); };
    for (int i = 0; i < 105; ++i) {
        const auto file = fileOf(i);
        std::ofstream(file) << "{}";
        std::filesystem::last_write_time(file, now - std::chrono::hours(i + 1));
    }
    (void)test.Run("member @Shop.vbp --at Main:5");
    EXPECT_EQ(Listed("back").size(), 1U);
    EXPECT_TRUE(std::filesystem::exists(fileOf(98)));
    EXPECT_FALSE(std::filesystem::exists(fileOf(99)));
    EXPECT_FALSE(std::filesystem::exists(fileOf(104)));
}

TEST_F(HistoryCommand, AFolderThatCannotBeWrittenHindersNoCommand) {
    std::ofstream(test.stateFolder() / "history") << "a file";
    const Outcome outcome = test.Run("member @Shop.vbp --at Main:5");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
}

TEST_F(HistoryCommand, CommandsAtTheSameTimeLoseNoPlace) {
    {
        std::vector<std::unique_ptr<support::OtherProcess>> runs;
        for (const std::string line : {"1", "2", "4", "5", "6", "7"}) {
            runs.push_back(std::make_unique<support::OtherProcess>([&, line] {
                (void)test.Run("member @Shop.vbp --at Main:" + line);
                return std::string();
            }));
        }
    }
    EXPECT_EQ(Listed("back").size(), 6U);
}

}  // namespace
}  // namespace lintara::cli
