#include "tests/faults/lintara_run.h"

#include "tests/support/temporary_folder.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace lintara::faults {

namespace {

namespace fs = std::filesystem;

std::vector<char*> Pointers(std::vector<std::string>& words) {
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> EnvironmentOf(const Machine& machine, const Fault& fault, bool counts) {
    std::vector<std::string> variables = {
        "PATH=/usr/bin:/bin",
        "LC_ALL=C.UTF-8",
        "NO_COLOR=1",
        "HOME=" + machine.folder.string(),
        "XDG_CONFIG_HOME=" + machine.settings().string(),
        "XDG_STATE_HOME=" + machine.state().string(),
    };
    if (!counts) {
        return variables;
    }
    variables.push_back("LD_PRELOAD=" LINTARA_PRELOADED_BEFORE " " LINTARA_FAULT_LIBRARY);
    variables.push_back("LINTARA_FAULT_BELOW=" + machine.folder.string());
    variables.push_back("LINTARA_FAULT_LOG=" + machine.log.string());
    variables.push_back("LINTARA_FAULT_LACKS=" + fault.lacks);
    if (fault.at > 0) {
        variables.push_back("LINTARA_FAULT_AT=" + std::to_string(fault.at));
        variables.push_back("LINTARA_FAULT=" + fault.kind);
    }
    if (!fault.call.empty()) {
        variables.push_back("LINTARA_FAULT_CALL=" + fault.call);
    }
    if (fault.lasting) {
        variables.push_back("LINTARA_FAULT_LASTING=1");
    }
    return variables;
}

}  // namespace

std::string Fault::ToString() const {
    return kind + (lasting ? " from call " : " at call ") + std::to_string(at) +
           (lacks.empty() ? "" : " without " + lacks);
}

LintaraRun::LintaraRun(const Machine& machine, const std::vector<std::string>& arguments, const Fault& fault,
                       bool counts)
    : machine_(machine) {
    fs::remove(machine.log);
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    std::vector<std::string> words = {LINTARA_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> variables = EnvironmentOf(machine, fault, counts);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, pipe[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, pipe[1], STDERR_FILENO);
    const int error = ::posix_spawn(&id_, LINTARA_PROGRAM, &actions, nullptr, Pointers(words).data(),
                                    Pointers(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipe[1]);
    output_ = pipe[0];
    if (error != 0) {
        throw std::runtime_error("the program cannot be started");
    }
}

LintaraRun::~LintaraRun() {
    if (status_ < 0) {
        Kill();
        ::waitpid(id_, nullptr, 0);
    }
    ::close(output_);
}

bool LintaraRun::HasEnded() {
    int status = 0;
    if (status_ < 0 && ::waitpid(id_, &status, WNOHANG) == id_) {
        status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
    }
    return status_ >= 0;
}

void LintaraRun::Kill() const {
    if (status_ < 0) {
        ::kill(id_, SIGKILL);
    }
}

bool LintaraRun::WaitUntilStopped() {
    int status = 0;
    if (::waitpid(id_, &status, WUNTRACED) != id_ || !WIFSTOPPED(status)) {
        status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
        return false;
    }
    return true;
}

void LintaraRun::Continue() const {
    ::kill(id_, SIGCONT);
}

Outcome LintaraRun::Result() {
    Outcome outcome;
    std::array<char, 4096> buffer;
    for (ssize_t count = 0; (count = ::read(output_, buffer.data(), buffer.size())) > 0;) {
        outcome.text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    if (int status = 0; status_ < 0 && ::waitpid(id_, &status, 0) == id_) {
        status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
    }
    outcome.status = status_;
    if (fs::exists(machine_.log)) {
        std::istringstream lines(support::ReadBytes(machine_.log));
        for (std::string line; std::getline(lines, line);) {
            outcome.struck |= line.starts_with("! ");
            outcome.calls.push_back(std::move(line));
        }
    }
    return outcome;
}

Outcome RunLintara(const Machine& machine, const std::vector<std::string>& arguments, const Fault& fault) {
    return LintaraRun(machine, arguments, fault).Result();
}

bool IsSanitized() {
    return std::string_view(LINTARA_PRELOADED_BEFORE) != "";
}

bool TakesAll() {
    return std::getenv("LINTARA_TEST_ALL_FAULTS") != nullptr;
}

}  // namespace lintara::faults
