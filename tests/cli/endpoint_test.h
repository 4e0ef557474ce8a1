// An endpoint in process, for tests that ask it line by line.
#pragma once

#include "cli/serve/endpoint.h"
#include "cli/serve/method.h"
#include "cli/serve/session.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace lintara::cli {

using nlohmann::json;

class EndpointTest {
  public:
    // What stands on standard output after the line, without its line feed; "" when there is no answer.
    std::string Serve(std::string_view line) {
        out_.text.clear();
        endpoint_.Serve(line);
        if (out_.text.empty()) {
            return {};
        }
        EXPECT_EQ(out_.text.find('\n'), out_.text.size() - 1) << "an answer is one line";
        return out_.text.substr(0, out_.text.size() - 1);
    }

    // The answer to a request.
    json Ask(const std::string& method, const json& params = json::object()) {
        return json::parse(
            Serve(json{{"jsonrpc", "2.0"}, {"id", 1}, {"method", method}, {"params", params}}.dump()));
    }
    // Its result, or its error.
    json ResultOf(const std::string& method, const json& params = json::object()) {
        const json answer = Ask(method, params);
        return answer.contains("result") ? answer["result"] : answer["error"];
    }
    int ErrorOf(const std::string& method, const json& params = json::object()) {
        const json answer = Ask(method, params);
        return answer.contains("error") ? answer["error"]["code"].get<int>() : 0;
    }

    // A project "P" with the module "M", which is not shown in a code window.
    void MakeModule(const std::string& text) {
        EXPECT_EQ(ResultOf("workspace.newProject", {{"name", "P"}}), json::object());
        EXPECT_EQ(ResultOf("workspace.addComponent",
                           {{"project", "P"}, {"name", "M"}, {"type", 1}, {"text", text}}),
                  json::object());
    }
    std::string TextOfModule() {
        return ResultOf("codemodule.Text", {{"project", "P"}, {"component", "M"}})["value"];
    }

    [[nodiscard]] Session& session() { return session_; }

  private:
    Session session_ = Session::Isolated({}, nullptr);
    StringSink out_;
    Endpoint endpoint_{session_, out_};
};

}  // namespace lintara::cli
