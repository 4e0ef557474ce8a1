#include "cli/output/messages.h"

#include "cli/output/terminal_text.h"

namespace lintara::cli {

void Messages::Errors(const workspace::Diagnostics& diagnostics) {
    for (const workspace::Diagnostic& diagnostic : diagnostics) {
        Error(diagnostic);
    }
}

void Messages::Warning(const workspace::Diagnostic& diagnostic, std::string_view code) {
    if (!quiet_) {
        Write(diagnostic, "warning", code);
    }
}

void Messages::Note(std::string_view text) {
    if (!quiet_) {
        streams_.err.Write("lintara: " + Printable(text) + "\n");
    }
}

void Messages::NoteAt(const workspace::Diagnostic& diagnostic, std::string_view code) {
    if (!quiet_) {
        Write(diagnostic, "note", code);
    }
}

void Messages::WarnOf(const ComponentReport& component) {
    if (quiet_) {
        return;
    }
    const workspace::Component& c = *component.component;
    for (const SkippedProcedure& skipped : component.skipped) {
        Warning({c.path, c.module->OriginalFileLine(skipped.at), SkipSentence(skipped, c)},
                CodeOf(skipped.reason));
    }
    for (const Remark& remark : component.remarks) {
        Warning({c.path, c.module->OriginalFileLine(remark.at), remark.message}, remark.code);
    }
}

void Messages::Write(const workspace::Diagnostic& diagnostic, std::string_view severity,
                     std::string_view code) {
    std::string text = diagnostic.path.empty() ? "lintara" : PrintablePath(diagnostic.path);
    if (diagnostic.line > 0) {
        text += ":" + std::to_string(diagnostic.line);
    }
    text += ": ";
    text += severity;
    text += ": " + Printable(std::string_view(diagnostic.message));
    if (!code.empty()) {
        text += " [" + std::string(code) + "]";
    }
    streams_.err.Write(text + "\n");
}

}  // namespace lintara::cli
