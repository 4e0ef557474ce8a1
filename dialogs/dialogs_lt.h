// `DialogsLT`: what a host asks for the parameters of a command before it calls `Lintara`. Each operation
// shows one modal dialog, made for the call and gone when it returns, and tells whether the user confirmed;
// the members of the record that are outputs are written only then. Nothing of it survives a call but what
// the settings keep. No operation fails or shows a message of its own: where memory runs out, the user has
// not confirmed. Calls come one at a time, on the host's user-interface thread. The operations stand in their
// order for late-bound callers.
#pragma once

#include "dialogs/dialog_host.h"
#include "dialogs/parameters.h"

#include <utility>

namespace lintara {

class DialogsLT {
  public:
    explicit DialogsLT(dialogs::DialogHost host) : host_(std::move(host)) {}

    // For Lintara::CustomCodeInserter.
    [[nodiscard]] bool GetInsertCCParameters(dialogs::InsertCCParameters& parameters) const noexcept;
    // For Lintara::CustomCodeRemover.
    [[nodiscard]] bool GetRemoveCCParameters(dialogs::RemoveCCParameters& parameters) const noexcept;
    // For Lintara::LineNumbersInserter and ErrorHandlerInserter.
    [[nodiscard]] bool GetInsertEHParameters(dialogs::InsertEHParameters& parameters) const noexcept;
    // For Lintara::LineNumbersRemover and ErrorHandlerRemover.
    [[nodiscard]] bool GetRemoveEHParameters(dialogs::RemoveEHParameters& parameters) const noexcept;

  private:
    dialogs::DialogHost host_;
};

}  // namespace lintara
