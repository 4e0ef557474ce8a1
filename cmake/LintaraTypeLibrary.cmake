# What is made of an interface definition: a C++ header and a type library.

include_guard()

# Interface definitions build on those of the system, which come with Wine's development files.
find_path(LINTARA_SYSTEM_IDL_FOLDER oaidl.idl
    PATHS /usr/include/wine/wine/windows /usr/include/wine/windows
    NO_CMAKE_FIND_ROOT_PATH NO_DEFAULT_PATH)
file(GLOB LINTARA_SYSTEM_TYPE_LIBRARIES /usr/lib/*/wine/x86_64-windows/stdole2.tlb)
if(NOT LINTARA_SYSTEM_IDL_FOLDER OR NOT LINTARA_SYSTEM_TYPE_LIBRARIES)
    message(FATAL_ERROR "oaidl.idl and stdole2.tlb were not found (in Debian: libwine-dev and libwine)")
endif()
list(GET LINTARA_SYSTEM_TYPE_LIBRARIES 0 LINTARA_SYSTEM_TYPE_LIBRARY)
get_filename_component(LINTARA_SYSTEM_TYPE_LIBRARY_FOLDER ${LINTARA_SYSTEM_TYPE_LIBRARY} DIRECTORY)

# lintara_type_library(file.idl HEADER header.h LIBRARY library.tlb)
# Rules for both results in the build tree; a target that lists them among its sources makes them.
function(lintara_type_library definition)
    cmake_parse_arguments(ARG "" "HEADER;LIBRARY" "" ${ARGN})
    set(command ${LINTARA_WIDL} -I${LINTARA_SYSTEM_IDL_FOLDER} -L${LINTARA_SYSTEM_TYPE_LIBRARY_FOLDER})
    get_filename_component(folder ${ARG_HEADER} DIRECTORY)
    file(MAKE_DIRECTORY ${folder})
    add_custom_command(OUTPUT ${ARG_HEADER}
        COMMAND ${command} -h -o ${ARG_HEADER} ${definition}
        DEPENDS ${definition} VERBATIM)
    add_custom_command(OUTPUT ${ARG_LIBRARY}
        COMMAND ${command} -t -o ${ARG_LIBRARY} ${definition}
        DEPENDS ${definition} VERBATIM)
endfunction()
