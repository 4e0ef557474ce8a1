#include "platform/database_kind.h"

#include <array>
#include <fstream>
#include <string_view>
#include <system_error>

namespace lintara::platform {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view sqliteSignature("SQLite format 3\0", 16);
// Both behind four bytes of a version number.
constexpr std::size_t jetSignatureAt = 4;
constexpr std::string_view jetSignatures[] = {"Standard Jet DB", "Standard ACE DB"};

DatabaseKind KindOf(std::string_view beginning) {
    if (beginning.empty() || beginning.starts_with(sqliteSignature)) {
        return DatabaseKind::Sqlite;
    }
    for (const std::string_view signature : jetSignatures) {
        if (beginning.size() > jetSignatureAt && beginning.substr(jetSignatureAt).starts_with(signature)) {
            return DatabaseKind::Jet;
        }
    }
    return DatabaseKind::Other;
}

}  // namespace

Result<DatabaseKind> KindOfDatabase(const fs::path& file) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (status.type() == fs::file_type::none) {
        return Failure(ErrorNumber::HostFailure, error == std::errc::permission_denied
                                                     ? "access to its folder is denied"
                                                     : "it cannot be reached");
    }
    if (!fs::exists(status)) {
        return Failure(ErrorNumber::HostFailure, "there is no such file");
    }
    // Opening a pipe or a device can wait or have effects.
    if (!fs::is_regular_file(status)) {
        return Failure(ErrorNumber::HostFailure, "it is a folder or a device, not a file");
    }
    std::array<char, 32> beginning{};
    std::ifstream stream(file, std::ios::binary);
    stream.read(beginning.data(), beginning.size());
    if (stream.bad() || (!stream && !stream.eof())) {
        return Failure(ErrorNumber::HostFailure, "it cannot be read");
    }
    return KindOf({beginning.data(), static_cast<std::size_t>(stream.gcount())});
}

}  // namespace lintara::platform
