# What makes a fault in the programs harder to use: a guard on the stack, checked calls of the C library, addresses that
# differ from run to run, and tables that nothing can write once the program runs. scripts/check-hardening reads the
# built programs for it. The checked calls need an optimised build; the sanitizers check the same calls themselves.
include(CheckPIESupported)
check_pie_supported(OUTPUT_VARIABLE reason LANGUAGES CXX)
if(NOT WIN32 AND NOT CMAKE_CXX_LINK_PIE_SUPPORTED)
  message(WARNING "The linker makes no programs that are independent of their address: ${reason}")
endif()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

target_compile_options(sondrix_options INTERFACE -fstack-protector-strong)
target_link_options(sondrix_options INTERFACE -fstack-protector-strong)
if(WIN32)
  target_link_options(sondrix_options INTERFACE -Wl,--dynamicbase -Wl,--nxcompat)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    target_link_options(sondrix_options INTERFACE -Wl,--high-entropy-va)
  endif()
else()
  # Nothing of the static libraries is ever replaced from outside, so calls within them stay as direct as without PIC.
  target_compile_options(sondrix_options INTERFACE -fno-semantic-interposition)
  target_link_options(sondrix_options INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
endif()
if(NOT SONDRIX_SANITIZE)
  # Undefined first: some distributions and packagers define it already, with another value.
  target_compile_options(sondrix_options INTERFACE
    "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
endif()
