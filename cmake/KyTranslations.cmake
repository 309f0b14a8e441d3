# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT

# The texts of windows and dialogs in other languages.

# ky_add_translations(<library> <language>...)
# Puts translations/kyapplication_<language>.ts into the library as Qt resources: they are there wherever the library
# is, in the build and installed. A cross build takes lrelease of the machine that builds and does without translations
# where there is none.
function(ky_add_translations target)
  find_package(Qt5LinguistTools 5.15 QUIET)
  if(TARGET Qt5::lrelease)
    set(KY_LRELEASE $<TARGET_FILE:Qt5::lrelease>)
  else()
    find_program(KY_LRELEASE NAMES lrelease-qt5 lrelease)
  endif()
  if(NOT KY_LRELEASE AND NOT CMAKE_CROSSCOMPILING)
    message(FATAL_ERROR "lrelease is missing; tools/setup installs it")
  elseif(NOT KY_LRELEASE)
    message(STATUS "lrelease is missing: texts are English only")
    return()
  endif()

  set(folder ${CMAKE_BINARY_DIR}/translations)
  file(MAKE_DIRECTORY ${folder})
  set(files)
  foreach(language IN LISTS ARGN)
    set(name kyapplication_${language})
    set(source ${PROJECT_SOURCE_DIR}/translations/${name}.ts)
    add_custom_command(OUTPUT ${folder}/${name}.qm
      COMMAND ${KY_LRELEASE} -silent ${source} -qm ${folder}/${name}.qm
      DEPENDS ${source} VERBATIM)
    string(APPEND files "<file>${name}.qm</file>")
  endforeach()
  file(CONFIGURE OUTPUT ${folder}/kyapplication.qrc @ONLY
    CONTENT "<RCC><qresource prefix=\"/kyapplication/translations\">@files@</qresource></RCC>\n")
  qt5_add_resources(resources ${folder}/kyapplication.qrc)
  target_sources(${target} PRIVATE ${resources})
endfunction()
