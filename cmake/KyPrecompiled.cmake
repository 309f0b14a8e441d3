# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT

# What nearly every source of a target includes, read once. Sources include what they need all the same: the build
# without these headers (KY_PRECOMPILE_HEADERS=OFF) is the one that tells.

option(KY_PRECOMPILE_HEADERS "Precompile the headers of the standard library, Qt, luabind and GoogleTest" ON)

set(KY_STANDARD_HEADERS
  <algorithm> <array> <cmath> <cstddef> <cstdint> <functional> <limits> <map> <memory> <span> <string> <string_view>
  <type_traits> <utility> <vector>)
set(KY_SCRIPT_HEADERS <lua.hpp> <luabind/luabind.hpp> <luabind/operator.hpp>)
set(KY_QT_HEADERS <QCoreApplication> <QFile> <QFileInfo> <QHash> <QObject> <QString> <QVariant> <QWidget>)

# A compiler cache works on preprocessed text, in which GCC is to name the precompiled headers. GCC 12 forgets which of
# them are the system's, and takes the copying of short texts there for copying without end.
function(ky_use_precompiled_headers target)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    return()
  endif()
  target_compile_options(${target} PRIVATE -fpch-preprocess)
  if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
  endif()
endfunction()

# ky_precompile_headers(<target> <header>...)
function(ky_precompile_headers target)
  if(KY_PRECOMPILE_HEADERS)
    target_precompile_headers(${target} PRIVATE ${ARGN})
    ky_use_precompiled_headers(${target})
  endif()
endfunction()

# Qt asks for position-independent code, the headers are to be of the same kind for all tests.
if(NOT MSVC)
  set(KY_TEST_CODE_MODEL -fPIC)
endif()

# ky_reuse_test_headers(<target>)
# The tests share one set; it is made for the first of them.
function(ky_reuse_test_headers target)
  if(NOT KY_PRECOMPILE_HEADERS)
    return()
  endif()
  if(NOT TARGET KyTestHeaders)
    file(WRITE ${CMAKE_BINARY_DIR}/KyTestHeaders.cpp "int main() {}\n")
    add_executable(KyTestHeaders EXCLUDE_FROM_ALL ${CMAKE_BINARY_DIR}/KyTestHeaders.cpp)
    ky_set_target_defaults(KyTestHeaders)
    set_target_properties(KyTestHeaders PROPERTIES AUTOMOC OFF)
    target_link_libraries(KyTestHeaders PRIVATE GTest::gtest)
    target_compile_options(KyTestHeaders PRIVATE ${KY_TEST_CODE_MODEL})
    target_precompile_headers(KyTestHeaders PRIVATE <gtest/gtest.h> ${KY_STANDARD_HEADERS})
  endif()
  target_precompile_headers(${target} REUSE_FROM KyTestHeaders)
  ky_use_precompiled_headers(${target})
  target_compile_options(${target} PRIVATE ${KY_TEST_CODE_MODEL})
  # A test whose libraries bring definitions of their own reads the headers as text.
  set_target_properties(${target} PROPERTIES PCH_WARN_INVALID OFF)
endfunction()
