// Running parts of a test in processes of their own: to end them at any point, to take rights from them, to
// have several at work on the same files.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <sys/types.h>

namespace lintara::support {

// A process that is a copy of this one, started at once. Start it while no other thread is at work.
class OtherProcess {
  public:
    explicit OtherProcess(const std::function<std::string()>& work);
    ~OtherProcess();
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    [[nodiscard]] pid_t id() const { return id_; }
    [[nodiscard]] bool HasEnded();
    // Waits for its end. What `work` answered; "" when the process ended before it could.
    [[nodiscard]] std::string Answer();

  private:
    pid_t id_ = 0;
    int answerEnd_ = -1;
    bool ended_ = false;
    std::string answer_;
};

[[nodiscard]] std::string InOtherProcess(const std::function<std::string()>& work);

// What `work` answers without the superuser's rights, to whom no permission is denied. When this process is
// the superuser's, it runs in a process of an ordinary user, who is made the owner of `folder` and all in it.
[[nodiscard]] std::string AsOrdinaryUser(const std::filesystem::path& folder,
                                         const std::function<std::string()>& work);

}  // namespace lintara::support
