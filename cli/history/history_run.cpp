#include "cli/history/history_run.h"

#include "assistant/lintara.h"
#include "base/statement.h"
#include "base/utf8.h"
#include "cli/dialog/shell_words.h"
#include "cli/dialog/window_program.h"
#include "cli/history/history_store.h"
#include "cli/history/shown_history.h"
#include "cli/options/shared_options.h"
#include "cli/output/messages.h"
#include "cli/output/terminal_text.h"
#include "cli/project/open_project.h"

#include <algorithm>
#include <exception>
#include <optional>

namespace lintara::cli {
namespace {

Json Entries(const std::vector<RecordedPlace>& places) {
    Json entries = Json::array();
    for (const RecordedPlace& place : places) {
        entries.push_back(JsonText(EntryOf(place)));
    }
    return entries;
}

class HistoryRun {
  public:
    HistoryRun(const OptionReader& given, Environment& environment)
        : given_(given),
          read_(ReadReading(given)),
          environment_(environment),
          messages_(environment.streams, false),
          store_(environment.stateFolder) {}

    ExitStatus Run() {
        Progress progress(environment_.streams, true);
        Streams& streams = environment_.streams;
        if (const auto opened = OpenOrComplain(workspace_, read_, streams.in, progress, messages_); !opened) {
            return opened.error();
        }
        auto history = store_.Read(read_.path);
        if (!history) {
            messages_.Error({{}, 0, history.error()});
            return ExitStatus::Failed;
        }
        if (given_.Flag("print")) {
            Print(*history);
            return ExitStatus::Done;
        }
        if (history->back.empty() && history->next.empty()) {
            messages_.Note("no place of " + read_.path.string() + " is recorded yet");
            return ExitStatus::NotFound;
        }
        return Show(*std::move(history));
    }

  private:
    ExitStatus Show(History history) {
        auto globals = std::make_shared<ShownHistory>(workspace_, std::move(history));
        std::exception_ptr failure;
        std::optional<std::string> refusal;
        Platform platform = environment_.platform;
        platform.showHistoryWindow = [&](hostmodel::Globals&) {
            try {
                refusal = AskUser(*globals);
            } catch (...) {
                failure = std::current_exception();  // the library lets nothing through
            }
        };
        Lintara lintara(platform);
        lintara.oG = globals;
        lintara.ShowHistory();
        if (failure) {
            std::rethrow_exception(failure);
        }
        if (refusal) {
            messages_.Error({{}, 0, *refusal});
            return ExitStatus::Failed;
        }
        return Go(globals->chosen());
    }

    // Why no window can be shown, if so.
    std::optional<std::string> AskUser(ShownHistory& globals) {
        const auto answer = AskWindow({{"window", "history"},
                                       {"HistBackItem", Entries(globals.history().back)},
                                       {"HistNextItem", Entries(globals.history().next)},
                                       {"HistSeparator", JsonText(historySeparator)},
                                       {"HistCurrentKey", JsonText(*globals.HistCurrentKey())}},
                                      environment_);
        if (!answer) {
            return answer.error() +
                   "; without a window: " + ShellLine({"lintara", "history", given_.Argument(0), "--print"});
        }
        if (answer->accepted()) {
            Attempt(globals.SetHistSelKey(FromUtf8(answer->TextOf("HistSelKey"))));
            Attempt(globals.SetHistSelObject(FromUtf8(answer->TextOf("HistSelObject"))));
        }
        return std::nullopt;
    }

    ExitStatus Go(const std::optional<ChosenPlace>& chosen) {
        const auto updated = store_.Update(read_.path, [&](History& history) {
            DropGone(history.back);
            DropGone(history.next);
            if (chosen) {
                MoveTo(*chosen, history);
            }
        });
        if (!updated) {
            messages_.Warning({{}, 0, "the history was not written: " + updated.error()});
        }
        if (!chosen) {
            messages_.Note("the window was closed without a choice");
            return ExitStatus::Cancelled;
        }
        environment_.streams.out.Write(FileAndLine(chosen->place) + "\n");
        return ExitStatus::Done;
    }

    void DropGone(std::vector<RecordedPlace>& places) const {
        std::erase_if(places,
                      [&](const RecordedPlace& place) { return ComponentOf(place, workspace_) == nullptr; });
    }

    // Another command may have added places while the window was open.
    static void MoveTo(const ChosenPlace& chosen, History& history) {
        auto& places = chosen.isBack ? history.back : history.next;
        std::size_t index = chosen.index;
        if (index >= places.size() || places[index] != chosen.place) {
            const auto found = std::ranges::find(places, chosen.place);
            if (found == places.end()) {
                Visit(chosen.place, history);
                return;
            }
            index = static_cast<std::size_t>(found - places.begin());
        }
        chosen.isBack ? GoBack(index, history) : GoForward(index, history);
    }

    [[nodiscard]] std::int64_t FileLineOf(const RecordedPlace& place,
                                          const workspace::Component& component) const {
        return component.module->FileLine(LineNow(place, *component.module));
    }

    [[nodiscard]] std::string FileAndLine(const RecordedPlace& place) const {
        const workspace::Component& component = *ComponentOf(place, workspace_);
        return PrintablePath(component.path) + ":" + std::to_string(FileLineOf(place, component));
    }

    void Print(const History& history) const {
        environment_.streams.out.Write(
            Dump({{"back", Objects(history.back)}, {"next", Objects(history.next)}}));
    }

    [[nodiscard]] Json Objects(const std::vector<RecordedPlace>& places) const {
        Json objects = Json::array();
        for (const RecordedPlace& place : places) {
            if (const workspace::Component* component = ComponentOf(place, workspace_)) {
                Json object = {{"entry", JsonText(EntryOf(place))}, {"file", JsonPath(component->path)}};
                object["fileLine"] = FileLineOf(place, *component);
                object.update(PlaceObject(place));
                objects.push_back(std::move(object));
            }
        }
        return objects;
    }

    const OptionReader& given_;
    ReadOptions read_;
    Environment& environment_;
    Messages messages_;
    HistoryStore store_;
    workspace::Workspace workspace_;
};

}  // namespace

ExitStatus RunHistory(const OptionReader& given, Environment& environment) {
    return HistoryRun(given, environment).Run();
}

}  // namespace lintara::cli
