#include "cli/dialog/program_run.h"

#include "workspace/descriptor.h"
#include "workspace/write_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace lintara::cli {
namespace {

using workspace::Descriptor;

constexpr std::size_t mostOutput = std::size_t{1} << 26;

// A file in memory, so that neither side ever waits for the other to read or write.
Descriptor MemoryFile() {
    Descriptor file(::memfd_create("lintara", MFD_CLOEXEC));
    if (!file.open()) {
        throw std::system_error(errno, std::generic_category(), "no memory for another program's streams");
    }
    return file;
}

struct Pipe {
    Descriptor reading;
    Descriptor writing;
};

Pipe MakePipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::system_error(errno, std::generic_category(), "no pipe for another program's output");
    }
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

// What the process writes into the pipe, until it closes it or ends. Programs that it leaves behind may hold
// the pipe open for longer. The pipe is closed in the end, so that nobody waits for a reader.
std::expected<std::string, std::string> ReadOutput(const Descriptor pipe, pid_t process) {
    const Descriptor end(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
    std::array<pollfd, 2> sources{{{pipe.get(), POLLIN, 0}, {end.get(), POLLIN, 0}}};
    std::array<char, 65536> chunk{};
    std::string bytes;
    while (true) {
        if (::poll(sources.data(), sources.size(), -1) < 0) {
            if (errno == EINTR) {
                continue;
            }
            return std::unexpected("what it wrote cannot be read");
        }
        if (sources[0].revents == 0) {
            return bytes;
        }
        const ssize_t got = ::read(pipe.get(), chunk.data(), chunk.size());
        if (got == 0) {
            return bytes;
        }
        if (got < 0 && errno != EINTR) {
            return std::unexpected("what it wrote cannot be read");
        }
        bytes.append(chunk.data(), static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
        if (bytes.size() > mostOutput) {
            return std::unexpected("it wrote too much");
        }
    }
}

std::expected<std::string, std::string> Contents(const Descriptor& file) {
    struct stat status = {};
    if (::fstat(file.get(), &status) != 0 || std::cmp_greater(status.st_size, mostOutput)) {
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
    // Closed by the end of this process, whatever ends it. That tells the program that nobody waits any more.
    Pipe out = MakePipe();
    const Descriptor err = MemoryFile();
    if (auto written = workspace::WriteAll(in.get(), input); !written) {
        return std::unexpected(written.error());
    }
    ::lseek(in.get(), 0, SEEK_SET);
    std::string name = program.string();
    std::array<char*, 2> arguments{name.data(), nullptr};
    const FileActions actions({&in, &out.writing, &err});
    pid_t process = 0;
    if (const int error =
            ::posix_spawn(&process, name.c_str(), actions.get(), nullptr, arguments.data(), environ)) {
        return std::unexpected("it cannot be started: " + std::generic_category().message(error));
    }
    out.writing = Descriptor();
    auto written = ReadOutput(std::move(out.reading), process);
    const int status = WaitFor(process);
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
