#include "cli/project/text_source.h"

#include "cli/output/terminal_text.h"
#include "workspace/encoding.h"
#include "workspace/limits.h"
#include "workspace/read_file.h"

#include <utility>

namespace lintara::cli {

Text DecodeText(std::string_view bytes) {
    Text text;
    if (const auto mark = workspace::DetectByteOrderMark(bytes)) {
        mark->encoding->Decode(bytes.substr(mark->length), text);
        return text;
    }
    text = workspace::FromUtf8(bytes);
    if (workspace::ToUtf8(text) != bytes) {
        workspace::DefaultEncoding()->Decode(bytes, text);
    }
    return text;
}

Text WithLineBreaks(TextView text) {
    Text result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u'\r' && text[i] != u'\n') {
            result += text[i];
            continue;
        }
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
            ++i;
        }
        result += u"\r\n";
    }
    return result;
}

Text TextOfFile(std::string_view bytes) {
    Text text = WithLineBreaks(DecodeText(bytes));
    if (text.ends_with(u"\r\n")) {
        text.resize(text.size() - 2);
    }
    return text;
}

namespace {

std::expected<Text, std::string> ReadFileText(const std::filesystem::path& path) {
    const auto bytes = workspace::ReadFileOrPipe(path, workspace::largestCode);
    if (!bytes) {
        return std::unexpected(PrintablePath(path) + ": " + bytes.error());
    }
    return TextOfFile(*bytes);
}

constexpr std::string_view TooLarge = "is larger than 1 MiB, too large for a piece of code";
static_assert(workspace::largestCode == 1 << 20);

}  // namespace

std::optional<std::string> ProblemOfSize(TextView code) {
    return std::cmp_greater(code.size(), workspace::largestCode) ? std::optional(std::string(TooLarge))
                                                                 : std::nullopt;
}

TextSource SourceFromArgument(std::string_view argument) {
    if (argument == "-") {
        return StandardInput{};
    }
    return std::filesystem::path(argument);
}

std::expected<Text, std::string> ReadText(const TextSource& source, Source& standardInput) {
    if (const Text* text = std::get_if<Text>(&source)) {
        return *text;
    }
    if (const auto* path = std::get_if<std::filesystem::path>(&source)) {
        return ReadFileText(*path);
    }
    const auto bytes = standardInput.ReadAll();
    if (!bytes) {
        return std::unexpected(bytes.error());
    }
    if (std::cmp_greater(bytes->size(), workspace::largestCode)) {
        return std::unexpected("standard input " + std::string(TooLarge));
    }
    return TextOfFile(*bytes);
}

}  // namespace lintara::cli
