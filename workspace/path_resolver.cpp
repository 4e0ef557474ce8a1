#include "workspace/path_resolver.h"

#include "workspace/characters.h"
#include "workspace/encoding.h"
#include "workspace/limits.h"

#include <algorithm>
#include <system_error>

namespace lintara::workspace {

namespace fs = std::filesystem;

namespace {

std::unexpected<PathResolver::Failure> Missing(std::string message) {
    return std::unexpected(PathResolver::Failure{true, std::move(message)});
}

// "C:\..." names a drive that only Windows knows.
bool HasDrive(std::string_view written) {
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    return written.size() >= 2 && written[1] == ':' && isLetter(written[0]);
}

// The parent of a folder. Only where the last name is no link is it what the path says without that name.
fs::path ParentOf(const fs::path& folder) {
    const fs::path name = folder.filename();
    std::error_code ignored;
    if (name.empty() || name == ".." || name == "." || fs::is_symlink(folder, ignored)) {
        return folder == folder.root_path() && folder.has_root_path() ? folder : folder / "..";
    }
    return FolderOf(folder);
}

}  // namespace

fs::path FolderOf(const fs::path& path) {
    fs::path folder = path.parent_path();
    return folder.empty() ? fs::path(".") : folder;
}

fs::path AbsolutePath(const fs::path& path) {
    std::error_code error;
    fs::path absolute = fs::absolute(path, error);
    if (error) {
        absolute = path;
    }
    fs::path result = absolute.root_path();
    for (const fs::path& name : absolute.relative_path()) {
        if (name == "..") {
            if (fs::is_symlink(result, error)) {
                const fs::path target = fs::canonical(result, error);
                result = error ? result : target;
            }
            result = result.parent_path();
        } else if (!name.empty() && name != ".") {
            result /= name;
        }
    }
    return result;
}

const PathResolver::Listing& PathResolver::List(const fs::path& folder) {
    const auto [place, isNew] = listings_.try_emplace(folder.string());
    Listing& listing = place->second;
    if (isNew) {
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
             entry.increment(error)) {
            const std::string name = entry->path().filename().string();
            listing[FoldCase(FromUtf8(name))].push_back(name);
        }
        for (auto& [folded, names] : listing) {
            std::ranges::sort(names);
        }
    }
    return listing;
}

const std::vector<std::string>& PathResolver::Candidates(const fs::path& folder, std::string_view name) {
    static const std::vector<std::string> none;
    const Listing& listing = List(folder);
    const auto found = listing.find(FoldCase(FromUtf8(name)));
    return found == listing.end() ? none : found->second;
}

std::expected<fs::path, PathResolver::Failure> PathResolver::Step(const fs::path& folder,
                                                                  std::string_view segment) {
    const std::vector<std::string>& names = Candidates(folder, segment);
    const fs::path base = folder == "." ? fs::path() : folder;
    if (std::ranges::find(names, segment) != names.end()) {
        return base / segment;
    }
    if (names.size() > 1) {
        return std::unexpected(Failure{
            false, "\"" + std::string(segment) + "\" may be " + (base / names[0]).string() + " or " +
                       (base / names[1]).string() + ", which differ only in case; rename one of them"});
    }
    if (names.size() == 1) {
        return base / names.front();
    }
    // A folder that may be entered but not listed.
    std::error_code error;
    if (fs::exists(folder / segment, error)) {
        return base / segment;
    }
    return Missing("there is no \"" + std::string(segment) + "\" in the folder " + folder.string());
}

std::expected<fs::path, PathResolver::Failure> PathResolver::Resolve(const fs::path& folder,
                                                                     std::string_view written) {
    constexpr std::string_view separators = "\\/";
    if (HasDrive(written)) {
        return Missing("the path is on a drive of another machine");
    }
    // What a network shows under such a name, an automatic mount would ask strangers for.
    if (written.size() > 1 && separators.contains(written[0]) && separators.contains(written[1])) {
        return Missing("the path is on another machine of a network");
    }
    if (written.contains('\0')) {
        return Missing("no path holds a NUL character");
    }
    if (written.size() > longestPath) {
        return Missing("the path is longer than " + std::to_string(longestPath) + " bytes");
    }
    fs::path place = !written.empty() && separators.contains(written.front()) ? fs::path("/") : folder;
    for (std::size_t begin = 0; begin < written.size();) {
        const std::size_t end = std::min(written.find_first_of(separators, begin), written.size());
        const std::string_view segment = written.substr(begin, end - begin);
        begin = end + 1;
        if (segment == "..") {
            place = ParentOf(place);
        } else if (!segment.empty() && segment != ".") {
            auto next = Step(place, segment);
            if (!next) {
                return next;
            }
            place = *std::move(next);
        }
    }
    return place;
}

}  // namespace lintara::workspace
