# Shared by both MinGW-w64 toolchain files.
# The win32 thread model: no winpthread, whose Debian build needs Vista, and nothing of
# ours uses threads. (GoogleTest gets a small shim for it: tests/support/GTestWin32Threads.h.)
find_program(CMAKE_C_COMPILER NAMES ${LUMORA_MINGW_TRIPLE}-gcc-win32 ${LUMORA_MINGW_TRIPLE}-gcc REQUIRED)
find_program(CMAKE_CXX_COMPILER NAMES ${LUMORA_MINGW_TRIPLE}-g++-win32 ${LUMORA_MINGW_TRIPLE}-g++ REQUIRED)
find_program(CMAKE_RC_COMPILER NAMES ${LUMORA_MINGW_TRIPLE}-windres REQUIRED)
set(CMAKE_FIND_ROOT_PATH /usr/${LUMORA_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# Tests of a cross build run under Wine (started by scripts/wine-env.sh).
set(CMAKE_CROSSCOMPILING_EMULATOR wine)
