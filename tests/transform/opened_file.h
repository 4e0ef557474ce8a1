// A component file, opened into a fixture: for tests of what an operation does to the bytes that are saved,
// hidden attribute lines included.
#pragma once

#include "tests/support/code_fixture.h"
#include "tests/support/module_text.h"
#include "workspace/component_file.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::support {

class OpenedFile : public CodeFixture {
  public:
    explicit OpenedFile(const std::string& bytes) : CodeFixture("") {
        const auto file = workspace::ParseComponentFile("Module1.cls", hostmodel::ComponentType::Class, bytes,
                                                        workspace::DefaultEncoding());
        workspace().Find(ProjectName)->Find(ModuleName)->module =
            std::make_unique<workspace::Module>(bytes, file.value().codeBegin, file.value().encoding);
    }

    [[nodiscard]] std::string bytes() const { return BytesOf(module()); }

    [[nodiscard]] std::vector<Text> lines() const {
        std::vector<Text> lines;
        for (Line line{1}; line.value() <= module().CountOfLines(); ++line) {
            module().ReadLine(line, lines.emplace_back());
        }
        return lines;
    }

    // Every hidden line of the code, behind the shown line to which it belongs.
    [[nodiscard]] std::vector<std::string> HiddenLines() const {
        std::vector<std::string> hidden;
        std::string owner;
        std::string line;
        char before = '\0';
        for (const char byte : bytes()) {
            if (byte != '\r' && byte != '\n') {
                line += byte;
            } else if (byte == '\r' || before != '\r') {
                if (line.starts_with("Attribute ") && line.find(".VB_") != std::string::npos) {
                    hidden.push_back(owner + " | " + line);
                } else {
                    owner = line;
                }
                line.clear();
            }
            before = byte;
        }
        return hidden;
    }
};

}  // namespace lintara::support
