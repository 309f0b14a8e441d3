# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT

# Finds the luabind that tools/setup builds against Lua 5.1; a system-wide one may be built for
# another Lua and is not looked at. Sets Luabind_FOUND and the targets
#   Luabind::Headers   include path, definitions, options
#   Luabind::Luabind   the static library

set(KY_DEPS_DIR "" CACHE PATH "Folder of the dependencies built by tools/setup")
set(KY_LUABIND_DIRS ${KY_DEPS_DIR} $ENV{KY_DEPS_DIR} ${PROJECT_SOURCE_DIR}/.deps)
list(TRANSFORM KY_LUABIND_DIRS APPEND /luabind)
list(JOIN KY_LUABIND_DIRS ", " KY_LUABIND_DIRS_TEXT)

if(CMAKE_CROSSCOMPILING)
  find_path(Luabind_INCLUDE_DIR luabind/luabind.hpp)
  find_library(Luabind_LIBRARY luabind)
else()
  find_path(Luabind_INCLUDE_DIR luabind/luabind.hpp PATHS ${KY_LUABIND_DIRS} PATH_SUFFIXES include NO_DEFAULT_PATH)
  find_library(Luabind_LIBRARY luabind PATHS ${KY_LUABIND_DIRS} PATH_SUFFIXES lib NO_DEFAULT_PATH)
endif()
mark_as_advanced(Luabind_INCLUDE_DIR Luabind_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Luabind
  REQUIRED_VARS Luabind_LIBRARY Luabind_INCLUDE_DIR
  REASON_FAILURE_MESSAGE "run tools/setup once: it builds luabind for Lua 5.1 (looked in ${KY_LUABIND_DIRS_TEXT})")

if(Luabind_FOUND AND NOT TARGET Luabind::Luabind)
  add_library(Luabind::Headers INTERFACE IMPORTED)
  target_include_directories(Luabind::Headers INTERFACE ${Luabind_INCLUDE_DIR})
  target_compile_definitions(Luabind::Headers INTERFACE LUABIND_USE_CXX11 BOOST_BIND_GLOBAL_PLACEHOLDERS)
  # luabind places 16-byte aligned records in Lua's userdata, which Lua aligns to 8.
  target_compile_options(Luabind::Headers INTERFACE
    $<$<BOOL:${KY_SANITIZE}>:-fno-sanitize=alignment>)
  add_library(Luabind::Luabind STATIC IMPORTED)
  set_target_properties(Luabind::Luabind PROPERTIES IMPORTED_LOCATION ${Luabind_LIBRARY})
  target_link_libraries(Luabind::Luabind INTERFACE Luabind::Headers)
endif()
