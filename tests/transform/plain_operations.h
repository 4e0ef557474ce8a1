// The operations on error handlers, custom code and text, written down once more as plainly as can be: one
// line per statement, each variable with the language's initial value, every failing statement skipped.
// Tests compare what the library does with a faulty host with what these do. They ask for ranges, kind words
// and expanded templates where the library does, and share nothing else with it.
#pragma once

#include "base/text.h"
#include "hostmodel/globals.h"

#include <cstdint>
#include <string>

namespace lintara::support {

struct PlainSearch {
    TextView component;
    TextView sought;
    TextView replacement;
    std::int32_t startLine = 1;
    std::int32_t endLine = 1;
    bool wholeWord = false;
    bool goThroughDelete = false;
};

// Without any guard against loops that do not end: gives up after `mostPasses`.
bool PlainSearchAndReplace(hostmodel::Globals& globals, const PlainSearch& search, int mostPasses = 100000);

void PlainInsertHandler(hostmodel::Globals& globals, TextView project, TextView component, TextView procedure,
                        TextView label, TextView code);
void PlainRemoveHandler(hostmodel::Globals& globals, TextView project, TextView component, TextView procedure,
                        TextView label);
void PlainInsertCode(hostmodel::Globals& globals, TextView project, TextView component, TextView procedure,
                     TextView code, bool noDelimiters, int where, std::int32_t line, int id);
void PlainRemoveCode(hostmodel::Globals& globals, TextView project, TextView component, TextView procedure,
                     int id);

}  // namespace lintara::support
