# What both toolchains for Windows share: GCC of the mingw-w64 project, with POSIX threads. Included by
# mingw-w64-x86_64.cmake and mingw-w64-i686.cmake, which say for which processor.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${LINTARA_WINDOWS_PROCESSOR})

set(lintara_triplet ${LINTARA_WINDOWS_PROCESSOR}-w64-mingw32)
set(CMAKE_CXX_COMPILER ${lintara_triplet}-g++-posix)
set(CMAKE_C_COMPILER ${lintara_triplet}-gcc-posix)
set(CMAKE_RC_COMPILER ${lintara_triplet}-windres)
# Reads the interface definition; see LintaraTypeLibrary.cmake.
set(LINTARA_WIDL ${lintara_triplet}-widl)
set(LINTARA_OBJDUMP ${lintara_triplet}-objdump)

# Programs of this machine, libraries and headers of the other.
set(CMAKE_FIND_ROOT_PATH /usr/${lintara_triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The compiler's runtime goes into each program and library: nothing has to be shipped beside them.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
