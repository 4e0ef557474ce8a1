// Any lines to the automation endpoint: each is answered by one line of JSON or by none, no handle is left
// behind, and the next request is served.
#include "cli/serve/endpoint.h"

#include "cli/serve/session.h"
#include "cli/streams.h"
#include "fuzz/input.h"
#include "fuzz/require.h"

#include <algorithm>
#include <ranges>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace lintara::fuzz {
namespace {

constexpr std::string_view preparation =
    R"({"jsonrpc":"2.0","id":1,"method":"workspace.newProject","params":{"name":"P"}}
{"jsonrpc":"2.0","id":1,"method":"workspace.addComponent","params":{"project":"P","name":"M","type":1,"text":"Dim a\r\nSub A()\r\n    a = 1\r\nEnd Sub\r\nProperty Get P()\r\n    P = a\r\nEnd Property"}}
{"jsonrpc":"2.0","id":1,"method":"ide.activate","params":{"project":"P","component":"M","startLine":3,"startColumn":5,"endLine":3,"endColumn":10}})";

// Whether a request or a batch asks for files of the machine, which a fuzzer has no business with.
bool AsksForFiles(const nlohmann::json& request) {
    if (request.is_array()) {
        return std::ranges::any_of(request, AsksForFiles);
    }
    if (!request.is_object() || !request.contains("method")) {
        return false;
    }
    return request["method"] == "workspace.open" || request["method"] == "workspace.save";
}

class Client {
  public:
    void Send(std::string_view line) {
        out_.text.clear();
        endpoint_.Serve(line);
        Require(session_.globals().liveHandles() == 0, "every handle is given back", line);
        if (out_.text.empty()) {
            return;
        }
        Require(out_.text.find('\n') == out_.text.size() - 1, "an answer is one line", out_.text);
        Require(nlohmann::json::accept(out_.text), "an answer is JSON", out_.text);
    }

    void IsAlive() {
        Send(R"({"jsonrpc":"2.0","id":7,"method":"workspace.reset"})");
        Require(out_.text.contains("\"result\""), "the next request is served", out_.text);
    }

  private:
    cli::Session session_ = cli::Session::Isolated({}, nullptr);
    cli::StringSink out_;
    cli::Endpoint endpoint_{session_, out_};
};

void SendLines(Client& client, std::string_view lines) {
    for (const auto part : lines | std::views::split('\n')) {
        const std::string_view line(part);
        if (!AsksForFiles(nlohmann::json::parse(line, nullptr, false))) {
            client.Send(line);
        }
    }
}

}  // namespace
}  // namespace lintara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    lintara::fuzz::Client client;
    lintara::fuzz::SendLines(client, lintara::fuzz::preparation);
    lintara::fuzz::Input input(data, size);
    lintara::fuzz::SendLines(client, input.Rest());
    client.IsAlive();
    return 0;
}
