// A program in place of lintara-window that notes what it is asked and answers what a test says.
#pragma once

#include "tests/support/temporary_folder.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace lintara::cli {

class WindowStandIn {
  public:
    WindowStandIn() { Answers(R"({"accepted": false})"); }
    ~WindowStandIn() { ::unsetenv("LINTARA_WINDOW"); }
    WindowStandIn(const WindowStandIn&) = delete;
    WindowStandIn& operator=(const WindowStandIn&) = delete;

    void Answers(std::string_view answer) {
        folder_.Write("answer", answer);
        Does("cat \"$here/answer\"");
    }

    // Commands of a shell, which run once the request was read; $here is a folder for them.
    void Does(const std::string& commands) {
        const auto file = folder_.Write("window", "#!/bin/sh\nhere='" + folder_.path().string() +
                                                      "'\ncat > \"$here/request\"\n" + commands + "\n");
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        ::setenv("LINTARA_WINDOW", file.c_str(), 1);
    }

    [[nodiscard]] nlohmann::json request() const { return nlohmann::json::parse(folder_.Read("request")); }
    [[nodiscard]] bool wasAsked() const { return std::filesystem::exists(folder_ / "request"); }
    [[nodiscard]] std::string Path(std::string_view name) const { return (folder_ / name).string(); }

  private:
    support::TemporaryFolder folder_;
};

}  // namespace lintara::cli
