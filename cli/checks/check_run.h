// The course of "lintara check".
#pragma once

#include "cli/edits/handler_block.h"
#include "cli/environment.h"
#include "cli/exit_status.h"
#include "cli/options.h"

namespace lintara::cli {

enum class Wish { Open, Present, Absent };

// What the code must have, and what it must not have.
struct Convention {
    Wish handlers = Wish::Open;
    Wish numbers = Wish::Open;
};

struct CheckOptions {
    Convention convention;
    NumberOptions numbers;  // read when numbers are to be present
    WantedHandler handler;  // read when handlers are to be present
    bool strict = false;    // notes are findings
    ReadOptions read;
    ScopeOptions scope;
    OutputOptions output;
};

// Writes nothing but what it finds.
ExitStatus RunCheck(const CheckOptions& options, Environment& environment);

}  // namespace lintara::cli
