#include "tests/support/jet_file.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <optional>
#include <utility>
#include <vector>

namespace lintara::support {
namespace {

constexpr std::size_t pageSize = 4096;
constexpr std::size_t longestInline = 800;             // bytes of a text that stands in its row
constexpr std::size_t longestOnPage = pageSize - 100;  // and on a page of its own

enum class Type : std::uint8_t { Integer = 3, Long = 4, Text = 10, Ole = 11, Memo = 12 };

std::string Number(std::uint64_t value, std::size_t bytes) {
    std::string result;
    for (std::size_t i = 0; i < bytes; ++i) {
        result += static_cast<char>(value >> (8 * i) & 0xFF);
    }
    return result;
}

void Put(std::string& page, std::size_t at, std::string_view bytes) {
    page.replace(at, bytes.size(), bytes);
}

std::string Unicode(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += Number(unit, 2);
    }
    return bytes;
}

// The cipher that the format hides a part of its first page with.
std::string Hidden(std::string_view key, std::string bytes) {
    std::array<std::uint8_t, 256> state{};
    std::iota(state.begin(), state.end(), std::uint8_t{0});
    std::uint8_t j = 0;
    for (std::size_t i = 0; i < state.size(); ++i) {
        j = static_cast<std::uint8_t>(j + state[i] + static_cast<std::uint8_t>(key[i % key.size()]));
        std::swap(state[i], state[j]);
    }
    std::uint8_t i = 0;
    j = 0;
    for (char& byte : bytes) {
        ++i;
        j = static_cast<std::uint8_t>(j + state[i]);
        std::swap(state[i], state[j]);
        byte = static_cast<char>(static_cast<std::uint8_t>(byte) ^
                                 state[static_cast<std::uint8_t>(state[i] + state[j])]);
    }
    return bytes;
}

std::string FirstPage() {
    std::string page(pageSize, '\0');
    Put(page, 0, std::string_view("\0\1\0\0Standard Jet DB\0\1", 21));
    Put(page, 0x18, Hidden("\xC7\xDA\x39\x6B", std::string(128, '\0')));
    return page;
}

struct Field {
    std::u16string name;
    Type type;
    std::size_t length = 0;

    [[nodiscard]] bool isFixed() const { return type == Type::Integer || type == Type::Long; }
};
using Fields = std::vector<Field>;

std::string FieldEntry(const Field& field, std::size_t number, std::size_t fixedAt, std::size_t variable) {
    std::string entry(25, '\0');
    Put(entry, 0, Number(static_cast<std::uint8_t>(field.type), 1));
    Put(entry, 5, Number(number, 2));
    Put(entry, 7, Number(field.isFixed() ? 0 : variable, 2));
    Put(entry, 9, Number(number, 2));
    Put(entry, 15, Number(field.isFixed() ? 3 : 2, 1));
    Put(entry, 21, Number(field.isFixed() ? fixedAt : 0, 2));
    Put(entry, 23, Number(field.length, 2));
    return entry;
}

// `usage` is the row of the map of the table's pages, on page 3.
std::string TablePage(const Fields& fields, std::size_t rows, std::size_t usage, char kind) {
    std::string page(pageSize, '\0');
    Put(page, 0, "\2\1");
    Put(page, 16, Number(rows, 4));
    page[40] = kind;
    const auto variables =
        std::count_if(fields.begin(), fields.end(), [](const Field& field) { return !field.isFixed(); });
    Put(page, 41, Number(fields.size(), 2));
    Put(page, 43, Number(static_cast<std::uint64_t>(variables), 2));
    Put(page, 45, Number(fields.size(), 2));
    Put(page, 55, Number(3 << 8 | usage, 4));
    Put(page, 59, Number(3 << 8 | (usage + 1), 4));
    std::string entries;
    std::string names;
    std::size_t fixedAt = 0;
    std::size_t variable = 0;
    for (std::size_t number = 0; number < fields.size(); ++number) {
        const Field& field = fields[number];
        entries += FieldEntry(field, number, fixedAt, variable);
        fixedAt += field.isFixed() ? field.length : 0;
        variable += field.isFixed() ? 0 : 1;
        names += Number(2 * field.name.size(), 2) + Unicode(field.name);
    }
    Put(page, 63, entries + names);
    Put(page, 8, Number(63 + entries.size() + names.size(), 4));
    return page;
}

// None is Null.
using Values = std::vector<std::optional<std::string>>;

std::string Row(const Fields& fields, const Values& values) {
    std::string row = Number(fields.size(), 2);
    std::uint64_t present = 0;
    std::vector<std::size_t> offsets;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        present |= values[i] ? std::uint64_t{1} << i : 0;
        row += fields[i].isFixed() ? *values[i] : "";
    }
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (!fields[i].isFixed()) {
            offsets.push_back(row.size());
            row += values[i].value_or("");
        }
    }
    row += Number(row.size(), 2);
    std::for_each(offsets.rbegin(), offsets.rend(), [&](std::size_t offset) { row += Number(offset, 2); });
    return row + Number(offsets.size(), 2) + Number(present, (fields.size() + 7) / 8);
}

