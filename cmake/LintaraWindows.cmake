# The build for Windows: the component server that a host loads, and the tests that run on Windows or under Wine.
# It takes the place of the rest of CMakeLists.txt, which makes the command and the windows for other systems.

include_guard()
enable_language(RC)
include(LintaraTypeLibrary)

# From the bottom up: a folder may use those above it in this list, as docs/architecture.md says.
lintara_library(base)
lintara_library(hostmodel DEPENDS base)
lintara_library(transform DEPENDS hostmodel)
lintara_library(assistant DEPENDS transform hostmodel)
# Without the stores that stand in for the registry and for the database engine.
lintara_library(platform DEPENDS hostmodel
    EXCEPT database_ isolated_call jet_ locked_file path_text settings_text sqlite_ stored_text toml_ user_folders)
lintara_library(forms DEPENDS base)
lintara_library(controls DEPENDS forms)
lintara_library(dialogs DEPENDS controls hostmodel)
lintara_library(history DEPENDS dialogs)
lintara_library(ui/win32 DEPENDS forms platform LIBRARIES comctl32)
# Every program or library with these windows carries the manifest that asks for the system's present controls.
add_library(lintara_ui_win32_resources OBJECT ${PROJECT_SOURCE_DIR}/ui/win32/common_controls.rc)
set_source_files_properties(${PROJECT_SOURCE_DIR}/ui/win32/common_controls.rc PROPERTIES
    OBJECT_DEPENDS ${PROJECT_SOURCE_DIR}/ui/win32/common_controls.manifest)
target_include_directories(lintara_ui_win32_resources PRIVATE ${PROJECT_SOURCE_DIR}/ui/win32)
target_link_libraries(lintara_ui_win32 INTERFACE $<TARGET_OBJECTS:lintara_ui_win32_resources>)

# Interfaces and type library, from one definition.
set(lintara_idl_header ${PROJECT_BINARY_DIR}/com/lintara_idl.h)
set(lintara_type_library ${PROJECT_BINARY_DIR}/com/Tarnwick30Lintara.tlb)
lintara_type_library(${PROJECT_SOURCE_DIR}/com/lintara.idl
    HEADER ${lintara_idl_header} LIBRARY ${lintara_type_library})
add_custom_target(lintara_idl DEPENDS ${lintara_idl_header} ${lintara_type_library})

lintara_library(com DEPENDS assistant platform dialogs history ui_win32)
target_include_directories(lintara_com SYSTEM PUBLIC ${PROJECT_BINARY_DIR})
add_dependencies(lintara_com lintara_idl)

# What lies in the library, or in a test program in its place, beside the code.
add_library(lintara_com_resources OBJECT ${PROJECT_SOURCE_DIR}/com/library.rc)
set_source_files_properties(${PROJECT_SOURCE_DIR}/com/library.rc PROPERTIES OBJECT_DEPENDS ${lintara_type_library})
target_include_directories(lintara_com_resources PRIVATE ${PROJECT_BINARY_DIR}/com)
target_compile_definitions(lintara_com_resources PRIVATE
    LINTARA_VERSION_MAJOR=${PROJECT_VERSION_MAJOR} LINTARA_VERSION_MINOR=${PROJECT_VERSION_MINOR}
    LINTARA_VERSION_PATCH=${PROJECT_VERSION_PATCH})
add_dependencies(lintara_com_resources lintara_idl)

# The component server.
add_library(Tarnwick30Lintara SHARED ${PROJECT_SOURCE_DIR}/com/library.def)
set_target_properties(Tarnwick30Lintara PROPERTIES PREFIX "" LINKER_LANGUAGE CXX)
target_link_libraries(Tarnwick30Lintara PRIVATE
    lintara_options "$<LINK_LIBRARY:WHOLE_ARCHIVE,lintara_com>" lintara_com_resources)
# Exported as the definition file spells them, although i686 decorates the names of such functions.
target_link_options(Tarnwick30Lintara PRIVATE -Wl,--enable-stdcall-fixup)
install(TARGETS Tarnwick30Lintara RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/lintara)

if(BUILD_TESTING)
    add_subdirectory(tests/windows)
endif()
