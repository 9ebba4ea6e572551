# Toolchain: 64-bit Windows from a Debian machine, with mingw-w64 and its POSIX threads (std::thread, std::mutex).
# Qt, SQLite, libxlsxwriter and GoogleTest for Windows are laid into build/mingw by packaging/windows/libraries.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

get_filename_component(ORVAN_MINGW_LIBRARIES ${CMAKE_CURRENT_LIST_DIR}/../build/mingw ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${ORVAN_MINGW_LIBRARIES}/prefix ${ORVAN_MINGW_LIBRARIES}/qt6-mingw)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# moc, rcc and uic are this machine's own, of the same release.
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)

# The oldest system the program runs on is Windows 10.
add_compile_definitions(_WIN32_WINNT=0x0A00 WINVER=0x0A00 NTDDI_VERSION=0x0A000000 UNICODE _UNICODE)

# Tests run as Windows programs under Wine.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../packaging/windows/under-wine)
