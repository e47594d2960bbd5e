# Cross-builds for Windows with Debian's MinGW-w64, for the processor set by the including toolchain
# file. Only the posix thread model has std::thread and std::mutex.
set(CMAKE_SYSTEM_NAME Windows)
set(toolchain ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32)
set(CMAKE_C_COMPILER ${toolchain}-gcc-posix)
set(CMAKE_CXX_COMPILER ${toolchain}-g++-posix)
set(CMAKE_RC_COMPILER ${toolchain}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${toolchain})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/wine-run)
