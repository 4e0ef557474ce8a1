# How every target of this project is built: the language, the warnings, the sanitizers.

include_guard()

# What all targets share.
add_library(lintara_options INTERFACE)
target_compile_features(lintara_options INTERFACE cxx_std_23)
target_compile_options(lintara_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror
    # GCC 12 sees overlaps in string concatenations that are none.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    # Clang sees that the stable sorts of GCC 12's library use what that library deprecates.
    $<$<CXX_COMPILER_ID:Clang>:-Wno-deprecated-declarations>)
target_include_directories(lintara_options INTERFACE ${PROJECT_SOURCE_DIR})
if(WIN32)
    # Windows 7 and later; text of 16-bit units everywhere.
    target_compile_definitions(lintara_options INTERFACE
        UNICODE _UNICODE NOMINMAX WINVER=0x0601 _WIN32_WINNT=0x0601)
    # The system's interfaces have no virtual destructors; our own classes are checked by the other builds.
    target_compile_options(lintara_options INTERFACE -Wno-non-virtual-dtor)
endif()
if(LINTARA_SANITIZE)
    target_compile_options(lintara_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer
        # With sanitizers GCC 12 takes members of the standard library for uninitialized that are not.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(lintara_options INTERFACE -fsanitize=address,undefined)
endif()
if(LINTARA_FUZZ)
    # Everything tells the fuzzer which code it ran through.
    target_compile_options(lintara_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# lintara_sources(variable pattern EXCEPT regex...)
# The source files of the pattern, without those whose names begin with one of the expressions.
function(lintara_sources variable pattern)
    cmake_parse_arguments(ARG "" "" "EXCEPT" ${ARGN})
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${pattern})
    foreach(name IN LISTS ARG_EXCEPT)
        list(FILTER sources EXCLUDE REGEX "/${name}[^/]*$")
    endforeach()
    set(${variable} ${sources} PARENT_SCOPE)
endfunction()

# lintara_library(folder [DEPENDS folder...] [LIBRARIES target...] [EXCEPT name...])
# Every source file of the folder (and of those below it) is one static library, lintara::<folder>. EXCEPT
# names the beginnings of file names that are left out.
function(lintara_library folder)
    cmake_parse_arguments(ARG "" "" "DEPENDS;LIBRARIES;EXCEPT" ${ARGN})
    string(REPLACE "/" "_" name ${folder})
    lintara_sources(sources ${folder}/*.cpp EXCEPT ${ARG_EXCEPT})
    list(TRANSFORM ARG_DEPENDS PREPEND lintara::)
    if(sources)
        add_library(lintara_${name} STATIC ${sources})
        target_link_libraries(lintara_${name} PUBLIC lintara_options ${ARG_DEPENDS} ${ARG_LIBRARIES})
    else()
        add_library(lintara_${name} INTERFACE)
        target_link_libraries(lintara_${name} INTERFACE lintara_options ${ARG_DEPENDS} ${ARG_LIBRARIES})
    endif()
    add_library(lintara::${name} ALIAS lintara_${name})
endfunction()

# lintara_test(folder [DEPENDS folder...] [LIBRARIES target...] [EXCEPT name...])
# Every source file of tests/<folder> is one GoogleTest program, <folder>_tests, together with the main of
# tests/support where the folder has no main.cpp of its own. EXCEPT names the beginnings of file names that are left
# out.
function(lintara_test folder)
    cmake_parse_arguments(ARG "" "" "DEPENDS;LIBRARIES;EXCEPT" ${ARGN})
    lintara_sources(sources tests/${folder}/*.cpp EXCEPT ${ARG_EXCEPT})
    if(NOT sources)
        return()
    endif()
    if(NOT EXISTS ${PROJECT_SOURCE_DIR}/tests/${folder}/main.cpp)
        list(APPEND sources ${PROJECT_SOURCE_DIR}/tests/support/main.cpp)
    endif()
    list(TRANSFORM ARG_DEPENDS PREPEND lintara::)
    add_executable(${folder}_tests ${sources})
    target_link_libraries(${folder}_tests PRIVATE
        lintara_options ${ARG_DEPENDS} ${ARG_LIBRARIES} GTest::gtest GTest::gmock)
    if(CMAKE_CROSSCOMPILING)
        # scripts/test-windows runs the programs; to ask each for its tests would start Wine while building.
        set_property(GLOBAL APPEND PROPERTY LINTARA_TEST_PROGRAMS ${folder}_tests)
    else()
        gtest_discover_tests(${folder}_tests DISCOVERY_TIMEOUT 60)
    endif()
endfunction()
