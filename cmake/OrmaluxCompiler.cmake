# What every target of the project is compiled with, in one interface library.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(WIN32)
  # Programs find the module's DLL beside themselves.
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
endif()
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  set(ORMALUX_PRECOMPILE OFF) # other compilers and the compiler cache do not get along over them
endif()

find_program(ORMALUX_CCACHE ccache)
if(ORMALUX_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Precompiled headers are cached, too.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
    CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${ORMALUX_CCACHE})
endif()

find_package(Threads REQUIRED)

add_library(ormalux_options INTERFACE)
target_include_directories(ormalux_options INTERFACE ${PROJECT_SOURCE_DIR})
target_link_libraries(ormalux_options INTERFACE Threads::Threads)
target_compile_options(ormalux_options INTERFACE
  -Wall -Wextra -Wnon-virtual-dtor
  # GCC 12 sees overlaps in the concatenation of strings that are none.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local>
  # Results are those of plain doubles in the written order on every machine.
  -ffp-contract=off
  # Unique symbols would keep the module from ever being unloaded.
  $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>
  $<$<BOOL:${ORMALUX_WERROR}>:-Werror>)
set(ORMALUX_NO_UNDEFINED -Wl,--no-undefined)
if(ORMALUX_SANITIZE)
  # A sanitizer's runtime comes with the program, not with the module.
  set(ORMALUX_NO_UNDEFINED)
  target_compile_options(ormalux_options INTERFACE
    -fsanitize=${ORMALUX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(ormalux_options INTERFACE -fsanitize=${ORMALUX_SANITIZE})
endif()
if(MINGW)
  if(NOT ORMALUX_BUILD_VIEW) # the toolkit's DLLs bring the compiler's along
    target_link_options(ormalux_options INTERFACE -static-libgcc -static-libstdc++ -static)
  endif()
  target_compile_definitions(ormalux_options INTERFACE
    NOMINMAX WIN32_LEAN_AND_MEAN ORMALUX_NARROW_VECTORS)
endif()

include(OrmaluxHardening)

# ormalux_precompile(<target> <header>...): parses large foreign headers once for all sources of the target. Sources
# include what they use all the same.
function(ormalux_precompile target)
  if(ORMALUX_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${ARGN})
    target_compile_options(${target} PRIVATE -fpch-preprocess) # lets the compiler cache look inside
  endif()
endfunction()

# ormalux_sources(<variable> <folder>...): the .cpp files of the folders and of their kernels.
function(ormalux_sources variable)
  set(found)
  foreach(folder IN LISTS ARGN)
    file(GLOB files CONFIGURE_DEPENDS
      ${PROJECT_SOURCE_DIR}/${folder}/*.cpp ${PROJECT_SOURCE_DIR}/${folder}/kernels/*.cpp)
    list(APPEND found ${files})
  endforeach()
  set(${variable} ${found} PARENT_SCOPE)
endfunction()
