// The command itself, as a process: what only the real streams, limits and locks show.
#include "tests/cli/command_run.h"
#include "workspace/project_lock.h"

#include <array>
#include <fcntl.h>
#include <functional>
#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string binary = LINTARA_BINARY_DIR "/cli/lintara";

std::string ReadAll(int descriptor) {
    std::string text;
    std::array<char, 4096> buffer;
    for (ssize_t count = 0; (count = ::read(descriptor, buffer.data(), buffer.size())) > 0;) {
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return text;
}

int StatusOf(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

[[noreturn]] void Become(const std::vector<std::string>& arguments) {
    std::vector<char*> words;
    words.push_back(const_cast<char*>(binary.c_str()));
    for (const std::string& argument : arguments) {
        words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    ::execv(binary.c_str(), words.data());
    ::_exit(127);
}

// Standard output and standard error in one text, as they come.
struct Ended {
    int status = -1;
    std::string text;
};

Ended RunBinary(
    const std::vector<std::string>& arguments, const std::function<void()>& prepare = [] {}) {
    std::array<int, 2> pipe{};
    EXPECT_EQ(::pipe(pipe.data()), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(pipe[1], STDOUT_FILENO);
        ::dup2(pipe[1], STDERR_FILENO);
        ::close(pipe[0]);
        ::close(pipe[1]);
        prepare();
        Become(arguments);
    }
    ::close(pipe[1]);
    Ended ended;
    ended.text = ReadAll(pipe[0]);
    ::close(pipe[0]);
    ended.status = StatusOf(child);
    return ended;
}

Ended RunOnTerminal(const std::vector<std::string>& arguments, const char* variable) {
    int terminal = -1;
    const pid_t child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        ::unsetenv("NO_COLOR");
        ::setenv("TERM", "xterm", 1);
        if (variable != nullptr) {
            ::setenv(variable, "1", 1);
        }
        Become(arguments);
    }
    Ended ended;
    ended.text = ReadAll(terminal);
    ::close(terminal);
    ended.status = StatusOf(child);
    return ended;
}

TEST(Binary, PrintsItsVersion) {
    const Ended ended = RunBinary({"--version"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT(ended.text, StartsWith("lintara "));
}

TEST(Binary, KeepsTheUsersSettingsInTheirFolder) {
    CommandTest test;
    test.WriteShop();
    const auto home = [&] { ::setenv("XDG_CONFIG_HOME", test.Path("home").c_str(), 1); };
    EXPECT_EQ(RunBinary({"settings", "set", "LNBase", "30000"}, home).status, 0);
    EXPECT_THAT(test.Read("home/Tarnwick/settings.toml"), HasSubstr("LNBase = \"30000\""));
    EXPECT_EQ(RunBinary({"settings", "get", "LNBase"}, home).text, "30000\n");
    EXPECT_THAT(RunBinary({"insert", test.Path("Shop.vbp"), "--line-numbers", "--diff"}, home).text,
                HasSubstr("30000:     count = 1"));
}

TEST(Binary, RemembersForUndoInTheUsersStateFolder) {
    CommandTest test;
    test.WriteShop();
    const auto before = test.Files();
    const auto state = [&] { ::setenv("XDG_STATE_HOME", test.Path("state").c_str(), 1); };
    EXPECT_EQ(RunBinary({"insert", test.Path("Shop.vbp"), "--line-numbers"}, state).status, 0);
    EXPECT_FALSE(std::filesystem::is_empty(test.Path("state")));
    EXPECT_THAT(RunBinary({"undo", test.Path("Shop.vbp")}).text, StartsWith("Nothing to undo"));
    EXPECT_THAT(RunBinary({"undo", test.Path("Shop.vbp")}, state).text, StartsWith("Undid"));
    EXPECT_EQ(test.Files(), before);
}

TEST(Binary, GoesOnWithDefaultsWhenTheSettingsAreDamaged) {
    CommandTest test;
    test.WriteShop();
    test.Write("home/Tarnwick/settings.toml", "[CodeAutomation\n");
    const auto home = [&] { ::setenv("XDG_CONFIG_HOME", test.Path("home").c_str(), 1); };
    const Ended ended = RunBinary({"insert", test.Path("Shop.vbp"), "--line-numbers", "--diff"}, home);
    EXPECT_THAT(ended.text,
                StartsWith("lintara: warning: " + test.Path("home/Tarnwick/settings.toml") + ":1: "));
    EXPECT_THAT(ended.text, HasSubstr("10000:     count = 1"));
    EXPECT_THAT(RunBinary({"--version"}, home).text, StartsWith("lintara "));
}

TEST(Binary, ReturnsItsStatus) {
    CommandTest test;
    test.WriteShop();
    EXPECT_EQ(RunBinary({"insert", test.Path("Shop.vbp"), "--line-numbers", "--check"}).status, 1);
    EXPECT_EQ(RunBinary({"insert"}).status, 2);
    EXPECT_EQ(RunBinary({"insert", test.Path("no.vbp"), "--line-numbers"}).status, 3);
    EXPECT_EQ(RunBinary({"insert", test.Path("Shop.vbp"), "--line-numbers", "--strict"}).status, 4);
    EXPECT_EQ(RunBinary({"remove", test.Path("Shop.vbp"), "--line-numbers"}).status, 0);
}

TEST(Binary, ColorsTheDiffOnATerminal) {
    CommandTest test;
    test.WriteShop();
    const std::vector<std::string> arguments = {"insert", test.Path("Shop.vbp"), "--line-numbers", "--diff"};
    EXPECT_THAT(RunOnTerminal(arguments, nullptr).text, HasSubstr("\x1b[32m+10000:     count = 1\x1b[m"));
    EXPECT_THAT(RunOnTerminal(arguments, "NO_COLOR").text,
                AllOf(HasSubstr("+10000:     count = 1"), Not(HasSubstr("\x1b"))));
    EXPECT_THAT(RunBinary(arguments).text, Not(HasSubstr("\x1b")));
}

TEST(Binary, ChangesNothingWhenAFileMayNotGrow) {
    CommandTest test;
    test.WriteShop();
    std::string code = "Sub A()\r\n";
    for (int i = 0; i < 3000; ++i) {
        code += "    x = 1\r\n";
    }
    test.Write("Main.bas", code + "End Sub\r\n");
    const auto before = test.Files();
    const Ended ended = RunBinary({"insert", test.Path("Shop.vbp"), "--line-numbers", "--quiet"}, [] {
        const rlimit limit{.rlim_cur = 16384, .rlim_max = 16384};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    });
    EXPECT_EQ(ended.status, 3);
    EXPECT_THAT(ended.text, HasSubstr("Main.bas"));
    EXPECT_EQ(test.Files(), before);
}

TEST(Binary, TellsWhenStandardOutputIsFull) {
    CommandTest test;
    test.WriteShop();
    const Ended ended = RunBinary({"list", test.Path("Shop.vbp")}, [] {
        const int full = ::open("/dev/full", O_WRONLY);
        ::dup2(full, STDOUT_FILENO);
    });
    EXPECT_EQ(ended.status, 3);
    EXPECT_EQ(ended.text, "lintara: error: standard output could not be written\n");
}

TEST(Binary, WaitsForAnotherRunOrSaysSo) {
    CommandTest test;
    test.WriteShop();
    const auto before = test.Files();
    {
        const auto lock = workspace::ProjectLock::Acquire(test.Path("Shop.vbp"), 0);
        ASSERT_TRUE(lock);
        const Ended busy = RunBinary({"insert", test.Path("Shop.vbp"), "--line-numbers", "--wait", "0.4"});
        EXPECT_EQ(busy.status, 3);
        EXPECT_THAT(busy.text,
                    AllOf(HasSubstr("waiting for another run"), HasSubstr("another run is at work")));
        EXPECT_EQ(RunBinary({"insert", test.Path("Shop.vbp"), "--line-numbers", "--wait", "0"}).status, 3);
        EXPECT_EQ(test.Files(), before);
        EXPECT_EQ(RunBinary({"list", test.Path("Shop.vbp")}).status, 0) << "reading waits for nobody";
    }
    EXPECT_EQ(RunBinary({"insert", test.Path("Shop.vbp"), "--line-numbers"}).status, 0);
}

TEST(Binary, RunsAtTheSameTimeFollowEachOther) {
    CommandTest test;
    test.WriteShop();
    const auto before = test.Files();
    std::vector<pid_t> children;
    for (int i = 0; i < 6; ++i) {
        const pid_t child = ::fork();
        if (child == 0) {
            const int nothing = ::open("/dev/null", O_WRONLY);
            ::dup2(nothing, STDOUT_FILENO);
            ::dup2(nothing, STDERR_FILENO);
            Become({i % 2 == 0 ? "insert" : "remove", test.Path("Shop.vbp"), "--line-numbers"});
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        EXPECT_EQ(StatusOf(child), 0);
    }
    EXPECT_EQ(RunBinary({"remove", test.Path("Shop.vbp"), "--line-numbers"}).status, 0);
    EXPECT_EQ(test.Files(), before);
}

}  // namespace
}  // namespace lintara::cli
