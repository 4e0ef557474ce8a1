#include "cli/open_project.h"

#include "workspace/encoding.h"

namespace lintara::cli {

std::expected<workspace::Diagnostics, OpenFailure> OpenProject(workspace::Workspace& workspace,
                                                               const Options& options, Progress& progress) {
    workspace::OpenOptions open;
    if (!options.read.codePage.empty()) {
        auto encoding = workspace::FindEncoding(options.read.codePage);
        if (!encoding) {
            return std::unexpected(
                OpenFailure{ExitStatus::Usage, {{{}, 0, "--code-page: " + encoding.error()}}});
        }
        open.codePage = *std::move(encoding);
    }
    open.recursive = options.read.recursive;
    open.skipMissing = options.read.skipMissing;
    open.progress = [&](std::size_t done, std::size_t total) { progress.Update("reading", done, total); };
    auto opened = workspace::Open(workspace, options.path, open);
    progress.Clear();
    if (!opened) {
        return std::unexpected(OpenFailure{ExitStatus::Failed, std::move(opened.error())});
    }
    return *std::move(opened);
}

std::expected<workspace::Diagnostics, ExitStatus> OpenOrComplain(workspace::Workspace& workspace,
                                                                 const Options& options, Progress& progress,
                                                                 Messages& messages) {
    auto opened = OpenProject(workspace, options, progress);
    if (!opened) {
        messages.Errors(opened.error().errors);
        return std::unexpected(opened.error().status);
    }
    for (const workspace::Diagnostic& warning : *opened) {
        messages.Warning(warning);
    }
    return *std::move(opened);
}

}  // namespace lintara::cli
