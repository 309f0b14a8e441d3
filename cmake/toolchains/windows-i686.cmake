# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT

# 32-bit Windows by MinGW, with the libraries that packaging/windows/setup builds; programs run under its Wine.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)
set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)

cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH KY_CHECKOUT)
cmake_path(GET KY_CHECKOUT PARENT_PATH KY_CHECKOUT)
if(DEFINED ENV{KY_WINDOWS_DIR})
  set(KY_SYSROOT $ENV{KY_WINDOWS_DIR}/sysroot)
else()
  set(KY_SYSROOT ${KY_CHECKOUT}/.deps/windows/sysroot)
endif()

set(CMAKE_FIND_ROOT_PATH ${KY_SYSROOT} ${KY_SYSROOT}/qt)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} ${KY_SYSROOT}/lib/pkgconfig:${KY_SYSROOT}/share/pkgconfig)

set(CMAKE_CROSSCOMPILING_EMULATOR ${KY_CHECKOUT}/packaging/windows/wine)
