// The check of what an edit left raises no false alarm: whatever the code holds, and whatever was done to it
// before, no command takes its own work for a fault.
#include "tests/cli/command_run.h"
#include "tests/support/random.h"
#include "tests/support/wild_module.h"
#include "workspace/encoding.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using std::string_view_literals::operator""sv;

constexpr int InternalFault = 5;

// More for a long search: LINTARA_SEEDS.
std::uint64_t Seeds() {
    const char* seeds = std::getenv("LINTARA_SEEDS");
    return seeds == nullptr ? 300 : std::stoull(seeds);
}

constexpr std::array commands{
    "insert - --line-numbers"sv,
    "insert - --line-numbers --renumber"sv,
    "insert - --line-numbers --renumber --base 20000 --step 3"sv,
    "insert - --line-numbers --step 5000"sv,
    "insert - --line-numbers --numbering module"sv,
    "insert - --line-numbers --numbering module --renumber"sv,
    "insert - --error-handlers --label hErr --template @handler.txt"sv,
    "insert - --error-handlers --label zzFail --template @long.txt"sv,
    "insert - --error-handlers --line-numbers --label hErr --template @handler.txt"sv,
    "insert - --error-handlers --line-numbers --numbering module --label zzFail --template @long.txt"sv,
    "insert - --error-handlers --refresh --label hErr --template @long.txt"sv,
    "insert - --error-handlers --refresh --label zzFail --template @handler.txt"sv,
    "insert - --error-handlers --line-numbers --refresh --label zzNew --template @handler.txt"sv,
    "insert - --error-handlers --line-numbers --refresh --renumber --label hErr --template @long.txt"sv,
    "insert - --error-handlers --line-numbers --refresh --numbering module --renumber --label x --template "
    "@handler.txt"sv,
    "insert - --error-handlers --line-numbers --label hErr --template @names.txt"sv,
    "insert - --error-handlers --refresh --label hErr --template @names.txt"sv,
    "insert - --error-handlers --refresh --label hErr --template @names.txt --exact"sv,
    "insert - --error-handlers --line-numbers --refresh --numbering module --label hErr --template "
    "@names.txt"sv,
    "remove - --line-numbers"sv,
    "remove - --error-handlers --label hErr"sv,
    "remove - --error-handlers --label zzFail"sv,
    "remove - --error-handlers --line-numbers --label hErr"sv,
    "remove - --error-handlers --line-numbers --label zzFail"sv,
    "custom insert - --id 5 --code @code.txt"sv,
    "custom insert - --id 5 --code @code.txt --where last"sv,
    "custom insert - --id 12 --code @code.txt --line 2"sv,
    "custom insert - --id 1 --code @code.txt --no-markers"sv,
    "custom insert - --id 7 --code @names.txt --line 3"sv,
    "custom insert - --id 51 --code @code.txt --where last --no-markers"sv,
    "custom remove - --id 5"sv,
    "custom remove - --id 1"sv,
    "custom remove - --id 12"sv,
    "replace - --component Wild --find x --replace y"sv,
    "replace - --component Wild --find x --replace longer --whole-word"sv,
    "replace - --component Wild --find blanks --replace b --from 5 --to 40"sv,
    "replace - --component Wild --find End --replace Total(2)"sv,
    "replace - --component Wild --find x --replace xor --from 3 --to 33"sv,
    "replace - --component Wild --find x --replace one\ntwo --from 2 --to 50"sv,
    "replace - --component Wild --find = --replace \nif --whole-word"sv,
    "replace - --component Wild --find 1 --replace to --to 25"sv,
};

// Scopes and checks that go with every command but "replace".
constexpr std::array scopes{"",
                            "",
                            "",
                            "",
                            " --procedure *oad*",
                            " --procedure Total --procedure x",
                            " --exclude *.Item",
                            " --procedure Proc*5*"};

std::vector<std::string> Words(const CommandTest& test, std::string_view line) {
    std::vector<std::string> words;
    for (std::size_t at = 0; at < line.size();) {
        const std::size_t end = std::min(line.find(' ', at), line.size());
        const std::string_view word = line.substr(at, end - at);
        words.push_back(word.starts_with('@') ? test.Path(word.substr(1)) : std::string(word));
        at = end + 1;
    }
    words.insert(words.end(), {"--stdin-filename", "Wild.bas", "--quiet"});
    return words;
}

// The module of that seed, in one of the forms that files have.
std::string ModuleOf(std::uint64_t seed) {
    const std::string wild = support::GenerateWildModule({.lines = 60 + seed % 100, .seed = seed});
    switch (seed % 5) {
        case 0:
            return Replaced(wild, "\r\n", "\n");
        case 1: {
            Text text;
            workspace::DefaultEncoding()->Decode(wild, text);
            std::string bytes = "\xFF\xFE";
            EXPECT_TRUE((*workspace::FindEncoding("UTF-16LE"))->Encode(text, bytes));
            return bytes;
        }
        default:
            return wild;
    }
}

void WriteTemplates(const CommandTest& test) {
    test.Write("handler.txt", "    Debug.Print \"{MemberName}\"\r\n");
    test.Write("long.txt",
               "\r\n    Select Case Err\r\n    Case 1\r\n        Report _\r\n            Erl\r\n"
               "    End Select\r\n\r\n    Resume Next\r\n");
    test.Write("names.txt",
               "    debug.print \"{ProjectName}.{ComponentName}.{MemberName}\"\r\n"
               "    ' {UserName} {ComputerName} {Date} {Time} {ControlName}\r\n"
               "    exit {MemberType}\r\n");
    test.Write("code.txt", "    Trace \"{ComponentName}\", _\r\n        \"{MemberName}\"\r\n");
}

std::string ChosenCommand(support::Random& random) {
    std::string line(random.Pick(commands));
    if (!line.starts_with("replace")) {
        line += random.Pick(scopes);
    }
    return line + (random.Chance(15) ? " --exact" : "");
}

TEST(EditCheckRandom, NoEditOfWildModulesIsTakenForAFault) {
    CommandTest test;
    WriteTemplates(test);
    std::size_t changed = 0;
    std::size_t runs = 0;
    for (std::uint64_t seed = 1; seed <= Seeds(); ++seed) {
        support::Random random(seed);
        test.input = ModuleOf(seed);
        std::string history;
        for (int step = 0; step < 5; ++step, ++runs) {
            const std::string line = ChosenCommand(random);
            history += line + "\n";
            const Outcome outcome = test.Run(Words(test, line));
            ASSERT_NE(outcome.status, InternalFault) << "seed " << seed << "\n" << history << outcome.err;
            if (outcome.status == 0 && outcome.out != test.input) {
                test.input = outcome.out;
                ++changed;
            }
        }
    }
    EXPECT_GT(changed, runs / 4) << "the commands find nothing to do";
}

}  // namespace
}  // namespace lintara::cli
