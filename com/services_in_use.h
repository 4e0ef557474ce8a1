// The services objects that the living `Lintara` objects of a thread were given. A host gives none to
// `DialogsLT`, whose windows stand where the services object remembers; so they use the one that was set
// last.
#pragma once

#include "hostmodel/globals.h"

#include <memory>

namespace lintara::com {

// Notes that `owner` uses `services`; null ends it. The handle is not kept alive.
void NoteServices(const void* owner, const std::shared_ptr<hostmodel::Globals>& services) noexcept;

// The one that was noted last on this thread and is still in use; null when there is none.
[[nodiscard]] std::shared_ptr<hostmodel::Globals> ServicesInUse() noexcept;

}  // namespace lintara::com
