// A form that notes its events, and a mirror that notes what it was told.
#pragma once

#include "forms/form.h"
#include "tests/support/scripted_toolkit.h"

#include <string>
#include <utility>
#include <vector>

namespace lintara::forms {

using Log = std::vector<std::string>;

class RecordingMirror final : public Mirror {
  public:
    std::vector<std::pair<Control*, Property>> changes;

    void Changed(Control& control, Property property) override { changes.emplace_back(&control, property); }
};

struct RecordingForm : Form {
    RecordingForm() : Form(u"FTest", u"Test", {3000, 2000}) {
        Load.Handle([this] { log.emplace_back("Load"); });
        Resize.Handle([this] { log.emplace_back("Resize"); });
        Unloading.Handle([this] { log.emplace_back("Unload"); });
    }

    Log log;
};

}  // namespace lintara::forms
