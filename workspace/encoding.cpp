#include "workspace/encoding.h"

#include "workspace/code_page.h"
#include "workspace/single_byte_encoding.h"
#include "workspace/unicode_encoding.h"

#include <algorithm>
#include <bit>
#include <utility>
#include <vector>

namespace lintara::workspace {

namespace {

constexpr CodePageTable Windows1252() {
    CodePageTable table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        table[byte] = static_cast<char16_t>(byte);
    }
    constexpr char16_t upper[] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                  0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
    for (std::size_t i = 0; i < std::size(upper); ++i) {
        table[0x80 + i] = upper[i];
    }
    return table;
}

EncodingPtr Utf8() {
    static const EncodingPtr encoding = std::make_shared<Utf8Encoding>();
    return encoding;
}

EncodingPtr Utf16(bool bigEndian) {
    static const EncodingPtr little = std::make_shared<Utf16Encoding>(false);
    static const EncodingPtr big = std::make_shared<Utf16Encoding>(true);
    return bigEndian ? big : little;
}

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Lower case, without what people write between the parts of such a name.
std::string Simplified(std::string_view name) {
    std::string simple;
    for (const char c : name) {
        if (IsDigit(c)) {
            simple += c;
        } else if (IsLetter(c)) {
            simple += static_cast<char>(c | 0x20);
        }
    }
    return simple;
}

EncodingPtr FindBuiltIn(const std::string& simple) {
    static constexpr std::pair<std::string_view, int> names[] = {
        {"1252", 0},    {"cp1252", 0},  {"windows1252", 0}, {"ansi", 0},   {"65001", 1},
        {"cp65001", 1}, {"utf8", 1},    {"1200", 2},        {"cp1200", 2}, {"utf16le", 2},
        {"utf16", 2},   {"unicode", 2}, {"1201", 3},        {"cp1201", 3}, {"utf16be", 3},
    };
    const auto* const found = std::ranges::find(names, simple, &std::pair<std::string_view, int>::first);
    if (found == std::end(names)) {
        return nullptr;
    }
    switch (found->second) {
        case 0:
            return DefaultEncoding();
        case 1:
            return Utf8();
        default:
            return Utf16(found->second == 3);
    }
}

// The names under which ICU may know the code page of that number.
std::vector<std::string> ConverterNames(const std::string& number) {
    static constexpr std::pair<std::string_view, std::string_view> others[] = {
        {"20932", "euc-jp"}, {"28591", "iso-8859-1"}, {"51932", "euc-jp"},
        {"51949", "euc-kr"}, {"65000", "utf-7"},
    };
    std::vector<std::string> names = {"windows-" + number, "cp" + number, "ibm-" + number};
    for (const auto& [other, name] : others) {
        if (other == number) {
            names.insert(names.begin(), std::string(name));
        }
    }
    return names;
}

}  // namespace

EncodingPtr MemoryEncoding() {
    return Utf16(std::endian::native == std::endian::big);
}

EncodingPtr DefaultEncoding() {
    static const EncodingPtr encoding = std::make_shared<SingleByteEncoding>("windows-1252", Windows1252());
    return encoding;
}

std::expected<EncodingPtr, std::string> FindEncoding(std::string_view codePage) {
    constexpr std::size_t longestName = 60;
    const auto unknown = [&] {
        return std::unexpected("there is no code page \"" + std::string(codePage.substr(0, longestName)) +
                               "\"; give a number or a name, for example 1252, 65001, utf-8 or shift_jis");
    };
    // Nothing but a name may reach ICU, which takes options and paths of files, too.
    const auto isNameCharacter = [](char c) {
        return IsDigit(c) || IsLetter(c) || c == '-' || c == '_' || c == ':' || c == '.';
    };
    if (codePage.empty() || codePage.size() > longestName ||
        !std::ranges::all_of(codePage, isNameCharacter)) {
        return unknown();
    }
    if (EncodingPtr builtIn = FindBuiltIn(Simplified(codePage))) {
        return builtIn;
    }
    std::vector<std::string> names = {std::string(codePage)};
    if (std::ranges::all_of(codePage, IsDigit)) {
        names = ConverterNames(std::string(codePage));
    }
    for (const std::string& name : names) {
        std::expected<EncodingPtr, std::string> encoding = OpenCodePage(name);
        if (!encoding || *encoding != nullptr) {
            return encoding;
        }
    }
    return unknown();
}

std::optional<ByteOrderMark> DetectByteOrderMark(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        return ByteOrderMark{Utf8(), 3};
    }
    if (bytes.starts_with("\xFF\xFE")) {
        return ByteOrderMark{Utf16(false), 2};
    }
    if (bytes.starts_with("\xFE\xFF")) {
        return ByteOrderMark{Utf16(true), 2};
    }
    return std::nullopt;
}

}  // namespace lintara::workspace
