# Cross building for 64-bit Windows.
set(sondrix_mingw x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
