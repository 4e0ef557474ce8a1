# How every target of this project is built: the language, the warnings, the sanitizers.

include_guard()

# What all targets share.
add_library(lintara_options INTERFACE)
target_compile_features(lintara_options INTERFACE cxx_std_23)
target_compile_options(lintara_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror
    # GCC 12 sees overlaps in string concatenations that are none.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
target_include_directories(lintara_options INTERFACE ${PROJECT_SOURCE_DIR})
if(LINTARA_SANITIZE)
    target_compile_options(lintara_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer
        # With sanitizers GCC 12 takes members of the standard library for uninitialized that are not.
        -Wno-maybe-uninitialized)
    target_link_options(lintara_options INTERFACE -fsanitize=address,undefined)
endif()

# lintara_library(folder [DEPENDS folder...] [LIBRARIES target...])
# Every source file of the folder (and of those below it) is one static library, lintara::<folder>.
function(lintara_library folder)
    cmake_parse_arguments(ARG "" "" "DEPENDS;LIBRARIES" ${ARGN})
    string(REPLACE "/" "_" name ${folder})
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
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

# lintara_test(folder [DEPENDS folder...] [LIBRARIES target...])
# Every source file of tests/<folder> is one GoogleTest program, <folder>_tests.
function(lintara_test folder)
    cmake_parse_arguments(ARG "" "" "DEPENDS;LIBRARIES" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${folder}/*.cpp)
    if(NOT sources)
        return()
    endif()
    list(TRANSFORM ARG_DEPENDS PREPEND lintara::)
    add_executable(${folder}_tests ${sources})
    target_link_libraries(${folder}_tests PRIVATE
        lintara_options ${ARG_DEPENDS} ${ARG_LIBRARIES} GTest::gtest_main GTest::gmock)
    gtest_discover_tests(${folder}_tests DISCOVERY_TIMEOUT 60)
endfunction()
