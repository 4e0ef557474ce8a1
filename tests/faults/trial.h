// A command on a project that is struck by faults again and again, each time from the same start, and what
// has to be true afterwards: the project is wholly as before or wholly as the command makes it, and the
// command's status and messages tell the truth.
#pragma once

#include "tests/faults/file_tree.h"
#include "tests/faults/lintara_run.h"
#include "tests/support/temporary_folder.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace lintara::faults {

using Words = std::vector<std::string>;

// What a trial has seen.
struct Tally {
    long struck = 0;     // runs in which a fault took place
    long kills = 0;      // of these, the ones that were killed
    long survived = 0;   // ended with status 0 all the same
    long refused = 0;    // ended with status 3
    long recovered = 0;  // had to be finished or undone by the next run
    long olds = 0;       // projects that were as before in the end
    long news = 0;       // projects that were as the command makes them

    void Add(const Tally& other);
    [[nodiscard]] std::string ToString() const;
};

// The folders of a test: "p" holds the project.
class FaultFolder {
  public:
    FaultFolder() : machine_{files_ / "machine", logs_ / "log"} {
        std::filesystem::create_directories(machine_.folder);
    }

    [[nodiscard]] const Machine& machine() const { return machine_; }
    [[nodiscard]] std::filesystem::path project() const { return machine_.folder / "p"; }
    void Write(const std::map<std::string, std::string>& files) const;

    // In these words "@" at the start of a word stands for the folder.
    [[nodiscard]] Outcome Run(const Words& words, const Fault& fault = {}) const;
    [[nodiscard]] Words Named(const Words& words) const;

  private:
    support::TemporaryFolder files_;
    support::TemporaryFolder logs_;
    Machine machine_;
};

// Six components of all kinds in two folders, one of them with another mode, and what lies beside them.
void WriteSmallProject(const FaultFolder& folder);

// Made up, of so many components; the project file is p/Generated.vbp then.
void WriteManyFiles(const FaultFolder& folder, std::size_t files);

class Trial {
  public:
    // `before` are runs that prepare the project for the command.
    Trial(const FaultFolder& folder, const std::vector<Words>& before, Words command, std::string lacks = "");

    // The calls of an undisturbed run that change files.
    [[nodiscard]] const std::vector<std::string>& calls() const { return calls_; }

    // Puts everything back to where the command starts.
    void Begin() const;
    // Begins, and runs the command with the fault, which must take place; then looks at everything.
    void Strike(Fault fault);
    // Looks at everything after a run that was killed or ended by itself.
    enum class Means {
        Anything,
        Survived,
        Lasting
    };  // what the fault was: one that no run may notice; for good
    void LookAt(const Outcome& outcome, Means means = Means::Anything);
    // A last run without faults clears away whatever was left for the next one.
    void End();

    [[nodiscard]] const Tally& tally() const { return tally_; }
    [[nodiscard]] const Words& command() const { return command_; }

  private:
    void LookAtStatus(const Outcome& outcome, const FileTree& project) const;
    void LookAtRecord(const Outcome& outcome, Means means) const;
    void RecoverAndCompare(const Outcome& outcome);
    [[nodiscard]] FileTree ReadProject() const { return ReadTree(folder_.project()); }

    const FaultFolder& folder_;
    Words command_;
    std::string lacks_;
    FileTree old_;
    FileTree new_;
    FileTree oldState_;
    FileTree newState_;
    std::vector<std::string> calls_;
    Tally tally_;
};

}  // namespace lintara::faults
