// The texts that the library writes into code and settings, or finds there again. Each stands here once:
// a changed character would orphan what earlier versions have written into users' projects.
#pragma once

#include "base/text.h"

namespace lintara::constants {

// What separates the lines inside one text.
inline constexpr TextView LineBreak = u"\r\n";

// Marker lines in the user's code. Those of custom code are followed by a blank and the block's identifier.
inline constexpr TextView ErrorHandlerBegin =
    u"' TWErrorHandler begin - please do not modify or remove this line";
inline constexpr TextView CustomCodeBegin =
    u"' TWCustomCode begin - please do not modify or remove this line";
inline constexpr TextView CustomCodeEnd = u"' TWCustomCode end - please do not modify or remove this line";

// The statement that leads to an error handler's label, or to none: as it is written and sought, and as the
// IDE shows it once it has given the keyword its letter case.
inline constexpr TextView OnErrorGoto = u"On Error Goto ";
inline constexpr TextView CommittedOnErrorGoTo = u"On Error GoTo ";
inline constexpr TextView NoErrorHandler = u"0";

// Placeholders of code templates. Their letter case counts.
inline constexpr TextView ProjectNamePlaceholder = u"{ProjectName}";
inline constexpr TextView ComponentNamePlaceholder = u"{ComponentName}";
inline constexpr TextView MemberNamePlaceholder = u"{MemberName}";
inline constexpr TextView ControlNamePlaceholder = u"{ControlName}";
inline constexpr TextView ComputerNamePlaceholder = u"{ComputerName}";
inline constexpr TextView UserNamePlaceholder = u"{UserName}";
inline constexpr TextView DatePlaceholder = u"{Date}";
inline constexpr TextView TimePlaceholder = u"{Time}";
inline constexpr TextView MemberTypePlaceholder = u"{MemberType}";

// The words for a member's kind. "?" stands for a header that does not show the member's name.
inline constexpr TextView SubWord = u"Sub";
inline constexpr TextView FunctionWord = u"Function";
inline constexpr TextView PropertyWord = u"Property";
inline constexpr TextView UnknownKindWord = u"?";

// The per-user settings store: application, sections, keys and the defaults of absent keys.
inline constexpr TextView SettingsApplication = u"Tarnwick";
inline constexpr TextView CodeAutomationSection = u"CodeAutomation";
inline constexpr TextView AssistantsSection = u"Assistants";

inline constexpr TextView InsertLineNumbersKey = u"InsertLN";
inline constexpr TextView InsertErrorHandlersKey = u"InsertEH";
inline constexpr TextView LineNumberBaseKey = u"LNBase";
inline constexpr TextView LineNumberStepKey = u"LNStep";
inline constexpr TextView ErrorHandlerLabelKey = u"EHLabel";
inline constexpr TextView ErrorHandlerCodeKey = u"EHCode";
inline constexpr TextView LastCustomCodeKey = u"LastCustomCode";
inline constexpr TextView UseDelimitersKey = u"UseDelimiters";
inline constexpr TextView CodeDbPathKey = u"CodeDbPath";
// These two hold each other's check box, and stored settings rely on it: "RemoveLN" is the state of the box
// for error handlers, "RemoveEH" that of the box for line numbers.
inline constexpr TextView RemoveErrorHandlersKey = u"RemoveLN";
inline constexpr TextView RemoveLineNumbersKey = u"RemoveEH";

inline constexpr TextView DefaultLineNumberBase = u"10000";
inline constexpr TextView DefaultLineNumberStep = u"5";
inline constexpr TextView DefaultErrorHandlerLabel = u"hErr";
// The handler that users start from, "occured" and all: line 3 shows it to the users of their programs.
inline constexpr TextView DefaultErrorHandlerCode =
    u"    Select Case MsgBox(\"Error \" & Err.Number & \": \" & Err.Description & vbCrLf & _\r\n"
    u"                      \"in {ProjectName}.{ComponentName}.{MemberName}.\" & vbCrLf & _\r\n"
    u"                      \"The error occured at line: \" & Erl, _\r\n"
    u"                      vbAbortRetryIgnore + vbCritical, \"Error\")\r\n"
    u"        Case vbAbort\r\n"
    u"            Screen.MousePointer = vbDefault\r\n"
    u"            Exit {MemberType}\r\n"
    u"        Case vbRetry\r\n"
    u"            Resume\r\n"
    u"        Case vbIgnore\r\n"
    u"            Resume Next\r\n"
    u"    End Select\r\n";
static_assert(DefaultErrorHandlerCode.size() == 500);

// The code database: its file, with the separator that joins it to its folder, and its table.
inline constexpr TextView CodeDatabaseFile = u"\\Assistants.mdb";
inline constexpr TextView BuffersTable = u"CPBuffers";
inline constexpr TextView BuffersIndex = u"Key";
inline constexpr TextView BufferKeyField = u"Key";
inline constexpr TextView BufferCodeField = u"Code";

}  // namespace lintara::constants