std::string DataPage(std::string_view owner, const std::vector<std::string>& rows) {
    std::string page(pageSize, '\0');
    Put(page, 0, "\1\1");
    Put(page, 4, owner);
    Put(page, 12, Number(rows.size(), 2));
    std::size_t end = pageSize;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        end -= rows[i].size();
        Put(page, end, rows[i]);
        Put(page, 14 + 2 * i, Number(end, 2));
    }
    Put(page, 2, Number(end - 14 - 2 * rows.size(), 2));
    return page;
}

// A map in which the bits of these pages, all below 512, are set.
std::string PageMap(std::initializer_list<std::size_t> pages) {
    std::string map(5 + 64, '\0');
    for (const std::size_t page : pages) {
        map[5 + page / 8] = static_cast<char>(map[5 + page / 8] | 1 << page % 8);
    }
    return map;
}

class Writer {
  public:
    explicit Writer(const JetTable& table) : table_(table) {}

    std::string Write() {
        const Fields catalog = {{u"Id", Type::Long, 4},
                                {u"Type", Type::Integer, 2},
                                {u"Flags", Type::Long, 4},
                                {u"Name", Type::Text, 510},
                                {u"LvProp", Type::Ole}};
        const Fields buffers = {{table_.keyField, Type::Long, 4}, {table_.codeField, Type::Memo}};
        std::vector<std::string> rows;
        for (const auto& [key, code] : table_.codeByKey) {
            rows.push_back(Row(buffers, {Number(static_cast<std::uint32_t>(key), 4), Memo(Unicode(code))}));
        }
        for (const auto& [key, bytes] : table_.bytesByKey) {
            rows.push_back(Row(buffers, {Number(static_cast<std::uint32_t>(key), 4), Memo(bytes)}));
        }
        const std::string entry =
            Row(catalog, {Number(5, 4), Number(1, 2), Number(0, 4), Unicode(table_.name), std::nullopt});
        return FirstPage() + std::string(pageSize, '\0') + TablePage(catalog, 1, 0, 'S') +
               DataPage({}, {PageMap({4}), PageMap({}), PageMap({6}), PageMap({})}) +
               DataPage(Number(2, 4), {entry}) + TablePage(buffers, rows.size(), 2, 'N') +
               DataPage(Number(5, 4), rows) + longTexts_;
    }

  private:
    static constexpr std::size_t firstLongPage = 7;

    // What stands in the row for the text.
    std::string Memo(const std::string& bytes) {
        if (bytes.size() <= longestInline) {
            return Number(bytes.size() | 0x80000000U, 4) + Number(0, 8) + bytes;
        }
        if (bytes.size() <= longestOnPage) {
            return Number(bytes.size() | 0x40000000U, 4) + Number(AddLongPage(bytes), 4) + Number(0, 4);
        }
        // From the last piece to the first, each with the place of the next one in front.
        std::uint64_t next = 0;
        for (std::size_t at = (bytes.size() - 1) / longestOnPage * longestOnPage;; at -= longestOnPage) {
            next = AddLongPage(Number(next, 4) + bytes.substr(at, longestOnPage));
            if (at == 0) {
                return Number(bytes.size(), 4) + Number(next, 4) + Number(0, 4);
            }
        }
    }

    // The place of its only row.
    std::uint64_t AddLongPage(const std::string& row) {
        const std::size_t page = firstLongPage + longTexts_.size() / pageSize;
        longTexts_ += DataPage("LVAL", {row});
        return page << 8;
    }

    const JetTable& table_;
    std::string longTexts_;
};

}  // namespace

std::string JetFile(const JetTable& table) {
    return Writer(table).Write();
}

}  // namespace lintara::support
