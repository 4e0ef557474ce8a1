// What a fuzz target states about its subject.
#pragma once

#include "base/text.h"
#include "base/utf8.h"

#include <cstdio>
#include <cstdlib>
#include <source_location>
#include <string>
#include <string_view>

namespace lintara::fuzz {

// Ends the process when the statement does not hold, so that the fuzzer keeps the input.
inline void Require(bool holds, std::string_view statement, std::string_view details = {},
                    std::source_location where = std::source_location::current()) {
    if (!holds) {
        std::fprintf(stderr, "%s:%u: does not hold: %.*s\n%.*s\n", where.file_name(),
                     static_cast<unsigned>(where.line()), static_cast<int>(statement.size()),
                     statement.data(), static_cast<int>(details.size()), details.data());
        std::abort();
    }
}

inline void RequireSame(TextView actual, TextView expected, std::string_view statement,
                        std::source_location where = std::source_location::current()) {
    if (actual != expected) {
        Require(false, statement, "is        " + ToUtf8(actual) + "\nexpected  " + ToUtf8(expected), where);
    }
}

inline void RequireSame(std::string_view actual, std::string_view expected, std::string_view statement,
                        std::source_location where = std::source_location::current()) {
    if (actual != expected) {
        Require(false, statement, "is        " + std::string(actual) + "\nexpected  " + std::string(expected),
                where);
    }
}

}  // namespace lintara::fuzz
