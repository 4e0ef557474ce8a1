// The four parameter dialogs: what each is asked with, and the command line that its answer stands for.
#pragma once

#include "base/text.h"
#include "cli/dialog/window_program.h"
#include "cli/options/given_options.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

// What a host asks the library before it shows a dialog.
struct CaretAnswers {
    Text project;
    Text component;
    Text member;            // "" in the declarations
    std::int32_t line = 0;  // 0 when no code window is active
    bool isOneOfSeveralProjects = false;
};

// A run of another command of `lintara`.
struct StandInRun {
    GivenOptions options;  // on top of those that the dialog's own command line gave
    std::string input;     // standard input
};

// The copy-and-paste buffer in what a dialog is asked with and what it answers.
struct CopyBuffer {
    const char* taken = nullptr;  // the member by which the dialog takes it; null when it begins with none
    const char* given = nullptr;  // the member by which the dialog gives it back; null when it never does
    bool isGivenEmpty = false;    // whether an empty text empties the buffer, or says that it was not used
};

struct DialogKind {
    std::string_view window;   // as lintara-window knows it
    std::string_view command;  // the command that does the same without a window
    Json (*request)(const CaretAnswers& caret);
    // Adds what the user chose, but the scope. Throws UsageError for numbers that the language refuses, and
    // std::runtime_error for an answer that is none.
    void (*addChoice)(const WindowAnswer& answer, StandInRun& run);
    // Options with which the command does what the dialog offers to a user who changes nothing.
    std::vector<std::string> (*usualOptions)(bool hasRememberedCode);
    bool offersProcedureFirst;  // when there is one at the caret, else the component
    CopyBuffer buffer = {};
};

// Names the component, the procedure or the project by the answer's scope code. Throws std::runtime_error for
// a scope that there is none of at the caret.
void AddScope(const WindowAnswer& answer, const CaretAnswers& caret, GivenOptions& options);

[[nodiscard]] const DialogKind& InsertHandlersDialog();
[[nodiscard]] const DialogKind& RemoveHandlersDialog();
[[nodiscard]] const DialogKind& InsertCodeDialog();
[[nodiscard]] const DialogKind& RemoveCodeDialog();

}  // namespace lintara::cli
