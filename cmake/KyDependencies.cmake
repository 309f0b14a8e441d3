# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT

# Everything that the project stands on; tools/setup installs it.

find_package(PkgConfig REQUIRED)

# Foundation
find_package(Threads REQUIRED)
find_package(fmt REQUIRED)
find_path(KY_GLM_INCLUDE_DIR glm/glm.hpp REQUIRED)
pkg_check_modules(uriparser REQUIRED IMPORTED_TARGET liburiparser)
pkg_check_modules(sodium REQUIRED IMPORTED_TARGET libsodium)

# Scene
pkg_check_modules(epoxy REQUIRED IMPORTED_TARGET epoxy)
if(NOT WIN32)
  pkg_check_modules(egl REQUIRED IMPORTED_TARGET egl)
endif()
pkg_check_modules(stb REQUIRED IMPORTED_TARGET stb)
pkg_check_modules(assimp IMPORTED_TARGET assimp)
option(KY_WITH_ASSIMP "Read model files through assimp" ${assimp_FOUND})

# Application
if(KY_WITH_QT)
  find_package(Qt5 5.15 REQUIRED COMPONENTS Core Gui Widgets Network Qml Quick Svg Xml)
  find_package(Qt5UiTools 5.15 QUIET)
  option(KY_WITH_FORMS "Load widget forms, with Qt's UI tools" ${Qt5UiTools_FOUND})
  find_package(Qt5AxContainer 5.15 QUIET)
  option(KY_WITH_ACTIVEX "ActiveX controls for scripts, with Qt's ActiveX container" ${Qt5AxContainer_FOUND})
  option(KY_WITH_WEBKIT "A browser widget for scripts, with Qt's WebKit, which every host loads then" OFF)
  if(KY_WITH_WEBKIT)
    find_package(Qt5 5.15 REQUIRED COMPONENTS WebKitWidgets)
  endif()
endif()
find_package(Boost REQUIRED)
pkg_check_modules(lua REQUIRED IMPORTED_TARGET lua5.1)
find_package(Luabind REQUIRED)
if(NOT WIN32)
  pkg_check_modules(hidapi REQUIRED IMPORTED_TARGET hidapi-hidraw)
endif()

# Drivers of input devices
if(KY_WITH_QT)
  if(WIN32)
    pkg_check_modules(hidapi REQUIRED IMPORTED_TARGET hidapi)
  endif()
  pkg_check_modules(sdl2 REQUIRED IMPORTED_TARGET sdl2)
  find_library(KY_SPNAV_LIBRARY spnav)
endif()

# Host
if(NOT WIN32)
  pkg_check_modules(readline REQUIRED IMPORTED_TARGET readline)
endif()

if(KY_BUILD_TESTS)
  find_package(GTest REQUIRED)
  if(KY_WITH_QT)
    find_package(Qt5 5.15 REQUIRED COMPONENTS Test)
  endif()
  include(GoogleTest)
endif()

