#include "cli/history/history_store.h"

#include "base/utf8.h"
#include "cli/output/terminal_text.h"
#include "platform/locked_file.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

namespace lintara::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t largestFile = std::size_t{1} << 20;
// A line that nobody reads in a list of places is cut.
constexpr std::size_t longestText = 1000;
constexpr std::chrono::milliseconds patience(500);
constexpr const char* backMember = "back";
constexpr const char* nextMember = "next";

std::optional<Text> TextFrom(const Json& object, const char* name) {
    const auto found = object.find(name);
    return found != object.end() && found->is_string()
               ? std::optional(FromUtf8(found->get_ref<const std::string&>()))
               : std::nullopt;
}

std::optional<RecordedPlace> PlaceFrom(const Json& object) {
    if (!object.is_object()) {
        return std::nullopt;
    }
    auto project = TextFrom(object, "project");
    auto component = TextFrom(object, "component");
    auto member = TextFrom(object, "member");
    auto text = TextFrom(object, "text");
    const auto line = object.find("line");
    constexpr auto lastLine = static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max());
    const bool hasLine = line != object.end() && line->is_number_unsigned() &&
                         line->get<std::uint64_t>() >= 1 && line->get<std::uint64_t>() <= lastLine;
    if (!project || !component || component->empty() || !member || !text || !hasLine) {
        return std::nullopt;
    }
    return RecordedPlace{.project = *std::move(project),
                         .component = *std::move(component),
                         .member = *std::move(member),
                         .text = *std::move(text),
                         .line = Line(line->get<std::int32_t>())};
}

std::optional<std::vector<RecordedPlace>> PlacesFrom(const Json& object, const char* name) {
    const auto found = object.find(name);
    if (found == object.end() || !found->is_array() || found->size() > history::EntriesPerGroup) {
        return std::nullopt;
    }
    std::vector<RecordedPlace> places;
    for (const Json& entry : *found) {
        auto place = PlaceFrom(entry);
        if (!place) {
            return std::nullopt;
        }
        places.push_back(*std::move(place));
    }
    return places;
}

// None for what no history was written as.
std::optional<History> Parsed(const std::string& bytes) {
    if (bytes.empty()) {
        return History{};
    }
    const Json object = Json::parse(bytes, nullptr, false);
    if (!object.is_object()) {
        return std::nullopt;
    }
    auto back = PlacesFrom(object, backMember);
    auto next = PlacesFrom(object, nextMember);
    return back && next ? std::optional(History{*std::move(back), *std::move(next)}) : std::nullopt;
}

std::string BytesOf(const History& history) {
    Json back = Json::array();
    Json next = Json::array();
    for (const RecordedPlace& place : history.back) {
        back.push_back(PlaceObject(place));
    }
    for (const RecordedPlace& place : history.next) {
        next.push_back(PlaceObject(place));
    }
    return Dump({{backMember, std::move(back)}, {nextMember, std::move(next)}});
}

}  // namespace

Json PlaceObject(const RecordedPlace& place) {
    return {{"project", JsonText(place.project)},
            {"component", JsonText(place.component)},
            {"member", JsonText(place.member)},
            {"line", place.line.value()},
            {"text", JsonText(place.text)}};
}

HistoryStore::HistoryStore(const fs::path& stateFolder)
    : records_(stateFolder.empty() ? fs::path() : stateFolder / "history", ".json", mostHistories) {}

std::expected<History, std::string> HistoryStore::Read(const fs::path& project) const {
    if (records_.folder().empty()) {
        return History{};
    }
    const fs::path file = records_.FileOf(project);
    const auto bytes = platform::ReadSmallFile(file, largestFile);
    if (!bytes) {
        return std::unexpected(PrintablePath(file) + " " + bytes.error());
    }
    return *bytes ? Parsed(**bytes).value_or(History{}) : History{};
}

std::expected<void, std::string> HistoryStore::Update(
    const fs::path& project, const std::function<void(History& history)>& change) const {
    if (records_.folder().empty()) {
        return {};
    }
    const fs::path file = records_.FileOf(project);
    const auto complain = [&](const std::string& what) {
        return std::unexpected(PrintablePath(file) + " " + what);
    };
    const auto locked = platform::LockedFile::Open(file, patience);
    if (!locked) {
        return complain(locked.error());
    }
    const auto bytes = locked->Read(largestFile);
    auto history = bytes ? Parsed(*bytes) : std::nullopt;
    if (!history) {
        if (const auto aside = locked->CopyAside(); !aside) {
            return complain(aside.error());
        }
        history.emplace();
    }
    change(*history);
    const std::string changed = BytesOf(*history);
    if (bytes && changed == *bytes) {
        return {};
    }
    if (const auto replaced = locked->Replace(changed); !replaced) {
        return complain(replaced.error());
    }
    if (bytes && bytes->empty()) {
        records_.ForgetOldest(file);
    }
    return {};
}

void RememberPlace(const Environment& environment, const fs::path& path, RecordedPlace place) {
    if (environment.stateFolder.empty()) {
        return;
    }
    try {
        place.text.resize(std::min(place.text.size(), longestText));
        [[maybe_unused]] const auto written =
            HistoryStore(environment.stateFolder).Update(path, [&](History& history) {
                Visit(std::move(place), history);
            });
    } catch (const std::exception&) {
        // The command itself goes on.
    }
}

void RememberPlace(const Environment& environment, const fs::path& path, const workspace::Project& project,
                   const workspace::Component& component, Line line) {
    RememberPlace(environment, path, PlaceAt(project, component, line));
}

}  // namespace lintara::cli
