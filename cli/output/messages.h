// Messages for people on standard error, in the form that editors know: "path:line: warning: text".
#pragma once

#include "cli/output/progress.h"
#include "cli/output/report.h"
#include "cli/streams.h"
#include "workspace/diagnostic.h"

#include <string_view>

namespace lintara::cli {

class Messages {
  public:
    // Quiet: errors only.
    Messages(Streams& streams, bool quiet) : streams_(streams), quiet_(quiet) {}

    void Error(const workspace::Diagnostic& diagnostic) { Write(diagnostic, "error", {}); }
    void Errors(const workspace::Diagnostics& diagnostics);
    void Warning(const workspace::Diagnostic& diagnostic, std::string_view code = {});
    void Note(std::string_view text);
    void NoteAt(const workspace::Diagnostic& diagnostic, std::string_view code);

    // A warning for each procedure that was skipped, and the remarks.
    void WarnOf(const ComponentReport& component);

  private:
    void Write(const workspace::Diagnostic& diagnostic, std::string_view severity, std::string_view code);

    Streams& streams_;
    bool quiet_;
};

}  // namespace lintara::cli
