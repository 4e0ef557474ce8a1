#include "tests/cli/serve_child.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace lintara::cli {

using nlohmann::json;

std::string LintaraProgram() {
    return LINTARA_BINARY_DIR "/cli/lintara";
}

ServeChild::ServeChild(const std::vector<std::string>& options) {
    std::array<int, 2> in{};
    std::array<int, 2> out{};
    if (::pipe2(in.data(), O_CLOEXEC) != 0 || ::pipe2(out.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    const std::string program = LintaraProgram();
    std::vector<char*> words = {const_cast<char*>(program.c_str()), const_cast<char*>("serve")};
    for (const std::string& option : options) {
        words.push_back(const_cast<char*>(option.c_str()));
    }
    words.push_back(nullptr);
    id_ = ::fork();
    if (id_ == 0) {
        ::dup2(in[0], STDIN_FILENO);
        ::dup2(out[1], STDOUT_FILENO);
        ::execv(program.c_str(), words.data());
        ::_exit(127);
    }
    ::close(in[0]);
    ::close(out[1]);
    in_ = in[1];
    out_ = out[0];
}

ServeChild::~ServeChild() {
    CloseInput();
    CloseOutput();
    (void)Status();
}

void ServeChild::Write(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t count = ::write(in_, bytes.data(), bytes.size());
        if (count < 0) {
            throw std::runtime_error("the child reads no more");
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::string ServeChild::ReadLine() {
    std::array<char, 65536> buffer;
    for (std::size_t from = 0;;) {
        const std::size_t end = read_.find('\n', from);
        if (end != std::string::npos) {
            std::string line = read_.substr(0, end);
            read_.erase(0, end + 1);
            return line;
        }
        from = read_.size();
        const ssize_t count = ::read(out_, buffer.data(), buffer.size());
        if (count <= 0) {
            EXPECT_EQ(read_, "") << "the last answer was cut off";
            return {};
        }
        read_.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

json ServeChild::Ask(const std::string& method, const json& params) {
    asked_.push_back(method);
    const json request = {{"jsonrpc", "2.0"}, {"id", ++lastId_}, {"method", method}, {"params", params}};
    Write(request.dump() + "\n");
    json answer = json::parse(ReadLine());
    EXPECT_EQ(answer["id"], lastId_);
    return answer;
}

json ServeChild::ResultOf(const std::string& method, const json& params) {
    json answer = Ask(method, params);
    EXPECT_TRUE(answer.contains("result")) << method << ": " << answer;
    return answer["result"];
}

void ServeChild::CloseInput() {
    if (in_ >= 0) {
        ::close(in_);
        in_ = -1;
    }
}

void ServeChild::CloseOutput() {
    if (out_ >= 0) {
        ::close(out_);
        out_ = -1;
    }
}

int ServeChild::Status() {
    if (!ended_) {
        int status = 0;
        ::waitpid(id_, &status, 0);
        status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
        ended_ = true;
    }
    return status_;
}

long ServeChild::ResidentKilobytes() const {
    std::ifstream pages("/proc/" + std::to_string(id_) + "/statm");
    long total = 0;
    long resident = 0;
    pages >> total >> resident;
    return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

}  // namespace lintara::cli
