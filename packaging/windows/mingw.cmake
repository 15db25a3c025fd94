# Shared by the toolchain files: Debian's mingw-w64 with POSIX threads.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${sondrix_mingw}-gcc-posix)
set(CMAKE_CXX_COMPILER ${sondrix_mingw}-g++-posix)
set(CMAKE_RC_COMPILER ${sondrix_mingw}-windres)
# What the build scripts made for this width lies in the prefix path.
set(CMAKE_FIND_ROOT_PATH /usr/${sondrix_mingw} ${CMAKE_PREFIX_PATH})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# The compiler's libraries go into each program and DLL. All or none: with 32 bit, a program that has its own
# unwinder beside one in a DLL can't catch its own exceptions.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static")
