// Files of Windows, under paths as its users write them, and the file that this very code was loaded from:
// the component server or, in tests, the program.
#pragma once

#ifdef _WIN32

#include "base/text.h"

namespace lintara::platform {

// The file that holds this code, from the root on; "" when the system does not tell.
[[nodiscard]] Text LibraryFile();

// The folder in which it lies, without a separator at its end; "" when the system does not tell.
[[nodiscard]] Text LibraryFolder();

// Whether there is a file of that path. A folder is none.
[[nodiscard]] bool FileExists(TextView path);

}  // namespace lintara::platform

#endif
