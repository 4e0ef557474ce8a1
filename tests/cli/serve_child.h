// `lintara serve` as a process, spoken to over pipes; and other programs that start it.
#pragma once

#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

#include <nlohmann/json.hpp>

namespace lintara::cli {

// The program that was built.
[[nodiscard]] std::string LintaraProgram();

class ServeChild {
  public:
    explicit ServeChild(const std::vector<std::string>& options = {"--isolated"});
    ~ServeChild();
    ServeChild(const ServeChild&) = delete;
    ServeChild& operator=(const ServeChild&) = delete;

    [[nodiscard]] pid_t id() const { return id_; }

    void Write(std::string_view bytes) const;
    // The next line, without its line feed; waits for it. "" at the end.
    [[nodiscard]] std::string ReadLine();

    // The answer to a request; every method that was asked is remembered.
    nlohmann::json Ask(const std::string& method, const nlohmann::json& params = nlohmann::json::object());
    // Its result; a test failure when it is an error.
    nlohmann::json ResultOf(const std::string& method,
                            const nlohmann::json& params = nlohmann::json::object());
    [[nodiscard]] const std::vector<std::string>& asked() const { return asked_; }

    void CloseInput();
    void CloseOutput();
    // Waits for the end: the exit status, 1000 + the number of the signal that ended it.
    int Status();

    // What it takes of the machine's memory now, in KB.
    [[nodiscard]] long ResidentKilobytes() const;

  private:
    pid_t id_ = 0;
    int in_ = -1;
    int out_ = -1;
    bool ended_ = false;
    int status_ = -1;
    std::string read_;
    int lastId_ = 0;
    std::vector<std::string> asked_;
};

}  // namespace lintara::cli
