#include "platform/toml_document.h"

#include "platform/settings_text.h"
#include "platform/toml_parser.h"
#include "platform/toml_string.h"

#include <algorithm>
#include <array>
#include <functional>
#include <sstream>
#include <string_view>
#include <utility>

namespace lintara::platform {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string AllValues(const toml::table& table) {
    std::ostringstream out;
    out << toml::toml_formatter(table);
    return std::move(out).str();
}

// The library writes two keys alike that differ in quotes only, so that their text does not tell them apart.
bool SameKeys(const toml::node& a, const toml::node& b) {
    if (const auto* table = a.as_table(), *other = b.as_table(); table != nullptr && other != nullptr) {
        return std::ranges::equal(*table, *other, [](const auto& x, const auto& y) {
            return x.first.str() == y.first.str() && SameKeys(x.second, y.second);
        });
    }
    if (const auto* list = a.as_array(), *other = b.as_array(); list != nullptr && other != nullptr) {
        return std::ranges::equal(*list, *other, SameKeys);
    }
    return a.type() == b.type();
}

bool IsBareKey(std::string_view key) {
    return !key.empty() && std::ranges::all_of(key, [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
               c == '-';
    });
}

std::string Key(std::string_view key) {
    return IsBareKey(key) ? std::string(key) : QuotedKey(key);
}

// The offset of a place that counts lines and characters from 1; the end when the text is shorter.
std::size_t OffsetOf(std::string_view bytes, toml::source_position place) {
    std::size_t at = 0;
    for (toml::source_index line = 1; line < place.line; ++line) {
        const std::size_t end = bytes.find('\n', at);
        if (end == std::string_view::npos) {
            return bytes.size();
        }
        at = end + 1;
    }
    const auto continues = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
    for (toml::source_index column = 1; column < place.column && at < bytes.size(); ++column) {
        ++at;
        while (at < bytes.size() && continues(bytes[at])) {
            ++at;
        }
    }
    return at;
}

// An edit of one setting, in the file's terms. Each of the attempts below is right for files of one shape;
// whether it was is found out by reading the result.
struct Change {
    std::string_view bytes;
    const toml::table& table;
    const std::string& section;
    const std::string& key;
    const std::string& value;

    [[nodiscard]] const toml::table* sectionTable() const { return table[section].as_table(); }
    [[nodiscard]] std::string line() const { return Key(key) + " = " + QuotedValue(value) + "\n"; }
};

std::string InPlace(const Change& change) {
    const toml::table* section = change.sectionTable();
    const toml::node* node = section == nullptr ? nullptr : section->get(change.key);
    if (node == nullptr) {
        return {};
    }
    const std::size_t begin = OffsetOf(change.bytes, node->source().begin);
    const std::size_t end = OffsetOf(change.bytes, node->source().end);
    return std::string(change.bytes.substr(0, begin)) + QuotedValue(change.value) +
           std::string(change.bytes.substr(end));
}

// Behind the section's last value, or behind its header when it has none.
std::string BehindItsSection(const Change& change) {
    const toml::table* section = change.sectionTable();
    if (section == nullptr) {
        return {};
    }
    toml::source_position last = section->source().end;
    for (const auto& [key, node] : *section) {
        const auto* inner = node.as_table();
        if (inner == nullptr || inner->is_inline()) {
            last = std::max(last, node.source().end);
        }
    }
    const std::size_t lineEnd = change.bytes.find('\n', OffsetOf(change.bytes, last));
    if (lineEnd == std::string_view::npos) {
        return std::string(change.bytes) + "\n" + change.line();
    }
    return std::string(change.bytes.substr(0, lineEnd + 1)) + change.line() +
           std::string(change.bytes.substr(lineEnd + 1));
}

std::string WithNewSection(const Change& change) {
    std::string text(change.bytes);
    if (!text.empty()) {
        text += text.ends_with('\n') ? "\n" : "\n\n";
    }
    return text + "[" + Key(change.section) + "]\n" + change.line();
}

// The values as they shall be.
toml::table Target(const Change& change) {
    toml::table target = change.table;
    auto* section = target[change.section].as_table();
    if (section == nullptr) {
        section = target.insert_or_assign(change.section, toml::table()).first->second.as_table();
    }
    section->insert_or_assign(change.key, change.value);
    return target;
}

std::string ValueText(const toml::node& node) {
    if (const auto* number = node.as_integer()) {
        return std::to_string(number->get());
    }
    std::ostringstream out;
    node.visit([&](const auto& value) { out << value; });
    return std::move(out).str();
}

}  // namespace

std::expected<TomlDocument, TomlError> TomlDocument::Parse(std::string bytes) {
    if (bytes.starts_with(byteOrderMark)) {
        bytes.erase(0, byteOrderMark.size());
    }
    auto table = ParseToml(bytes);
    if (!table) {
        return std::unexpected(std::move(table.error()));
    }
    return TomlDocument(std::move(bytes), *std::move(table));
}

std::expected<const toml::node*, TomlError> TomlDocument::NodeOf(std::string_view section,
                                                                 std::string_view key) const {
    const toml::node* sectionNode = table_.get(section);
    if (sectionNode == nullptr) {
        return nullptr;
    }
    const toml::table* values = sectionNode->as_table();
    if (values == nullptr) {
        return std::unexpected(
            TomlError{sectionNode->source().begin.line,
                      "\"" + std::string(section) + "\" is no section here, but another value"});
    }
    const toml::node* node = values->get(key);
    if (node != nullptr && !node->is_value()) {
        return std::unexpected(TomlError{node->source().begin.line,
                                         "\"" + std::string(key) + "\" is a list or a table, not a text"});
    }
    return node;
}

std::expected<std::optional<Text>, TomlError> TomlDocument::Find(TextView section, TextView key) const {
    const auto node = NodeOf(ToSettingsText(section), ToSettingsText(key));
    if (!node) {
        return std::unexpected(node.error());
    }
    if (*node == nullptr) {
        return std::nullopt;
    }
    const auto* text = (*node)->as_string();
    return FromSettingsText(text != nullptr ? text->get() : ValueText(**node));
}

std::expected<std::string, TomlError> TomlDocument::With(TextView section, TextView key,
                                                         TextView value) const {
    const std::string sectionName = ToSettingsText(section);
    const std::string keyName = ToSettingsText(key);
    const std::string stored = ToSettingsText(value);
    if (const auto place = NodeOf(sectionName, keyName); !place) {
        return std::unexpected(place.error());
    }
    const Change change{bytes_, table_, sectionName, keyName, stored};
    const toml::table target = Target(change);
    const std::string wanted = AllValues(target);
    const auto rewritten = [&](const Change&) { return wanted + "\n"; };
    const std::array<std::function<std::string(const Change&)>, 4> attempts = {InPlace, BehindItsSection,
                                                                               WithNewSection, rewritten};
    for (const auto& attempt : attempts) {
        std::string text = attempt(change);
        const auto read = ParseToml(text);
        if (!text.empty() && read && AllValues(*read) == wanted && SameKeys(*read, target)) {
            return text;
        }
    }
    return std::unexpected(TomlError{0, "the setting cannot be written into the settings file"});
}

}  // namespace lintara::platform
