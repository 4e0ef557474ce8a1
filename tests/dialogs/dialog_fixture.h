// A dialog on a machine without a screen: settings in memory, a services object that notes whose placement it
// is asked for, and a user made of code.
#pragma once

#include "dialogs/dialogs_lt.h"
#include "forms/form.h"
#include "tests/support/form_inspection.h"
#include "tests/support/recording_settings.h"
#include "tests/support/scripted_toolkit.h"
#include "workspace/object_model.h"
#include "workspace/workspace.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::dialogs {

// Without a project: all that it does is to remember placements.
class PlacementGlobals final : public workspace::WorkspaceGlobals {
  public:
    explicit PlacementGlobals(workspace::Workspace& workspace) : WorkspaceGlobals(workspace) {}

    std::vector<std::string> log;
    std::optional<forms::Rect> place;  // where windows are moved on loading
    bool fails = false;

    Result<void> LoadWindowState(hostmodel::PlacedWindow& window) override {
        log.push_back("load " + ToUtf8(window.Name()));
        if (fails) {
            return Failure(ErrorNumber::HostFailure, "the test wants it");
        }
        if (place) {
            window.Move(place->left, place->top, place->width, place->height);
        }
        return {};
    }
    Result<void> SaveWindowState(const hostmodel::PlacedWindow& window) override {
        log.push_back("save " + ToUtf8(window.Name()));
        return fails ? Failure(ErrorNumber::HostFailure, "the test wants it") : Result<void>();
    }
};

struct DialogTest : testing::Test {
    [[nodiscard]] DialogHost Host() {
        return {.toolkit = toolkit, .settings = settings, .globals = globals, .libraryFolder = u"C:\\Suite"};
    }

    // What the user does with the next dialog, which is a `Dialog`. One that the user leaves open is closed
    // by its close box.
    template <class Dialog>
    void User(std::function<void(Dialog&)> use) {
        toolkit.user = [use = std::move(use)](forms::Form& form) {
            auto* const dialog = dynamic_cast<Dialog*>(&form);
            ASSERT_NE(dialog, nullptr);
            use(*dialog);
        };
    }

    workspace::Workspace workspace;
    std::shared_ptr<PlacementGlobals> globals = std::make_shared<PlacementGlobals>(workspace);
    support::ScriptedToolkit toolkit;
    support::RecordingSettings settings;
};

// Whether the three options can be chosen and which is, as in "-*+": "-" is disabled, "+" enabled, "*"
// selected.
template <class Options>
[[nodiscard]] std::string StatesOf(const Options& options) {
    std::string states;
    for (const auto& option : options) {
        states += option.Value() ? '*' : option.Enabled() ? '+' : '-';
    }
    return states;
}

}  // namespace lintara::dialogs
