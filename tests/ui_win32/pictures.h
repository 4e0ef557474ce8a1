// Pictures of the five windows, for the documents.
#pragma once

#include <string>

namespace lintara::ui::win32 {

// Shows each window for a moment and writes its picture into the folder, as a bitmap file. Returns how many
// could be written.
int TakePictures(const std::string& folder);

}  // namespace lintara::ui::win32
