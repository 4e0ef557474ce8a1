// One window shown for another program, which asks and is answered in JSON. What `lintara-window` does
// between its standard input and its standard output.
//
// A request is one object. Its member "window" names the window, the others are what the window begins with:
//
//   "insert-eh"    iLenGetMemberName, iGetLineNumber (numbers), sCCPBuffer (text)
//   "remove-eh"    iLenGetMemberName, iGetLineNumber
//   "insert-code"  TextToInsert (text), ProcAvailable (true or false), ComponentAvailable (number)
//   "remove-code"  ProcAvailable, ComponentAvailable
//   "history"      HistBackItem, HistNextItem (up to 10 texts each, the latest first), HistSeparator,
//                  HistCurrentKey (texts)
//
// A member that is absent is 0, false or "", and "|" for HistSeparator. The answer is one object as well:
// "accepted", whether the user confirmed, and, if so, what the window gives, again by name:
//
//   "insert-eh"    Scope, InsertEH, InsertLN; EHLabel, EHCode, sCCPBuffer if InsertEH; LNBase, LNStep if
//                  InsertLN
//   "remove-eh"    Scope, RemoveEH, RemoveLN
//   "insert-code"  Scope, TextToInsert, NoDelimiters, WhereToInsert, LineToInsert, ID, sCCPBufferX
//   "remove-code"  Scope, ID
//   "history"      HistSelKey, HistSelObject
//
// What these mean is said in dialogs/parameters.h and history/entry_format.h.
#pragma once

#include "dialogs/dialog_host.h"

#include <expected>
#include <string>
#include <string_view>

namespace lintara::window {

// Shows the window and returns when the user has closed it: the answer, or a sentence on what is wrong with
// the request, in which case nothing was shown.
[[nodiscard]] std::expected<std::string, std::string> ShowWindow(std::string_view request,
                                                                 const dialogs::DialogHost& host);

}  // namespace lintara::window
