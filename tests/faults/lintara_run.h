// Runs of the program as a process, with faults of the system on order; see tests/faults/fault_library.cpp.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace lintara::faults {

// What goes wrong.
struct Fault {
    long at = 0;  // the call, from 1; 0: none
    std::string kind = {};
    bool lasting = false;
    std::string lacks = {};
    std::string call = {};  // not empty: calls of this name alone count

    // For messages of tests.
    [[nodiscard]] std::string ToString() const;
};

// The folders of a user and of a test in one place: those of the settings and of the state, and what else is
// put there. Faults strike what lies below it.
struct Machine {
    std::filesystem::path folder;
    std::filesystem::path log;  // elsewhere

    [[nodiscard]] std::filesystem::path settings() const { return folder / "config"; }
    [[nodiscard]] std::filesystem::path state() const { return folder / "state"; }
};

struct Outcome {
    int status = -1;        // 1000 + the number of the signal that ended it
    std::string text = {};  // both outputs, as they came
    std::vector<std::string> calls = {};
    bool struck = false;

    [[nodiscard]] bool Says(std::string_view words) const { return text.contains(words); }
};

inline constexpr int killed = 1009;

// A run that is under way.
class LintaraRun {
  public:
    LintaraRun(const Machine& machine, const std::vector<std::string>& arguments, const Fault& fault = {},
               bool counts = true);
    ~LintaraRun();
    LintaraRun(const LintaraRun&) = delete;
    LintaraRun& operator=(const LintaraRun&) = delete;

    [[nodiscard]] pid_t id() const { return id_; }
    [[nodiscard]] bool HasEnded();
    void Kill() const;
    // For a run with a fault "stop": false when it ended instead.
    [[nodiscard]] bool WaitUntilStopped();
    void Continue() const;
    [[nodiscard]] Outcome Result();

  private:
    const Machine& machine_;
    pid_t id_ = 0;
    int output_ = -1;
    int status_ = -1;
};

[[nodiscard]] Outcome RunLintara(const Machine& machine, const std::vector<std::string>& arguments,
                                 const Fault& fault = {});

// Whether the program was built with sanitizers, which make it slow: tests then take fewer samples.
[[nodiscard]] bool IsSanitized();

// Whether LINTARA_TEST_ALL_FAULTS asks for every sample, however long that takes.
[[nodiscard]] bool TakesAll();

}  // namespace lintara::faults
