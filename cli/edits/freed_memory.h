// Memory that was freed, but lies between what is still in use, stays with the process as long as nobody asks
// for it back.
#pragma once

#include <cstddef>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace lintara::cli {

// Hands it to the system now, where that can be done. Takes a millisecond or so: not for every little thing.
inline void ReturnFreedMemory() {
#if defined(__GLIBC__)
    ::malloc_trim(0);
#endif
}

}  // namespace lintara::cli
