// How the suite's code database is found and opened, when none of its components has done so yet.
#pragma once

#include "assistant/platform.h"
#include "hostmodel/globals.h"

namespace lintara::assistant {

// Opens the code database and gives it to the services object, unless that holds one. It is looked for in the
// folder that the settings remember or, when they remember none, in the folder of this library; if it is not
// there, the user is asked. A folder that the settings did not lead to is remembered.
// Every step that fails is left out, and the next one is done: above all, a folder that the user chose is
// remembered even when the database in it cannot be opened.
void OpenCodeDatabase(hostmodel::Globals& globals, const Platform& platform);

}  // namespace lintara::assistant
