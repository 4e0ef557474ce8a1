#include "com/services_in_use.h"

#include <algorithm>
#include <mutex>
#include <ranges>
#include <vector>
#include <windows.h>

namespace lintara::com {
namespace {

struct Use {
    const void* owner;
    DWORD thread;
    std::weak_ptr<hostmodel::Globals> services;
};

// What the objects of one module share, like the count of them: nobody hands one class's objects to the
// other.
struct Uses {
    std::mutex guard;
    std::vector<Use> uses;
};

Uses& All() {
    static Uses all;
    return all;
}

}  // namespace

void NoteServices(const void* owner, const std::shared_ptr<hostmodel::Globals>& services) noexcept {
    try {
        Uses& all = All();
        const std::scoped_lock lock(all.guard);
        std::erase_if(all.uses, [&](const Use& use) { return use.owner == owner; });
        if (services != nullptr) {
            all.uses.push_back({owner, GetCurrentThreadId(), services});
        }
    } catch (...) {
        // Then the dialogs remember their places by themselves.
    }
}

std::shared_ptr<hostmodel::Globals> ServicesInUse() noexcept {
    try {
        Uses& all = All();
        const std::scoped_lock lock(all.guard);
        for (const Use& use : std::views::reverse(all.uses)) {
            if (use.thread == GetCurrentThreadId()) {
                return use.services.lock();
            }
        }
    } catch (...) {
        // As if there were none.
    }
    return nullptr;
}

}  // namespace lintara::com
