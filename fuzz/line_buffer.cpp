// Edits of a line buffer against a plain vector of lines, over files of every encoding and line ending.
#include "workspace/line_buffer.h"

#include "fuzz/input.h"
#include "fuzz/require.h"
#include "workspace/encoding.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <vector>

namespace lintara::fuzz {
namespace {

constexpr std::array codePages = {"1252", "932", "1200", "65001", "1254"};

// A text without a line break.
Text OneLine(Input& input) {
    Text text = input.ShortText(40);
    std::erase_if(text, [](char16_t c) { return c == u'\r' || c == u'\n'; });
    return text;
}

void Edit(Input& input, workspace::LineBuffer& buffer, std::vector<Text>& lines) {
    const auto count = static_cast<std::int32_t>(lines.size());
    const auto index = input.Between<std::int32_t>(0, count);
    const auto at = lines.begin() + index;
    const Line line{index + 1};
    if (input.Flag() || index == count) {
        std::vector<Text> texts(input.Between<std::size_t>(0, 3));
        std::ranges::generate(texts, [&] { return OneLine(input); });
        const std::vector<TextView> views(texts.begin(), texts.end());
        buffer.Insert(line, views);
        lines.insert(at, texts.begin(), texts.end());
    } else if (input.Flag()) {
        const auto some = input.Between<std::int32_t>(0, std::min(count - index, 4));
        buffer.Delete(line, some);
        lines.erase(at, at + some);
    } else {
        *at = OneLine(input);
        buffer.Replace(line, *at);
    }
}

void CheckLines(const workspace::LineBuffer& buffer, const std::vector<Text>& lines) {
    Require(buffer.count() == static_cast<std::int32_t>(lines.size()), "the buffer has as many lines");
    Text text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Line line{static_cast<std::int32_t>(i) + 1};
        buffer.Read(line, text);
        RequireSame(text, lines[i], "a line reads as it was written");
        Require(buffer.EndsInUnderscore(line) || !text.ends_with(u'_'), "an underscore at the end is seen");
    }
}

// Lines that the IDE would hide when it opens the file again.
bool MayBeHidden(const std::vector<Text>& lines) {
    return std::ranges::any_of(lines, [](const Text& line) { return line.starts_with(u"Attribute "); });
}

void CheckWritten(const workspace::LineBuffer& buffer, const workspace::EncodingPtr& encoding,
                  const std::vector<Text>& lines) {
    if (buffer.FirstUnencodable() || MayBeHidden(lines)) {
        return;
    }
    std::string bytes;
    buffer.AppendBytes(bytes);
    const workspace::LineBuffer again(bytes, 0, encoding);
    // An empty last line without an ending is no line of a file.
    std::vector<Text> expected = lines;
    if (again.count() + 1 == static_cast<std::int32_t>(lines.size()) && lines.back().empty()) {
        expected.pop_back();
    }
    CheckLines(again, expected);
}

void CheckBuffer(Input& input) {
    const auto encoding = *workspace::FindEncoding(input.Pick(codePages));
    std::string file;
    Require(encoding->Encode(u"", file), "nothing can be encoded");
    for (auto pieces = input.Between(0, 8); pieces > 0; --pieces) {
        const Text line =
            OneLine(input) + std::array{u"\r\n", u"\n", u"\r"}[input.Between<std::size_t>(0, 2)];
        if (!encoding->Encode(line, file)) {
            return;
        }
    }
    workspace::LineBuffer buffer(file, 0, encoding);
    std::vector<Text> lines(static_cast<std::size_t>(buffer.count()));
    for (std::size_t i = 0; i < lines.size(); ++i) {
        buffer.Read(Line{static_cast<std::int32_t>(i) + 1}, lines[i]);
    }
    std::string unedited;
    buffer.AppendBytes(unedited);
    RequireSame(unedited, file, "what nobody edits is written as it was");
    while (!input.empty()) {
        Edit(input, buffer, lines);
        CheckLines(buffer, lines);
        CheckWritten(buffer, encoding, lines);
    }
}

}  // namespace
}  // namespace lintara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    lintara::fuzz::Input input(data, size);
    lintara::fuzz::CheckBuffer(input);
    return 0;
}
