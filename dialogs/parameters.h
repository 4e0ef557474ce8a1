// The parameters of the four dialogs: one record for each, the variables of the caller. Members that a dialog
// only reads are marked "in". It writes the others when the user confirms, and only then.
#pragma once

#include "base/text.h"

#include <cstdint>

namespace lintara::dialogs {

struct InsertEHParameters {
    std::int16_t Scope = 0;  // 1 the current procedure, 2 the current component, 3 the current project
    bool InsertEH = false;
    bool InsertLN = false;
    // Written when InsertEH is, with the placeholders as they are.
    Text EHLabel = {};
    Text EHCode = {};
    // Written when InsertLN is: numbers as the user wrote them.
    Text LNBase = {};
    Text LNStep = {};
    std::int16_t iLenGetMemberName = 0;  // in: 0 when the caret is in no procedure
    std::int32_t iGetLineNumber = 0;     // in: not 0 when a code window with a caret is active
    // The copy-and-paste buffer, in and out; written when InsertEH is.
    Text sCCPBuffer = {};
};

struct RemoveEHParameters {
    std::int16_t Scope = 0;
    bool RemoveEH = false;
    bool RemoveLN = false;
    std::int16_t iLenGetMemberName = 0;  // in, as above
    std::int32_t iGetLineNumber = 0;
};

struct InsertCCParameters {
    std::int16_t Scope = 0;
    Text TextToInsert = {};  // in and out: the code that the user begins with, the last one when it is empty
    bool NoDelimiters = false;
    std::int16_t WhereToInsert = 0;  // 1 behind the first line, 2 before the last one, 3 at LineToInsert
    // Written when the user's text is such a number: of 32 bits, of 16.
    std::int32_t LineToInsert = 0;
    std::int16_t ID = 0;
    bool ProcAvailable = false;           // in: whether there is a current procedure
    std::int32_t ComponentAvailable = 0;  // in: not 0 when there is a current component
    Text sCCPBufferX = {};  // what the user copied into the copy-and-paste buffer, "" when nothing
};

struct RemoveCCParameters {
    std::int16_t Scope = 0;
    std::int16_t ID = 0;         // written when the user's text is a number of 16 bits
    bool ProcAvailable = false;  // in, as above
    std::int32_t ComponentAvailable = 0;
};

}  // namespace lintara::dialogs
