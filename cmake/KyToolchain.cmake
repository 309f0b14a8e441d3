# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT

# Compiler settings that hold for every target of the project.

include(GNUInstallDirs)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_INCLUDE_CURRENT_DIR OFF)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
# Before 1.0 a minor version may change the interface.
set(KY_SOVERSION ${PROJECT_VERSION_MAJOR})
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(KY_SOVERSION 0.${PROJECT_VERSION_MINOR})
endif()
# Where the host looks for drivers, as seen from its own folder.
set(KY_DRIVER_OUTPUT_DIR ${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}/KyApplication/drivers)
set(KY_DRIVER_INSTALL_DIR ${CMAKE_INSTALL_LIBDIR}/KyApplication/drivers)
if(UNIX)
  set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
endif()

find_program(KY_CCACHE ccache)
if(KY_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # The cache looks at precompiled headers only when it may trust their definitions and times.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${KY_CCACHE})
  set(CMAKE_C_COMPILER_LAUNCHER ${CMAKE_CXX_COMPILER_LAUNCHER})
endif()

# Warnings, sanitizers and definitions of one of our own targets.
function(ky_set_target_defaults target)
  target_compile_definitions(${target} PRIVATE QT_NO_KEYWORDS BOOST_BIND_GLOBAL_PLACEHOLDERS)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /permissive- /utf-8 $<$<BOOL:${KY_WERROR}>:/WX>)
    return()
  endif()
  # Unique symbols would keep a library loaded after dlclose.
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<BOOL:${KY_WERROR}>:-Werror>
    $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
  # GCC 12 takes joined short texts for overlapping copies when it optimises.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  # The older floating-point unit keeps more digits than a double has: what is equal elsewhere would differ there.
  if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "86")
    target_compile_options(${target} PRIVATE -msse2 -mfpmath=sse)
  endif()
  if(KY_SANITIZE)
    list(JOIN KY_SANITIZE "," sanitizers)
    target_compile_options(${target} PRIVATE
      -fsanitize=${sanitizers} -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
    target_link_options(${target} PRIVATE -fsanitize=${sanitizers})
  elseif(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_link_options(${target} PRIVATE -Wl,--no-undefined)
  endif()
  if(KY_COVERAGE)
    target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic)
    target_link_options(${target} PRIVATE --coverage)
  endif()
endfunction()
