#ifndef _WIN32

#include "platform/jet_import.h"

#include "platform/database_kind.h"
#include "platform/jet_reader.h"

#include <charconv>
#include <cstring>
#include <map>
#include <string_view>
#include <utility>

namespace lintara::platform {

namespace fs = std::filesystem;

namespace {

// What the process that reads the file answers: the mark, then "<key> <length>\n<bytes>" for each text, its
// code units as this machine holds them, or the sentence that says what is wrong.
constexpr char textsMark = '+';
constexpr char errorMark = '-';

using Rows = std::map<int, Text>;

std::string Packed(const std::expected<Rows, std::string>& rows) {
    if (!rows) {
        return errorMark + rows.error();
    }
    std::string answer(1, textsMark);
    for (const auto& [key, text] : *rows) {
        const std::string_view bytes(reinterpret_cast<const char*>(text.data()),
                                     text.size() * sizeof(char16_t));
        answer += std::to_string(key) + " " + std::to_string(bytes.size()) + "\n" + std::string(bytes);
    }
    return answer;
}

// The number at the beginning of `answer`, which is taken off with the character that ends it.
std::optional<std::size_t> TakeNumber(std::string_view& answer, char ending) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(answer.data(), answer.data() + answer.size(), number);
    const auto digits = static_cast<std::size_t>(end - answer.data());
    if (error != std::errc() || digits == answer.size() || answer[digits] != ending) {
        return std::nullopt;
    }
    answer.remove_prefix(digits + 1);
    return number;
}

std::unexpected<std::string> Damaged() {
    return std::unexpected(std::string("it is damaged"));
}

// The process that made the answer had read a file that may be hostile, so nothing in it is trusted.
std::expected<JetBuffers, std::string> Unpacked(std::string_view answer) {
    if (answer.starts_with(errorMark)) {
        return std::unexpected(std::string(answer.substr(1)));
    }
    if (!answer.starts_with(textsMark)) {
        return Damaged();
    }
    answer.remove_prefix(1);
    JetBuffers buffers;
    while (!answer.empty()) {
        const auto key = TakeNumber(answer, ' ');
        const auto length = key ? TakeNumber(answer, '\n') : std::nullopt;
        if (!length || *key >= JetBufferCount || *length > answer.size() || *length % sizeof(char16_t) != 0) {
            return Damaged();
        }
        Text text(*length / sizeof(char16_t), u'\0');
        std::memcpy(text.data(), answer.data(), *length);
        buffers[*key] = std::move(text);
        answer.remove_prefix(*length);
    }
    return buffers;
}

std::string SentenceOf(IsolationFailure failure) {
    switch (failure) {
        case IsolationFailure::Died:
            return "it is damaged: reading it failed";
        case IsolationFailure::TimedOut:
            return "it is damaged: reading it came to no end";
        case IsolationFailure::AnswerTooBig:
            return "it holds more text than the buffers can";
        case IsolationFailure::NotStarted:
            break;
    }
    return "it cannot be read: no process could be started for it";
}

}  // namespace

std::expected<JetBuffers, std::string> ReadJetBuffers(const fs::path& file, const IsolationLimits& limits) {
    const Result<DatabaseKind> kind = KindOfDatabase(file);
    if (!kind) {
        return std::unexpected(std::string(kind.error().reason));
    }
    if (*kind != DatabaseKind::Jet) {
        return std::unexpected("it is no code database of the old format");
    }
    if (!HasJetReader()) {
        return std::unexpected(
            "this program was built without what reads the old format; the library is libmdb, Debian's "
            "package "
            "mdbtools-dev");
    }
    const auto answer = CallIsolated([&] { return Packed(ReadJetRows(file)); }, limits);
    if (!answer) {
        return std::unexpected(SentenceOf(answer.error()));
    }
    return Unpacked(*answer);
}

}  // namespace lintara::platform

#endif
