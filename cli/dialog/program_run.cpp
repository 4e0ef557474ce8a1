#include "cli/dialog/program_run.h"

#include "workspace/descriptor.h"
#include "workspace/write_file.h"

#include <array>
#include <cerrno>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace lintara::cli {
namespace {

using workspace::Descriptor;

constexpr off_t mostOutput = off_t{1} << 26;

// A file in memory, so that neither side ever waits for the other to read or write.
Descriptor MemoryFile() {
    Descriptor file(::memfd_create("lintara", MFD_CLOEXEC));
    if (!file.open()) {
        throw std::system_error(errno, std::generic_category(), "no memory for another program's streams");
    }
    return file;
}

std::expected<std::string, std::string> Contents(const Descriptor& file) {
    struct stat status = {};
    if (::fstat(file.get(), &status) != 0 || status.st_size > mostOutput) {
        return std::unexpected("it wrote too much");
    }
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t got =
            ::pread(file.get(), bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
        if (got <= 0) {
            return std::unexpected("what it wrote cannot be read");
        }
        done += static_cast<std::size_t>(got);
    }
    return bytes;
}

class FileActions {
  public:
    explicit FileActions(const std::array<const Descriptor*, 3>& streams) {
        ::posix_spawn_file_actions_init(&actions_);
        for (int number = 0; number < 3; ++number) {
            ::posix_spawn_file_actions_adddup2(&actions_, streams[static_cast<std::size_t>(number)]->get(),
                                               number);
        }
    }
    ~FileActions() { ::posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_ = {};
};

int WaitFor(pid_t process) {
    int status = 0;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

}  // namespace

std::expected<ProgramEnd, std::string> RunProgram(const std::filesystem::path& program,
                                                  std::string_view input) {
    const Descriptor in = MemoryFile();
    const Descriptor out = MemoryFile();
    const Descriptor err = MemoryFile();
    if (auto written = workspace::WriteAll(in.get(), input); !written) {
        return std::unexpected(written.error());
    }
    ::lseek(in.get(), 0, SEEK_SET);
    std::string name = program.string();
    std::array<char*, 2> arguments{name.data(), nullptr};
    const FileActions actions({&in, &out, &err});
    pid_t process = 0;
    if (const int error =
            ::posix_spawn(&process, name.c_str(), actions.get(), nullptr, arguments.data(), environ)) {
        return std::unexpected("it cannot be started: " + std::generic_category().message(error));
    }
    const int status = WaitFor(process);
    auto written = Contents(out);
    auto said = Contents(err);
    if (!written || !said) {
        return std::unexpected(written ? said.error() : written.error());
    }
    return ProgramEnd{.status = WIFEXITED(status) ? WEXITSTATUS(status) : 0,
                      .signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0,
                      .out = *std::move(written),
                      .err = *std::move(said)};
}

}  // namespace lintara::cli
