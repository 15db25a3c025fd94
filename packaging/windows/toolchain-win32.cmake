# Cross building for 32-bit Windows, the width of the map program's library.
set(sondrix_mingw i686-w64-mingw32)
# Without this the floating point unit reckons in 80 bits, and last digits differ from those of other systems.
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse")
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
