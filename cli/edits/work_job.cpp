#include "cli/edits/work_job.h"

namespace lintara::cli {
namespace {

std::string ThingsOf(const WorkOptions& work) {
    return !work.lineNumbers     ? "error handlers"
           : !work.errorHandlers ? "numbers"
                                 : "error handlers and numbers";
}

}  // namespace

EditJob InsertionJob(const WorkOptions& work) {
    if (!work.errorHandlers) {
        return {.command = "insert",
                .stage = "numbering",
                .done = "Numbered",
                .wouldDo = "Would number",
                .makeEditor = {}};
    }
    const std::string what = ThingsOf(work) + " into";
    return {.command = "insert",
            .stage = "inserting",
            .done = "Inserted " + what,
            .wouldDo = "Would insert " + what,
            .makeEditor = {}};
}

EditJob RemovalJob(const WorkOptions& work) {
    const std::string what = "the " + ThingsOf(work) + " of";
    return {.command = "remove",
            .stage = "removing",
            .done = "Removed " + what,
            .wouldDo = "Would remove " + what,
            .makeEditor = {}};
}

}  // namespace lintara::cli
