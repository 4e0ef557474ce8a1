// The endpoint's documentation tells every method with its arguments, and no other.
#include "cli/serve/method.h"
#include "tests/support/source_folder.h"
#include "tests/support/temporary_folder.h"

#include <map>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

struct Row {
    std::string arguments;
    std::string result;
};

std::string CellOf(const std::string& line, std::size_t number) {
    std::size_t begin = 0;
    for (; number > 0; --number) {
        begin = line.find(" | ", begin) + 3;
    }
    const std::size_t end = line.find(" |", begin);
    return line.substr(begin, end - begin);
}

// The rows of the tables of methods, by the method.
std::map<std::string, Row> DocumentedMethods() {
    std::istringstream lines(support::ReadBytes(support::SourceFolder() / "docs/automation.md"));
    std::map<std::string, Row> rows;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("| `")) {
            continue;
        }
        const std::string name = line.substr(3, line.find('`', 3) - 3);
        if (name.contains('.')) {
            EXPECT_TRUE(rows.try_emplace(name, Row{CellOf(line, 1), CellOf(line, 2)}).second) << name;
        }
    }
    return rows;
}

std::string WordFor(ArgumentType type) {
    switch (type) {
        case ArgumentType::Text:
            return "string";
        case ArgumentType::Integer:
            return "16 bits";
        case ArgumentType::Long:
            return "32 bits";
        case ArgumentType::Boolean:
            return "boolean";
        case ArgumentType::Controls:
            break;
    }
    return "controls";
}

std::string ArgumentsOf(const MethodInfo& method) {
    std::string text;
    for (const MethodParameter& parameter : method.parameters) {
        text += text.empty() ? "" : ", ";
        text += parameter.mayBeLeftOut() ? "optional " : "";
        text += "`" + parameter.name + "` " + WordFor(parameter.type);
    }
    return text;
}

TEST(ServeDocument, TellsEveryMethod) {
    auto rows = DocumentedMethods();
    for (const MethodInfo& method : Methods()) {
        const auto row = rows.extract(method.name);
        ASSERT_TRUE(row) << method.name << " is not documented";
        EXPECT_EQ(row.mapped().arguments, ArgumentsOf(method)) << method.name;
        for (const MethodParameter& parameter : method.parameters) {
            if (parameter.isWritten()) {
                EXPECT_THAT(row.mapped().result, testing::ContainsRegex("out .*`" + parameter.name + "`"))
                    << method.name;
            }
        }
    }
    for (const auto& [name, row] : rows) {
        ADD_FAILURE() << name << " is documented and does not exist";
    }
}

TEST(ServeDocument, TellsTheMembersOfTheDispatchInterface) {
    std::size_t members = 0;
    for (const MethodInfo& method : Methods()) {
        members += method.name.starts_with("lintara.") ? 1 : 0;
    }
    EXPECT_EQ(members, assistant::DispatchTable().size() - 3) << "all but those of oG";
}

}  // namespace
}  // namespace lintara::cli
