#include "cli/project/open_project.h"

#include "workspace/encoding.h"
#include "workspace/object_model.h"

namespace lintara::cli {

namespace {

std::expected<workspace::Diagnostics, workspace::Diagnostics> OpenStandardInput(
    workspace::Workspace& workspace, const std::filesystem::path& name, Source& in,
    const workspace::OpenOptions& options) {
    auto bytes = in.ReadAll();
    if (!bytes) {
        return std::unexpected(workspace::Diagnostics{{{}, 0, std::move(bytes.error())}});
    }
    return workspace::OpenBytes(workspace, name, *std::move(bytes), options);
}

}  // namespace

std::expected<OpenedProject, OpenFailure> OpenProject(workspace::Workspace& workspace,
                                                      const ReadOptions& options, Source& in,
                                                      Progress& progress) {
    workspace::OpenOptions open;
    if (!options.codePage.empty()) {
        auto encoding = workspace::FindEncoding(options.codePage);
        if (!encoding) {
            return std::unexpected(
                OpenFailure{ExitStatus::Usage, {{{}, 0, "--code-page: " + encoding.error()}}});
        }
        open.codePage = *std::move(encoding);
    }
    open.recursive = options.recursive;
    open.skipMissing = options.skipMissing;
    open.progress = [&](std::size_t done, std::size_t total) { progress.Update("reading", done, total); };
    OpenedProject result;
    if (options.keepGoing) {
        open.unreadable = [&](const auto& problem) { result.unreadable.push_back(problem); };
    }
    auto opened = options.stdinFilename ? OpenStandardInput(workspace, *options.stdinFilename, in, open)
                                        : workspace::Open(workspace, options.path, open);
    progress.Clear();
    if (!opened) {
        return std::unexpected(OpenFailure{ExitStatus::Failed, std::move(opened.error())});
    }
    result.warnings = *std::move(opened);
    return result;
}

std::expected<workspace::Diagnostics, ExitStatus> OpenOrComplain(workspace::Workspace& workspace,
                                                                 const ReadOptions& options, Source& in,
                                                                 Progress& progress, Messages& messages) {
    auto opened = OpenProject(workspace, options, in, progress);
    if (!opened) {
        messages.Errors(opened.error().errors);
        return std::unexpected(opened.error().status);
    }
    for (const workspace::Diagnostic& warning : opened->warnings) {
        messages.Warning(warning);
    }
    return std::move(opened->warnings);
}

std::shared_ptr<hostmodel::Globals> MakeGlobals(workspace::Workspace& workspace,
                                                const Environment& environment) {
    return std::make_shared<workspace::WorkspaceGlobals>(workspace, environment.identity);
}

}  // namespace lintara::cli
