// Any bytes as a project or a project group: it is read, or it is refused with a reason, and every file that
// it names is named by one of its lines.
#include "workspace/project_file.h"

#include "fuzz/input.h"
#include "fuzz/require.h"
#include "workspace/encoding.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace lintara::fuzz {
namespace {

constexpr std::array codePages = {"1252", "932", "1200", "65001"};

std::int64_t MostLines(const std::string& bytes) {
    return std::ranges::count_if(bytes, [](char c) { return c == '\n' || c == '\r'; }) + 1;
}

void CheckEntries(const std::vector<workspace::FileEntry>& entries, std::int64_t lines) {
    std::int64_t last = 0;
    for (const workspace::FileEntry& entry : entries) {
        Require(entry.line > last && entry.line <= lines, "files are named by lines, in their order");
        last = entry.line;
    }
}

void CheckProject(const std::string& bytes, const workspace::EncodingPtr& encoding) {
    const auto project = workspace::ParseProjectFile("P.vbp", bytes, encoding);
    if (!project) {
        Require(!project.error().message.empty(), "a refusal has a reason");
        return;
    }
    CheckEntries(project->components, MostLines(bytes));
    CheckEntries(project->others, MostLines(bytes));
}

void CheckGroup(const std::string& bytes, const workspace::EncodingPtr& encoding) {
    const auto group = workspace::ParseGroupFile("G.vbg", bytes, encoding);
    if (!group) {
        Require(!group.error().message.empty(), "a refusal has a reason");
        return;
    }
    CheckEntries(group->projects, MostLines(bytes));
    Require(group->projects.empty() || group->startup < group->projects.size(),
            "the project that starts is one of the group's");
}

}  // namespace
}  // namespace lintara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace lintara;
    fuzz::Input input(data, size);
    const auto encoding = *workspace::FindEncoding(input.Pick(fuzz::codePages));
    const std::string bytes = input.Rest();
    fuzz::CheckProject(bytes, encoding);
    fuzz::CheckGroup(bytes, encoding);
    return 0;
}
