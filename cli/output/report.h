// What an editing command did, gathered while it runs and printed at its end. All lines are those that the
// files had when the command began.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "cli/exit_status.h"
#include "workspace/diagnostic.h"
#include "workspace/workspace.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

// Why a procedure was left as it was.
enum class SkipReason {
    RangeMismatch,
    AlreadyNumbered,
    ForeignNumbers,
    NumberWidth,
    JumpTarget,
    NumberingLimit,
    DuplicateProcedure,
    NameClash,
    EmptyBody,
    OutsideBody,
    AlreadyInserted,
    BreaksProcedure,
    MarkerPrefix,
    MarkerMismatch,
    HiddenLines,
    LabelExists,
    LabelPrefix,
    LabelMismatch,
    CrowdedLine,
    LongName,
};

// "range-mismatch" and so on; part of the report's format.
[[nodiscard]] std::string_view CodeOf(SkipReason reason);

struct EditedProcedure {
    Text name;
    std::string_view kind;
    Line line;  // of the header
};

struct SkippedProcedure {
    Text name;
    std::string_view kind;
    Line line;  // of the header
    SkipReason reason = SkipReason::RangeMismatch;
    Line at;  // what the message is about
    std::string message;
    std::string_view fate = "was skipped";  // what became of it
};

// What is worth to know about an edited procedure.
struct Remark {
    std::string_view code;
    Line at;
    std::string message;
    // Of several remarks on the same thing only the first is told. Null: the remark stands for itself.
    const void* about = nullptr;
};

struct ComponentReport {
    const workspace::Project* project = nullptr;
    const workspace::Component* component = nullptr;
    bool changed = false;
    std::size_t linesChanged = 0;
    std::optional<bool> found = std::nullopt;  // of a search: whether there was any match
    std::vector<EditedProcedure> edited = {};
    std::vector<SkippedProcedure> skipped = {};
    std::vector<Remark> remarks = {};
};

struct Report {
    std::string_view command;
    ExitStatus status = ExitStatus::Done;
    bool written = false;
    std::vector<ComponentReport> components;
    workspace::Diagnostics warnings;  // about the project, not about a procedure
    workspace::Diagnostics errors;
    std::vector<std::filesystem::path> files;  // that were written

    [[nodiscard]] std::size_t linesChanged() const;
    [[nodiscard]] std::size_t proceduresEdited() const;
    [[nodiscard]] std::size_t proceduresSkipped() const;
    [[nodiscard]] std::size_t componentsChanged() const;
};

// "Sub Total in Invoice was skipped: ..."
[[nodiscard]] std::string SkipSentence(const SkippedProcedure& skipped,
                                       const workspace::Component& component);

// One JSON object and a line break.
[[nodiscard]] std::string ToJson(const Report& report);

}  // namespace lintara::cli
