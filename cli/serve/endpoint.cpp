#include "cli/serve/endpoint.h"

#include "cli/output/json_text.h"
#include "cli/serve/arguments.h"
#include "cli/serve/json_reader.h"
#include "cli/serve/request_error.h"

#include <exception>
#include <new>
#include <optional>
#include <string>
#include <utility>

namespace lintara::cli {
namespace {

constexpr std::string_view nullId = "null";

std::string CompactText(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

// `id` is JSON already.
std::string Answer(std::string_view id, std::string_view kind, const Json& value) {
    std::string answer = R"({"jsonrpc":"2.0","id":)";
    answer += id;
    answer += ",\"";
    answer += kind;
    answer += "\":";
    answer += CompactText(value);
    answer += '}';
    return answer;
}

std::string ErrorAnswer(std::string_view id, ErrorCode code, std::string_view message) {
    return Answer(id, "error", {{"code", static_cast<int>(code)}, {"message", message}});
}

// An id as it came; none when it is of a type that no id has.
std::optional<std::string> IdText(const JsonValue& id) {
    if (const auto* number = id.As<JsonNumber>()) {
        return number->text;
    }
    if (const auto* text = id.As<std::string>()) {
        return CompactText(*text);
    }
    return id.As<std::nullptr_t>() != nullptr ? std::optional<std::string>(nullId) : std::nullopt;
}

// A request whose form is right.
struct Request {
    std::string id;
    bool isNotification = false;
    const std::string* method = nullptr;
    const JsonValue* params = nullptr;
};

// What is wrong with the form; `request.id` is as far as it could be read.
std::optional<std::string_view> ReadRequest(const JsonValue& value, Request& request) {
    request.id = nullId;
    const auto* object = value.As<JsonObject>();
    if (object == nullptr) {
        return "a request is an object";
    }
    const JsonValue* id = FindMember(*object, "id");
    request.isNotification = id == nullptr;
    if (id != nullptr) {
        auto text = IdText(*id);
        if (!text) {
            return "\"id\" has to be a string, a number or null";
        }
        request.id = *std::move(text);
    }
    const JsonValue* version = FindMember(*object, "jsonrpc");
    const auto* versionText = version == nullptr ? nullptr : version->As<std::string>();
    if (versionText == nullptr || *versionText != "2.0") {
        return "\"jsonrpc\" has to be \"2.0\"";
    }
    const JsonValue* method = FindMember(*object, "method");
    request.method = method == nullptr ? nullptr : method->As<std::string>();
    if (request.method == nullptr) {
        return "\"method\" has to be a string";
    }
    request.params = FindMember(*object, "params");
    const bool structured = request.params == nullptr || request.params->As<JsonObject>() != nullptr ||
                            request.params->As<JsonArray>() != nullptr;
    return structured ? std::nullopt
                      : std::optional<std::string_view>("\"params\" has to be an object: arguments by name");
}

Json Perform(Session& session, const Request& request) {
    const MethodInfo* method = FindMethod(*request.method);
    if (method == nullptr) {
        constexpr std::size_t longest = 100;
        throw RequestError(ErrorCode::UnknownMethod,
                           "there is no method \"" + request.method->substr(0, longest) + "\"");
    }
    return method->run(session, Arguments(*method, request.params));
}

std::string AnswerTo(Session& session, const Request& request) {
    try {
        return Answer(request.id, "result", Perform(session, request));
    } catch (const RequestError& error) {
        return ErrorAnswer(request.id, error.code(), error.what());
    } catch (const std::bad_alloc&) {
        return ErrorAnswer(request.id, ErrorCode::Internal, "there is not enough memory");
    } catch (const std::exception& error) {
        return ErrorAnswer(request.id, ErrorCode::Internal, error.what());
    }
}

// "" when there is none.
std::string AnswerTo(Session& session, const JsonValue& value) {
    Request request;
    if (const auto wrong = ReadRequest(value, request)) {
        return ErrorAnswer(request.id, ErrorCode::NoRequest,
                           "the line holds no request: " + std::string(*wrong));
    }
    std::string answer = AnswerTo(session, request);
    return request.isNotification ? std::string() : answer;
}

// Answers to one line, gathered in pieces that are worth writing.
class LineWriter {
  public:
    explicit LineWriter(Sink& out) : out_(out) {}

    void Add(std::string_view text) {
        constexpr std::size_t enough = 64 * 1024;
        text_ += text;
        if (text_.size() >= enough) {
            out_.Write(text_);
            text_.clear();
        }
    }
    void End() {
        text_ += '\n';
        out_.Write(text_);
    }
    [[nodiscard]] bool failed() const { return out_.failed(); }

  private:
    Sink& out_;
    std::string text_;
};

void ServeOne(Session& session, const JsonValue& request, Sink& out) {
    std::string answer = AnswerTo(session, request);
    if (!answer.empty()) {
        answer += '\n';
        out.Write(answer);
    }
}

void ServeBatch(Session& session, const JsonArray& batch, Sink& out) {
    LineWriter line(out);
    bool any = false;
    for (const JsonValue& request : batch) {
        const std::string answer = AnswerTo(session, request);
        if (!answer.empty()) {
            line.Add(any ? "," : "[");
            line.Add(answer);
            any = true;
        }
        if (line.failed()) {
            return;
        }
    }
    if (any) {
        line.Add("]");
        line.End();
    }
}

}  // namespace

void Endpoint::Serve(std::string_view line) {
    const auto refuse = [&](ErrorCode code, std::string_view message) {
        out_.Write(ErrorAnswer(nullId, code, message) + '\n');
    };
    try {
        const auto value = ReadJson(line);
        if (!value) {
            return refuse(ErrorCode::MalformedLine, value.error());
        }
        const auto* batch = value->As<JsonArray>();
        if (batch == nullptr) {
            return ServeOne(session_, *value, out_);
        }
        if (batch->empty()) {
            return refuse(ErrorCode::NoRequest, "the line holds no request: the batch is empty");
        }
        ServeBatch(session_, *batch, out_);
    } catch (const std::bad_alloc&) {
        refuse(ErrorCode::Internal, "there is not enough memory");
    }
}

void Endpoint::RefuseLongLine(std::size_t longest) {
    const std::string message =
        "the line is longer than " + std::to_string(longest) + " bytes, the most that is read";
    out_.Write(ErrorAnswer(nullId, ErrorCode::NoRequest, message) + '\n');
}

}  // namespace lintara::cli
