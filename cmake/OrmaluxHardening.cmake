# What makes a fault in a library or program end it instead of letting foreign input take it over: for every target by
# way of ormalux_options. tests/module/hardening.sh looks at what was built.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

if(WIN32)
  # MinGW's stack protector and checked functions live in a DLL of their own, which no Windows machine has.
  target_link_options(ormalux_options INTERFACE -Wl,--dynamicbase -Wl,--nxcompat -Wl,--high-entropy-va)
  return()
endif()

target_compile_options(ormalux_options INTERFACE -fstack-protector-strong)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i[3-6]86)$")
  check_cxx_compiler_flag(-fcf-protection=full ORMALUX_CF_PROTECTION)
  if(ORMALUX_CF_PROTECTION)
    target_compile_options(ormalux_options INTERFACE -fcf-protection=full)
  endif()
endif()
if(NOT ORMALUX_SANITIZE) # sanitizers check more, and only what is not rerouted; without optimising nothing is checked
  target_compile_options(ormalux_options INTERFACE
    $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
endif()
# All symbols are bound at the start, and what that wrote is read-only from then on.
target_link_options(ormalux_options INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
