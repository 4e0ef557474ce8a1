#include "cli/dialog/window_program.h"

#include "cli/dialog/program_run.h"
#include "cli/output/terminal_text.h"
#include "platform/path_text.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <unistd.h>

namespace lintara::cli {
namespace {

namespace fs = std::filesystem;

constexpr int noDisplay = 3;
constexpr const char* programVariable = "LINTARA_WINDOW";
// From the folder of this program: where it is installed, and where it is built.
constexpr std::string_view programPlaces[] = {"../libexec/lintara/lintara-window",
                                              "../window/lintara-window"};

[[noreturn]] void RefuseAnswer(const std::string& why) {
    throw std::runtime_error("the answer of lintara-window cannot be used: " + why);
}

std::string SignalName(int signal) {
    const char* description = ::sigdescr_np(signal);
    return description != nullptr ? description : std::to_string(signal);
}

bool IsProgram(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error) && ::access(path.c_str(), X_OK) == 0;
}

std::expected<fs::path, std::string> FindProgram(const Environment& environment) {
    if (const char* named = std::getenv(programVariable); named != nullptr && *named != '\0') {
        if (IsProgram(named)) {
            return fs::path(named);
        }
        return std::unexpected("LINTARA_WINDOW names " + PrintablePath(named) + ", which is no program");
    }
    if (const auto folder = platform::PathFromText(environment.platform.libraryFolder);
        folder && !folder->empty()) {
        for (const std::string_view place : programPlaces) {
            if (fs::path program = (*folder / place).lexically_normal(); IsProgram(program)) {
                return program;
            }
        }
    }
    return std::unexpected(
        "the program lintara-window is not installed with this one; LINTARA_WINDOW may name it");
}

// What the program itself said about its failure.
std::string Complaint(std::string_view said) {
    constexpr std::string_view prefix = "lintara-window: error: ";
    if (const std::size_t at = said.rfind(prefix); at != std::string_view::npos) {
        said.remove_prefix(at + prefix.size());
    }
    while (said.ends_with('\n')) {
        said.remove_suffix(1);
    }
    return std::string(said);
}

void PassOn(std::string_view said, Sink& err) {
    if (!said.empty()) {
        std::string text;
        while (!said.empty()) {
            const std::string_view line = said.substr(0, said.find('\n'));
            AppendPrintable(line, text);
            text += '\n';
            said.remove_prefix(std::min(said.size(), line.size() + 1));
        }
        err.Write(text);
    }
}

WindowAnswer Parsed(const std::string& out) {
    Json object = Json::parse(out, nullptr, false);
    if (object.is_discarded() || !object.is_object()) {
        RefuseAnswer(out.empty() ? "there is none" : "it is no JSON object");
    }
    WindowAnswer answer(std::move(object));
    (void)answer.accepted();
    return answer;
}

}  // namespace

const Json& WindowAnswer::Member(const char* name) const {
    const auto found = object_.find(name);
    if (found == object_.end()) {
        RefuseAnswer("it has no \"" + std::string(name) + "\"");
    }
    return *found;
}

bool WindowAnswer::Flag(const char* name) const {
    const Json& value = Member(name);
    if (!value.is_boolean()) {
        RefuseAnswer("\"" + std::string(name) + "\" is neither true nor false");
    }
    return value.get<bool>();
}

std::string WindowAnswer::TextOf(const char* name) const {
    const Json& value = Member(name);
    if (!value.is_string()) {
        RefuseAnswer("\"" + std::string(name) + "\" is no text");
    }
    return value.get<std::string>();
}

std::int32_t WindowAnswer::Number(const char* name, std::int32_t least, std::int32_t most) const {
    const Json& value = Member(name);
    const bool isSigned = value.is_number_integer() && !value.is_number_unsigned();
    const bool isGood = isSigned ? value.get<std::int64_t>() >= least && value.get<std::int64_t>() <= most
                                 : value.is_number_unsigned() &&
                                       std::cmp_greater_equal(value.get<std::uint64_t>(), least) &&
                                       std::cmp_less_equal(value.get<std::uint64_t>(), most);
    if (!isGood) {
        RefuseAnswer("\"" + std::string(name) + "\" is no number from " + std::to_string(least) + " to " +
                     std::to_string(most));
    }
    return value.get<std::int32_t>();
}

std::expected<WindowAnswer, std::string> AskWindow(const Json& request, Environment& environment) {
    const auto program = FindProgram(environment);
    if (!program) {
        return std::unexpected(program.error());
    }
    const auto end = RunProgram(*program, Dump(request));
    if (!end) {
        throw std::runtime_error(PrintablePath(*program) + ": " + end.error());
    }
    if (end->signal == 0 && end->status == noDisplay) {
        return std::unexpected(Complaint(end->err));
    }
    PassOn(end->err, environment.streams.err);
    if (end->signal != 0) {
        throw std::runtime_error(PrintablePath(*program) + " was ended by a signal (" +
                                 SignalName(end->signal) + "); nothing was changed");
    }
    if (end->status != 0) {
        throw std::runtime_error(PrintablePath(*program) + " failed with status " +
                                 std::to_string(end->status) + "; nothing was changed");
    }
    return Parsed(end->out);
}

}  // namespace lintara::cli
