#include "cli/project/project_records.h"

#include "workspace/checksum.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace lintara::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t lengthOfName = 16;

fs::path RealPath(const fs::path& path) {
    std::error_code error;
    fs::path real = fs::weakly_canonical(path, error);
    if (error) {
        return path;
    }
    return real;
}

}  // namespace

ProjectRecords::ProjectRecords(fs::path folder, std::string extension, std::size_t most)
    : folder_(std::move(folder)), extension_(std::move(extension)), most_(most) {}

fs::path ProjectRecords::FileOf(const fs::path& project) const {
    std::array<char, lengthOfName + 1> name{};
    std::snprintf(name.data(), name.size(), "%016llx",
                  static_cast<unsigned long long>(workspace::Checksum(RealPath(project).native())));
    const std::string file = name.data() + extension_;
    return folder_ / file;
}

bool ProjectRecords::IsRecord(const fs::path& path) const {
    const std::string file = path.filename();
    const std::string_view name = std::string_view(file).substr(0, lengthOfName);
    return file.size() == lengthOfName + extension_.size() && file.ends_with(extension_) &&
           name.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

void ProjectRecords::ForgetOldest(const fs::path& latest) const {
    std::vector<std::pair<fs::file_time_type, fs::path>> others;
    std::error_code error;
    fs::directory_iterator entry(folder_, error);
    for (const fs::directory_iterator end; !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        if (IsRecord(entry->path()) && entry->path() != latest) {
            others.emplace_back(entry->last_write_time(ignored), entry->path());
        }
    }
    std::ranges::sort(others, std::greater());
    for (std::size_t i = most_ - 1; i < others.size(); ++i) {
        fs::remove(others[i].second, error);
    }
}

}  // namespace lintara::cli
