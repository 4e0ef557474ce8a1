// The text of a settings file: a table per section, a value per key. A value is changed where it stands, so
// that what people wrote around it stays, comments included.
#pragma once

#include "base/text.h"
#include "platform/toml_parser.h"

#include <expected>
#include <optional>
#include <string>
#include <string_view>

#include <toml++/toml.h>

namespace lintara::platform {

class TomlDocument {
  public:
    // Fails when `bytes` are no such text: cut off, in another encoding, or not text at all.
    [[nodiscard]] static std::expected<TomlDocument, TomlError> Parse(std::string bytes);

    // The value as text; nullopt when it is absent. What a person wrote as a number, truth value or date is
    // its text, 5 or true. Fails when a list or a table stands there, or something that is no table bears the
    // section's name.
    [[nodiscard]] std::expected<std::optional<Text>, TomlError> Find(TextView section, TextView key) const;

    // The text of the file in which `key` has that value and all others have what they had. Comments stay,
    // unless people wrote the section in a way that leaves no place for another key (as an inline table, or
    // by dotted keys): then the file is written anew, without comments. Fails where Find fails, and where a
    // file that has to be written anew has a quoted key that the library for TOML writes so that it
    // cannot be read: what people wrote there is not lost.
    [[nodiscard]] std::expected<std::string, TomlError> With(TextView section, TextView key,
                                                             TextView value) const;

    TomlDocument(TomlDocument&&) noexcept = default;
    TomlDocument& operator=(TomlDocument&&) noexcept = default;
    // Values that are copied no longer know where they stand.
    TomlDocument(const TomlDocument&) = delete;
    TomlDocument& operator=(const TomlDocument&) = delete;
    ~TomlDocument() = default;

  private:
    TomlDocument(std::string bytes, toml::table table) : bytes_(std::move(bytes)), table_(std::move(table)) {}

    // The value of that key, where one can stand; null when it is absent.
    [[nodiscard]] std::expected<const toml::node*, TomlError> NodeOf(std::string_view section,
                                                                     std::string_view key) const;

    std::string bytes_;
    toml::table table_;
};

}  // namespace lintara::platform
