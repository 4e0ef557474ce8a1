// Requests that are damaged at random, always in the same way: each is answered, and the endpoint lives on.
#include "tests/cli/endpoint_test.h"
#include "tests/support/random.h"

#include <array>
#include <iterator>

#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using support::Random;

constexpr std::string_view code =
    "Dim a\r\nSub A()\r\n    a = 1\r\n    If a Then a = 2\r\nEnd Sub\r\nProperty Get P()\r\n    P = a\r\nEnd "
    "Property";

// A value of the parameter's type that means something, or does not.
json ValueFor(const MethodParameter& parameter, Random& random) {
    static const std::array<json, 8> odd = {nullptr,          true,           -1,        1.5, "x",
                                            json::array({1}), json::object(), 4294967296};
    static const std::array<json, 8> texts = {"P",       "M", "A", "", "a", "\r\n", "{MemberName}\r\n'",
                                              "On Error"};
    static const std::array<json, 8> numbers = {0, 1, 2, 3, 7, -1, 2147483647, -2147483648};
    if (random.Chance(5)) {
        return random.Pick(odd);
    }
    switch (parameter.type) {
        case ArgumentType::Boolean:
            return random.Chance(50);
        case ArgumentType::Controls:
            return json::array({{{"name", "c"}, {"className", "d"}}});
        case ArgumentType::Integer:
        case ArgumentType::Long:
            return random.Pick(numbers);
        case ArgumentType::Text:
            break;
    }
    if (parameter.name == "project" || parameter.name == "sProject") {
        return random.Chance(90) ? "P" : "Q";
    }
    const bool isComponent = parameter.name == "component" || parameter.name == "sComponent";
    return isComponent && random.Chance(90) ? json("M") : random.Pick(texts);
}

std::string RandomRequest(Random& random) {
    const auto& methods = Methods();
    const MethodInfo& method = methods[random.Below(methods.size())];
    json params = json::object();
    for (const MethodParameter& parameter : method.parameters) {
        if (random.Chance(97)) {
            params[parameter.name] = ValueFor(parameter, random);
        }
    }
    return json{{"jsonrpc", "2.0"}, {"id", random.Below(100)}, {"method", method.name}, {"params", params}}
        .dump();
}

// Bytes are changed, taken out, doubled.
void Damage(std::string& line, Random& random) {
    constexpr std::string_view bytes = "{}[]\",:\\0e-.u\xff\x80\x01 \t";
    for (std::size_t count = random.Below(4); count > 0 && !line.empty(); --count) {
        const std::size_t at = random.Below(line.size());
        switch (random.Below(4)) {
            case 0:
                line[at] = bytes[random.Below(bytes.size())];
                break;
            case 1:
                line.erase(at, 1 + random.Below(5));
                break;
            case 2:
                line.insert(at, line.substr(random.Below(line.size()), random.Below(20)));
                break;
            default:
                line.insert(at, 1, bytes[random.Below(bytes.size())]);
        }
    }
    std::erase(line, '\n');
}

bool IsAnswer(const json& answer) {
    if (answer.is_array()) {
        return std::ranges::all_of(answer, IsAnswer);
    }
    return answer.is_object() && answer.size() == 3 && answer["jsonrpc"] == "2.0" && answer.contains("id") &&
           (answer.contains("result") || answer["error"]["code"].is_number_integer());
}

TEST(ServeRandom, EveryLineIsAnswered) {
    Random random(20240229);
    EndpointTest endpoint;
    int results = 0;
    int errors = 0;
    for (int i = 0; i < 20'000; ++i) {
        if (i % 50 == 0) {
            endpoint.ResultOf("workspace.reset");
            endpoint.MakeModule(std::string(code));
        }
        std::string line = RandomRequest(random);
        if (random.Chance(10)) {
            line = "[" + line + "," + RandomRequest(random) + "]";
        }
        if (random.Chance(40)) {
            Damage(line, random);
        }
        const std::string answer = endpoint.Serve(line);
        if (answer.empty()) {
            continue;  // the id was damaged away
        }
        const json value = json::parse(answer, nullptr, false);
        ASSERT_TRUE(IsAnswer(value)) << line << "\n" << answer;
        (value.contains("result") ? results : errors) += 1;
        ASSERT_EQ(endpoint.session().globals().liveHandles(), 0U) << line;
    }
    EXPECT_GT(results, 2000);
    EXPECT_GT(errors, 2000);
    EXPECT_EQ(endpoint.ErrorOf("lintara.ShowHistory"), 0);
}

}  // namespace
}  // namespace lintara::cli
