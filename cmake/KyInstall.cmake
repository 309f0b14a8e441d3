# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT

# What find_package(KyApplication) and pkg-config need in the installed tree.

include(CMakePackageConfigHelpers)

set(KY_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/KyApplication)

install(EXPORT KyApplicationTargets NAMESPACE Ky:: DESTINATION ${KY_CMAKE_DIR} COMPONENT development)
configure_package_config_file(cmake/KyApplicationConfig.cmake.in ${CMAKE_BINARY_DIR}/KyApplicationConfig.cmake
  INSTALL_DESTINATION ${KY_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/KyApplicationConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${CMAKE_BINARY_DIR}/KyApplicationConfig.cmake
  ${CMAKE_BINARY_DIR}/KyApplicationConfigVersion.cmake
  DESTINATION ${KY_CMAKE_DIR} COMPONENT development)

# The .pc files find their tree from where they lie, so it can be moved.
cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_BINDIR
  BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig OUTPUT_VARIABLE KY_PC_UP)
cmake_path(GET KY_PC_UP PARENT_PATH KY_PC_UP)

# ky_install_pc(<name> <library> <description> [<required module>...])
function(ky_install_pc name library description)
  set(KY_PC_NAME ${name})
  set(KY_PC_LIBRARY ${library})
  set(KY_PC_DESCRIPTION ${description})
  list(JOIN ARGN ", " KY_PC_REQUIRES)
  configure_file(cmake/ky-library.pc.in ${CMAKE_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${CMAKE_BINARY_DIR}/${name}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endfunction()

ky_install_pc(ky-foundation KyFoundation "Object model, values, resources and tasks")
ky_install_pc(ky-scene KyScene "Scene graph and rendering on OpenGL" ky-foundation)
if(KY_WITH_QT)
  ky_install_pc(ky-application KyApplication "Scripting, devices, interaction and Qt bridge"
    ky-scene Qt5Core Qt5Gui Qt5Widgets Qt5Network Qt5Qml Qt5Quick Qt5Xml lua5.1)
endif()
