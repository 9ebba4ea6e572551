# How every target of the house is made: warnings as errors, sanitizers, ccache, names of tests.

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
endif()

add_library(orvan_options INTERFACE)
target_compile_options(orvan_options INTERFACE -Wall -Wextra -Wpedantic -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(orvan_options INTERFACE -Wno-restrict) # false alarms on "text" + std::string in GCC 12
endif()
target_include_directories(orvan_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
if(ORVAN_SANITIZE)
    target_compile_options(orvan_options INTERFACE -fsanitize=${ORVAN_SANITIZE} -fno-omit-frame-pointer
        -fno-sanitize-recover=all)
    target_link_options(orvan_options INTERFACE -fsanitize=${ORVAN_SANITIZE})
    target_compile_definitions(orvan_options INTERFACE ORVAN_GUARD_PAGES)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU") # false alarms where a std::variant is destroyed in sanitized code
        target_compile_options(orvan_options INTERFACE -Wno-maybe-uninitialized)
    endif()
endif()

if(ORVAN_FUZZ) # coverage for libFuzzer in everything that the targets link
    target_compile_options(orvan_options INTERFACE -fsanitize=fuzzer-no-link)
    target_compile_definitions(orvan_options INTERFACE _GLIBCXX_ASSERTIONS) # indexes and iterators too
endif()

if(WIN32)
    include(OrvanWindows)
endif()

# orvan_library(NAME SOURCES a.cpp b.cpp LINK other...): a static library of one folder.
# Files that include Qt's moc macros are found by themselves when a Qt library is linked (QT flag).
function(orvan_library name)
    cmake_parse_arguments(A "QT" "" "SOURCES;LINK" ${ARGN})
    if(NOT A_SOURCES)
        add_library(${name} INTERFACE)
        target_link_libraries(${name} INTERFACE orvan_options ${A_LINK})
        return()
    endif()
    add_library(${name} STATIC ${A_SOURCES})
    target_link_libraries(${name} PUBLIC orvan_options ${A_LINK})
    if(A_QT)
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
    endif()
endfunction()

# orvan_program(NAME SOURCES ... LINK ...): a program in build/<preset>/bin.
function(orvan_program name)
    cmake_parse_arguments(A "QT" "" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${A_SOURCES})
    target_link_libraries(${name} PRIVATE orvan_options ${A_LINK})
    if(WIN32)
        orvan_windows_program(${name})
    endif()
    if(A_QT)
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
    endif()
endfunction()

# orvan_test(NAME SOURCES ... LINK ...): a GoogleTest program, one ctest entry per test case.
function(orvan_test name)
    cmake_parse_arguments(A "QT" "" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${A_SOURCES})
    target_link_libraries(${name} PRIVATE orvan_options ${A_LINK} GTest::gtest)
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    if(A_QT)
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
    else()
        target_link_libraries(${name} PRIVATE GTest::gtest_main)
    endif()
    # A quarter less to wait for than -O3; the false alarm is the one above.
    target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O1 -Wno-maybe-uninitialized>)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    if(WIN32)
        orvan_windows_program(${name})
    endif()
    if(name MATCHES "^(jet|peer)")
        add_dependencies(engine_tests ${name})
    endif()
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "LC_ALL=C.UTF-8;TZ=Europe/Istanbul;QT_QPA_PLATFORM=offscreen;ORVAN_SOURCE_DIR=${CMAKE_SOURCE_DIR};ORVAN_BIN_DIR=${CMAKE_BINARY_DIR}/bin"
        TIMEOUT 600)
endfunction()
