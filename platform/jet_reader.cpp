#include "platform/jet_reader.h"

#ifdef LINTARA_HAS_LIBMDB

#include "base/utf8.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <mdbtools.h>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace lintara::platform {

namespace {

// The longest text that is read, in bytes.
constexpr std::size_t longestText = std::size_t{16} << 20;

struct CloseFile {
    void operator()(MdbHandle* file) const { mdb_close(file); }
};
struct FreeBytes {
    // As the library wants it.
    void operator()(void* bytes) const { std::free(bytes); }  // NOLINT(cppcoreguidelines-no-malloc)
};
struct FreeTable {
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};

// A column's value in the current row, as the library writes it: a text that ends in a NUL.
struct BoundColumn {
    std::vector<char> bytes = std::vector<char>(longestText + 1);
    int length = 0;

    [[nodiscard]] std::string_view text() const {
        return {bytes.data(), static_cast<std::size_t>(std::max(length, 0))};
    }
};

std::unexpected<std::string> Damaged() {
    return std::unexpected(std::string("it is damaged, or of a version that cannot be read"));
}

// Its values are written to `values` whenever a row is fetched. Null when there is no such column.
MdbColumn* Bind(MdbTableDef* table, std::string name, BoundColumn& values) {
    const int number = mdb_bind_column_by_name(table, name.data(), values.bytes.data(), &values.length);
    return number < 1 ? nullptr : static_cast<MdbColumn*>(g_ptr_array_index(table->columns, number - 1));
}

// Texts of the newer versions: UTF-16, or a form behind a mark of two bytes in which a zero switches between
// one byte and two for each character. The library's own conversion loses what is no UCS-2.
Text DecodeUnicode(std::string_view bytes) {
    const bool isPacked = bytes.starts_with("\xFF\xFE");
    bool oneByteEach = isPacked;
    Text text;
    for (std::size_t at = isPacked ? 2 : 0; at < bytes.size();) {
        const auto low = static_cast<unsigned char>(bytes[at]);
        if (isPacked && low == 0) {
            oneByteEach = !oneByteEach;
            ++at;
        } else if (oneByteEach) {
            text += static_cast<char16_t>(low);
            ++at;
        } else if (at + 1 < bytes.size()) {
            text += static_cast<char16_t>(low | static_cast<unsigned char>(bytes[at + 1]) << 8);
            at += 2;
        } else {
            break;
        }
    }
    return text;
}

// The text of a memo, whose bytes stand in the row or elsewhere in the file.
Text MemoText(MdbHandle* file, MdbColumn* column, const BoundColumn& value) {
    std::size_t size = 0;
    const std::unique_ptr<void, FreeBytes> bytes(value.length > 0 ? mdb_ole_read_full(file, column, &size)
                                                                  : nullptr);
    if (bytes == nullptr) {
        return {};
    }
    const std::string_view stored(static_cast<const char*>(bytes.get()), size);
    if (!IS_JET3(file)) {
        return DecodeUnicode(stored);
    }
    std::vector<char> utf8(4 * size + 1);
    const int length = mdb_unicode2ascii(file, stored.data(), size, utf8.data(), utf8.size());
    return FromUtf8({utf8.data(), static_cast<std::size_t>(std::max(length, 0))});
}

std::optional<int> KeyIn(std::string_view text) {
    int key = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), key);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(key) : std::nullopt;
}

}  // namespace

bool HasJetReader() {
    return true;
}

std::expected<std::map<int, Text>, std::string> ReadJetRows(const std::filesystem::path& file) {
    // The library's own settings, which have no say here.
    ::unsetenv("MDBICONV");
    ::unsetenv("MDBOPTS");
    const std::unique_ptr<MdbHandle, CloseFile> opened(mdb_open(file.c_str(), MDB_NOFLAGS));
    if (!opened) {
        return Damaged();
    }
    mdb_set_bind_size(opened.get(), longestText + 1);
    if (mdb_read_catalog(opened.get(), MDB_TABLE) == nullptr) {
        return Damaged();
    }
    std::string name = "CPBuffers";
    const std::unique_ptr<MdbTableDef, FreeTable> table(
        mdb_read_table_by_name(opened.get(), name.data(), MDB_TABLE));
    if (!table) {
        return std::unexpected("it has no table CPBuffers");
    }
    if (mdb_read_columns(table.get()) == nullptr) {
        return Damaged();
    }
    BoundColumn key;
    BoundColumn code;
    MdbColumn* const codeColumn = Bind(table.get(), "Code", code);
    if (Bind(table.get(), "Key", key) == nullptr || codeColumn == nullptr) {
        return std::unexpected("its table CPBuffers lacks the field Key or Code");
    }
    const bool isMemo = codeColumn->col_type == MDB_MEMO;
    if (isMemo) {
        codeColumn->col_type = MDB_OLE;  // as bytes
    }
    std::map<int, Text> texts;
    while (mdb_fetch_row(table.get()) != 0) {
        if (const auto number = KeyIn(key.text()); number && *number >= 0 && *number <= 9) {
            texts.try_emplace(*number,
                              isMemo ? MemoText(opened.get(), codeColumn, code) : FromUtf8(code.text()));
        }
    }
    return texts;
}

}  // namespace lintara::platform

#else

namespace lintara::platform {

bool HasJetReader() {
    return false;
}

std::expected<std::map<int, Text>, std::string> ReadJetRows(const std::filesystem::path&) {
    return std::unexpected("this program was built without what reads the old format");
}

}  // namespace lintara::platform

#endif
