#include "tests/faults/trial.h"

#include "tests/support/project_generator.h"

#include <fstream>
#include <stdexcept>

#include <gtest/gtest.h>

namespace lintara::faults {

namespace {

namespace fs = std::filesystem;

std::string Code(const std::string& name) {
    return "Attribute VB_Name = \"" + name + "\"\r\nOption Explicit\r\n\r\nPublic Sub Show" + name +
           "()\r\n    Dim total As Long\r\n    total = 1 ' caf\xE9\r\n    total = total + 1\r\nEnd Sub\r\n";
}

std::string Designer(const std::string& type, const std::string& name) {
    return "VERSION 5.00\r\nBegin VB." + type + " " + name + "\r\n   Caption = \"x\"\r\nEnd\r\n" + Code(name);
}

// Without the files that a run makes for its own purposes.
FileTree Plain(FileTree tree) {
    std::erase_if(tree, [](const auto& each) { return !Leftovers({each}).empty(); });
    return tree;
}

}  // namespace

void Tally::Add(const Tally& other) {
    struck += other.struck;
    kills += other.kills;
    survived += other.survived;
    refused += other.refused;
    recovered += other.recovered;
    olds += other.olds;
    news += other.news;
}

std::string Tally::ToString() const {
    return "faults " + std::to_string(struck) + ", of these kills " + std::to_string(kills) +
           "; ended with status 0: " + std::to_string(survived) +
           ", with status 3: " + std::to_string(refused) + "; recovered by the next run " +
           std::to_string(recovered) + "; in the end old " + std::to_string(olds) + ", new " +
           std::to_string(news);
}

void FaultFolder::Write(const std::map<std::string, std::string>& files) const {
    for (const auto& [name, bytes] : files) {
        const fs::path file = machine_.folder / name;
        fs::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
    }
}

Words FaultFolder::Named(const Words& words) const {
    Words named;
    for (const std::string& word : words) {
        named.push_back(word.starts_with('@') ? (machine_.folder / word.substr(1)).string() : word);
    }
    return named;
}

Outcome FaultFolder::Run(const Words& words, const Fault& fault) const {
    return RunLintara(machine_, Named(words), fault);
}

void WriteSmallProject(const FaultFolder& folder) {
    folder.Write({
        {"p/p.vbp",
         "Type=Exe\r\nModule=A; A.bas\r\nClass=B; B.cls\r\nForm=F.frm\r\nUserControl=sub\\C.ctl\r\n"
         "PropertyPage=sub\\D.pag\r\nModule=E; sub\\E.bas\r\nName=\"P\"\r\n"},
        {"p/A.bas", Code("A")},
        {"p/B.cls", "VERSION 1.0 CLASS\r\nBEGIN\r\n  MultiUse = -1\r\nEND\r\n" + Code("B")},
        {"p/F.frm", Designer("Form", "F")},
        {"p/F.frx", std::string("\0\1\2", 3)},
        {"p/sub/C.ctl", Designer("UserControl", "C")},
        {"p/sub/D.pag", Designer("PropertyPage", "D")},
        {"p/sub/E.bas", "Attribute VB_Name = \"E\"\nSub Last()\n    Beep\nEnd Sub"},
        {"block.txt", "Debug.Print 1\r\n"},
    });
    fs::permissions(folder.project() / "B.cls", fs::perms::owner_read | fs::perms::owner_write);
}

void WriteManyFiles(const FaultFolder& folder, std::size_t files) {
    support::ProjectOptions options;
    options.files = files;
    options.lines = files * 60;
    support::WriteProject(support::GenerateProject(options), folder.project());
    folder.Write({{"block.txt", "Debug.Print 1\r\n"}});
}

Trial::Trial(const FaultFolder& folder, const std::vector<Words>& before, Words command, std::string lacks)
    : folder_(folder), command_(std::move(command)), lacks_(std::move(lacks)) {
    for (const Words& words : before) {
        if (const Outcome outcome = folder.Run(words); outcome.status != 0) {
            throw std::runtime_error(outcome.text);
        }
    }
    old_ = ReadProject();
    fs::create_directories(folder.machine().state());
    oldState_ = ReadTree(folder.machine().state());
    Fault none;
    none.lacks = lacks_;
    const Outcome outcome = folder.Run(command_, none);
    calls_ = outcome.calls;
    new_ = ReadProject();
    newState_ = ReadTree(folder.machine().state());
    if (outcome.status != 0 || new_ == old_ || !Leftovers(new_).empty()) {
        throw std::runtime_error("the command does not work: " + outcome.text);
    }
}

void Trial::Begin() const {
    RestoreTree(folder_.project(), old_);
    if (oldState_.empty()) {
        // Its folders are to be made anew.
        fs::remove_all(folder_.machine().state());
        fs::create_directories(folder_.machine().state());
        return;
    }
    // What killed runs left in the state folder stays: clearing it away is for the program.
    FileTree state = oldState_;
    for (const auto& [name, content] : ReadTree(folder_.machine().state())) {
        if (!Leftovers({{name, content}}).empty()) {
            state[name] = content;
        }
    }
    RestoreTree(folder_.machine().state(), state);
}

void Trial::Strike(Fault fault) {
    fault.lacks = lacks_;
    Begin();
    const Outcome outcome = folder_.Run(command_, fault);
    SCOPED_TRACE(fault.ToString() + "\n" + outcome.text);
    if (!outcome.struck) {
        ADD_FAILURE() << "nothing was struck";
        return;
    }
    const bool isSurvivable =
        fault.kind == "short" || (fault.kind == std::to_string(EINTR) && !fault.lasting);
    LookAt(outcome, isSurvivable ? Means::Survived : fault.lasting ? Means::Lasting : Means::Anything);
}

void Trial::LookAt(const Outcome& outcome, Means means) {
    ++tally_.struck;
    tally_.kills += outcome.status == killed ? 1 : 0;
    tally_.survived += outcome.status == 0 ? 1 : 0;
    tally_.refused += outcome.status == 3 ? 1 : 0;
    const FileTree project = ReadProject();
    LookAtStatus(outcome, project);
    LookAtRecord(outcome, means);
    if (means == Means::Survived) {
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(Differences(new_, project), "");
        EXPECT_EQ(Differences(newState_, Plain(ReadTree(folder_.machine().state()))), "");
    }
    RecoverAndCompare(outcome);
}

void Trial::LookAtStatus(const Outcome& outcome, const FileTree& project) const {
    if (outcome.status == killed) {
        return;
    }
    if (outcome.status == 0) {
        EXPECT_EQ(Differences(new_, Plain(project)), "");
        return;
    }
    EXPECT_EQ(outcome.status, 3);
    EXPECT_TRUE(outcome.Says("Input/output error") || outcome.Says("No space left on device"));
    if (!outcome.Says("is kept; run \"lintara recover\"")) {
        EXPECT_EQ(Differences(old_, Plain(project)), "");
    }
}

// What "lintara undo" would find is of this command, or of the one before it only where this one did not
// save.
void Trial::LookAtRecord(const Outcome& outcome, Means means) const {
    const FileTree state = Plain(ReadTree(folder_.machine().state()));
    if (outcome.status == 0 && command_.front() != "undo") {
        // Where nothing can be changed any more the record of the command before stays.
        const bool isForgotten = state.empty() || (means == Means::Lasting && state == oldState_);
        EXPECT_TRUE(state == newState_ || (outcome.Says("will not find this command") && isForgotten));
        return;
    }
    EXPECT_TRUE(state == newState_ || state == oldState_ || state.empty());
}

void Trial::RecoverAndCompare(const Outcome& outcome) {
    FileTree project = ReadProject();
    if (!Leftovers(project).empty()) {
        ++tally_.recovered;
        // Any command that opens the project does it.
        const bool byName = tally_.recovered % 2 == 0;
        const Words words = folder_.Named({byName ? "recover" : "list", command_.back()});
        LintaraRun recovery(folder_.machine(), words, {}, false);
        const Outcome recovered = recovery.Result();
        EXPECT_EQ(recovered.status, 0) << recovered.text;
        project = ReadProject();
        EXPECT_EQ(Leftovers(project), "") << recovered.text;
    }
    const bool isOld = project == old_;
    const bool isNew = project == new_;
    tally_.olds += isOld ? 1 : 0;
    tally_.news += isNew ? 1 : 0;
    EXPECT_TRUE(isOld || isNew) << "against the old files:\n"
                                << Differences(old_, project) << "against the new ones:\n"
                                << Differences(new_, project);
    if (outcome.status == 0) {
        EXPECT_TRUE(isNew);
    } else if (outcome.status == 3 && !outcome.Says("is kept; run")) {
        EXPECT_TRUE(isOld);
    }
}

void Trial::End() {
    Begin();
    EXPECT_EQ(folder_.Run(command_).status, 0);
    EXPECT_EQ(Differences(new_, ReadProject()), "");
    EXPECT_EQ(Differences(newState_, ReadTree(folder_.machine().state())), "");
}

}  // namespace lintara::faults
