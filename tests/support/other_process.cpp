#include "tests/support/other_process.h"

#include <array>
#include <fcntl.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace lintara::support {

namespace fs = std::filesystem;

namespace {

constexpr uid_t nobody = 65534;

}  // namespace

OtherProcess::OtherProcess(const std::function<std::string()>& work) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    id_ = ::fork();
    if (id_ == 0) {
        ::close(ends[0]);
        const std::string answer = work();
        const ssize_t written = ::write(ends[1], answer.data(), answer.size());
        ::_exit(written == static_cast<ssize_t>(answer.size()) ? 0 : 1);
    }
    ::close(ends[1]);
    answerEnd_ = ends[0];
}

OtherProcess::~OtherProcess() {
    (void)Answer();
    ::close(answerEnd_);
}

bool OtherProcess::HasEnded() {
    int status = 0;
    ended_ = ended_ || ::waitpid(id_, &status, WNOHANG) == id_;
    return ended_;
}

std::string OtherProcess::Answer() {
    std::array<char, 4096> buffer{};
    for (ssize_t got = 0; (got = ::read(answerEnd_, buffer.data(), buffer.size())) > 0;) {
        answer_.append(buffer.data(), static_cast<std::size_t>(got));
    }
    int status = 0;
    if (!ended_) {
        ::waitpid(id_, &status, 0);
        ended_ = true;
    }
    return answer_;
}

std::string InOtherProcess(const std::function<std::string()>& work) {
    return OtherProcess(work).Answer();
}

std::string AsOrdinaryUser(const fs::path& folder, const std::function<std::string()>& work) {
    if (::geteuid() != 0) {
        return work();
    }
    (void)!::lchown(folder.c_str(), nobody, nobody);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        (void)!::lchown(entry.path().c_str(), nobody, nobody);
    }
    return InOtherProcess([&]() -> std::string {
        if (::setgid(nobody) != 0 || ::setuid(nobody) != 0) {
            return "cannot become an ordinary user";
        }
        return work();
    });
}

}  // namespace lintara::support
