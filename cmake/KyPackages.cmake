# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT

# The vocabulary of the module and package files.

include(GenerateExportHeader)

# ky_add_library(<target> [DEPENDS <public>...] [PRIVATE_DEPENDS <private>...])
# One of the shared libraries, with its alias Ky::<name> and its export header; packages fill it.
function(ky_add_library target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "DEPENDS;PRIVATE_DEPENDS")
  string(REGEX REPLACE "^Ky" "" short ${target})
  string(TOUPPER ${target} upper)
  set(generated ${CMAKE_CURRENT_BINARY_DIR}/include)

  add_library(${target} SHARED)
  add_library(Ky::${short} ALIAS ${target})
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${short} VERSION ${PROJECT_VERSION} SOVERSION ${KY_SOVERSION} LINKER_LANGUAGE CXX)
  if(WIN32)
    set_target_properties(${target} PROPERTIES PREFIX "")
  endif()
  ky_set_target_defaults(${target})
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_link_libraries(${target} PUBLIC ${arg_DEPENDS} PRIVATE ${arg_PRIVATE_DEPENDS})
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${generated}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/KyApplication>)

  generate_export_header(${target}
    BASE_NAME ${target} EXPORT_MACRO_NAME ${upper}_EXPORT EXPORT_FILE_NAME ${generated}/${target}Export.h)
  install(FILES ${generated}/${target}Export.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/KyApplication COMPONENT development)
  install(TARGETS ${target} EXPORT KyApplicationTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
endfunction()

# ky_add_part(<library> <part>)
# A part of the library that is compiled in its own way; packages fill it by its name.
function(ky_add_part library part)
  add_library(${part} OBJECT)
  ky_set_target_defaults(${part})
  target_compile_definitions(${part} PRIVATE ${library}_EXPORTS)
  target_include_directories(${part} PRIVATE $<TARGET_PROPERTY:${library},INCLUDE_DIRECTORIES>)
  target_sources(${library} PRIVATE $<TARGET_OBJECTS:${part}>)
endfunction()

# ky_add_optional_part(<part> <with it> <its library> <target> <stem>)
# A part of the application library that needs a library more: <stem>.cpp. A build without it has <stem>Missing.cpp in
# the target instead.
function(ky_add_optional_part part with library target stem)
  if(NOT with)
    target_sources(${target} PRIVATE ${stem}Missing.cpp)
    return()
  endif()
  ky_add_part(KyApplication ${part})
  target_sources(${part} PRIVATE ${stem}.cpp)
  target_link_libraries(${part} PRIVATE
    KyScene Qt5::Widgets PkgConfig::lua Boost::headers fmt::fmt Luabind::Headers ${library})
  target_link_libraries(KyApplication PRIVATE ${library})
endfunction()

# ky_add_packages(<package folder>...)
# The packages of a module, in the order of their dependencies.
function(ky_add_packages)
  foreach(package IN LISTS ARGN)
    add_subdirectory(${package})
  endforeach()
endfunction()

# ky_add_package(<library> HEADERS <public>... SOURCES <file>... [PLATFORM_SOURCES <stem>...])
# Adds a package's files to its library. A platform stem Src/KyThing stands for
# Src/KyThingLinux.cpp or Src/KyThingWindows.cpp.
function(ky_add_package library)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;SOURCES;PLATFORM_SOURCES")
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "ky_add_package(${library}): unknown arguments ${arg_UNPARSED_ARGUMENTS}")
  endif()
  if(WIN32)
    list(TRANSFORM arg_PLATFORM_SOURCES APPEND Windows.cpp)
  else()
    list(TRANSFORM arg_PLATFORM_SOURCES APPEND Linux.cpp)
  endif()
  target_sources(${library} PRIVATE ${arg_HEADERS} ${arg_SOURCES} ${arg_PLATFORM_SOURCES})
  target_include_directories(${library} PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/Src>)
  install(FILES ${arg_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/KyApplication COMPONENT development)
  set(KY_PACKAGE_LIBRARY ${library} PARENT_SCOPE)
endfunction()

# ky_add_executable(<name> SOURCES <file>... [CORE <library>] [DEPENDS <library>...])
# A program. All sources but main.cpp form the static library CORE (KyHostCore unless given),
# which the package's tests link.
function(ky_add_executable name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "CORE" "HEADERS;SOURCES;DEPENDS")
  if(NOT arg_CORE)
    set(arg_CORE KyHostCore)
  endif()
  set(main ${arg_SOURCES})
  list(FILTER main INCLUDE REGEX "(^|/)[Mm]ain\\.cpp$")
  list(REMOVE_ITEM arg_SOURCES ${main})

  add_library(${arg_CORE} STATIC ${arg_HEADERS} ${arg_SOURCES})
  set_target_properties(${arg_CORE} PROPERTIES LINKER_LANGUAGE CXX)
  ky_set_target_defaults(${arg_CORE})
  target_include_directories(${arg_CORE} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/Src)
  target_link_libraries(${arg_CORE} PUBLIC Ky::Application ${arg_DEPENDS})
  ky_precompile_headers(${arg_CORE} ${KY_STANDARD_HEADERS} ${KY_QT_HEADERS})

  add_executable(${name} ${main})
  ky_set_target_defaults(${name})
  target_link_libraries(${name} PRIVATE ${arg_CORE})
  install(TARGETS ${name} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT host)
  set(KY_PACKAGE_LIBRARY ${arg_CORE} PARENT_SCOPE)
endfunction()

# ky_add_driver(<name> HEADERS <file>... SOURCES <file>... DEPENDS <library>...)
# A driver of input devices: a module beside the library, loaded by the host. Everything but Src/KyDriverEntry*.cpp
# forms the static library <name>Core, which the package's tests link.
function(ky_add_driver name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;SOURCES;DEPENDS")
  add_library(${name}Core STATIC ${arg_HEADERS} ${arg_SOURCES})
  ky_set_target_defaults(${name}Core)
  set_target_properties(${name}Core PROPERTIES POSITION_INDEPENDENT_CODE ON)
  target_include_directories(${name}Core PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/Src)
  target_link_libraries(${name}Core PUBLIC Ky::Application ${arg_DEPENDS})

  add_library(${name} MODULE Src/KyDriverEntry$<IF:$<PLATFORM_ID:Windows>,Windows,Linux>.cpp)
  ky_set_target_defaults(${name})
  target_link_libraries(${name} PRIVATE ${name}Core)
  set_target_properties(${name} PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${KY_DRIVER_OUTPUT_DIR}
    INSTALL_RPATH "$ORIGIN/../..")
  install(TARGETS ${name} LIBRARY DESTINATION ${KY_DRIVER_INSTALL_DIR} COMPONENT runtime)
  set(KY_PACKAGE_LIBRARY ${name}Core PARENT_SCOPE)
endfunction()

# ky_add_test(<name> SOURCES <file>... [LIBRARIES <library>...] [LABELS <label>])
# A GoogleTest program of the package named in the folder's ky_add_package. Each case is a test of
# its own; with the label gl, where a context takes long to create, the program is one test.
# The package's Test folder is KY_TEST_DATA_DIR.
function(ky_add_test name)
  if(NOT KY_BUILD_TESTS)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES;LABELS")
  add_executable(${name} ${arg_SOURCES})
  ky_set_target_defaults(${name})
  target_compile_definitions(${name} PRIVATE KY_TEST_DATA_DIR="${CMAKE_CURRENT_SOURCE_DIR}/Test")
  target_link_libraries(${name} PRIVATE ${KY_PACKAGE_LIBRARY} ${arg_LIBRARIES} GTest::gtest GTest::gtest_main)
  ky_reuse_test_headers(${name})

  if(KY_SANITIZE)
    set(environment ENVIRONMENT "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tools/leaks.supp")
  endif()
  if(gl IN_LIST arg_LABELS)
    add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
    set_tests_properties(${name} PROPERTIES LABELS "${arg_LABELS}" TIMEOUT 600 ${environment})
    return()
  endif()
  gtest_discover_tests(${name}
    DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
    TEST_PREFIX ${name}.
    PROPERTIES TIMEOUT 120 RESOURCE_LOCK ${name} ${environment})
endfunction()
