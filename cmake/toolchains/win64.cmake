# Windows on x86-64, by Debian's g++-mingw-w64-x86-64-posix; its programs run in wine64.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix) # which googletest asks for
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# A Windows of the build's own, without the parts that ask to be installed.
find_program(TESSERA_WINE wine64 PATHS /usr/lib/wine)
set(CMAKE_CROSSCOMPILING_EMULATOR
    "${CMAKE_COMMAND}" -E env "WINEPREFIX=${CMAKE_BINARY_DIR}/wine" WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml=
    "${TESSERA_WINE}")
