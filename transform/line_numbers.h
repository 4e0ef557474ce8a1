// Line numbers in front of the statements of one procedure, or of all procedures of a property: digits, a
// colon and a blank, ahead of the line as it stands. Lines that may not carry a label (continuation lines,
// and the line after a "Select Case " line) are shifted right instead, so that the code keeps its alignment;
// the removal takes the same width off again, whatever stands there.
//
// A host walks its scope and calls these once per procedure name. Lines are only replaced, never inserted or
// deleted. A line that cannot be read or replaced stays as it was, and the walk goes on.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "hostmodel/code_module.h"
#include "hostmodel/globals.h"

#include <cstdint>

namespace lintara::transform {

// How far numbering shifts a line, and how many characters removal takes off: a five-digit number and ": ".
inline constexpr std::int32_t NumberColumnWidth = 7;

// No number is written at or beyond this offset from the base, whatever the base is. With the usual base of
// 10000 it keeps the numbers below 65535.
inline constexpr std::int32_t NumberOffsetLimit = 55535;

// Numbers the procedure: the line at offset n from the first body line gets base + n * step. A negative step
// counts downwards; a step of 0 would never end and changes nothing.
void LineNumbersInserter(hostmodel::Globals& globals, TextView projectName, TextView componentName,
                         TextView procedureName, std::int32_t base, std::int32_t step);

// Takes the numbers out again, if the procedure has any.
void LineNumbersRemover(hostmodel::Globals& globals, TextView projectName, TextView componentName,
                        TextView procedureName);

// The same for the lines from `start` up to, not including, `end`.
void InsertLineNumbersInRange(hostmodel::CodeModule& codeModule, Line start, Line end, std::int32_t base,
                              std::int32_t step);
void RemoveLineNumbersInRange(hostmodel::CodeModule& codeModule, Line start, Line end);

}  // namespace lintara::transform
