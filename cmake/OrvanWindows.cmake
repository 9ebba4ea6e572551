# What every Windows program of the house carries: a manifest, an icon, a version, the stack it has on other systems.

# Deep statements and trees are measured against the stack of other systems.
add_link_options(-Wl,--stack,8388608)

# SQLite, libxlsxwriter and zlib are static libraries here.
find_library(ZLIB_STATIC NAMES libz.a REQUIRED)
find_library(XLSXWRITER_STATIC NAMES libxlsxwriter.a REQUIRED)
add_library(xlsxwriter INTERFACE)
target_link_libraries(xlsxwriter INTERFACE ${XLSXWRITER_STATIC} ${ZLIB_STATIC})

set(ORVAN_WINDOWS_FILES ${CMAKE_CURRENT_LIST_DIR}/../packaging/windows)

# orvan_windows_program(NAME): icon, version and manifest. A property WIN32_EXECUTABLE set by the target makes it a
# program without a console.
function(orvan_windows_program name)
    set(ORVAN_PROGRAM ${name})
    set(resources ${CMAKE_CURRENT_BINARY_DIR}/${name}.rc)
    configure_file(${ORVAN_WINDOWS_FILES}/program.rc.in ${resources} @ONLY)
    enable_language(RC)
    target_sources(${name} PRIVATE ${resources})
    set_property(SOURCE ${resources} PROPERTY OBJECT_DEPENDS "${ORVAN_WINDOWS_FILES}/program.manifest")
endfunction()
