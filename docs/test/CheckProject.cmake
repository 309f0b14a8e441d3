# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT
cmake_minimum_required(VERSION 3.25)

# Configures each block of CMake in the documents as a project of its own, beside the files that they speak of. The
# package is a stand-in with its targets: nothing is built.
file(STRINGS ${BLOCKS}/blocks.txt blocks REGEX "^cmake\t")
foreach(block IN LISTS blocks)
  string(REPLACE "\t" ";" block "${block}")
  list(GET block 2 name)
  set(project ${WORK_DIR}/${name})
  file(REMOVE_RECURSE ${project})
  file(COPY ${BLOCKS}/ DESTINATION ${project} FILES_MATCHING PATTERN *.cpp PATTERN *.h)
  configure_file(${BLOCKS}/${name} ${project}/CMakeLists.txt COPYONLY)
  file(WRITE ${project}/KyApplicationConfig.cmake
    "foreach(name Foundation Scene Application)\n  add_library(Ky::\${name} INTERFACE IMPORTED)\nendforeach()\n")
  file(WRITE ${project}/KyApplicationConfigVersion.cmake
    "set(PACKAGE_VERSION ${VERSION})
if(NOT PACKAGE_FIND_VERSION VERSION_GREATER PACKAGE_VERSION)
  set(PACKAGE_VERSION_COMPATIBLE TRUE)
endif()
")
  execute_process(COMMAND ${CMAKE_COMMAND} -S ${project} -B ${project}/build -G ${GENERATOR}
    -D KyApplication_DIR=${project} -D CMAKE_CXX_COMPILER=${CXX} -D CMAKE_CXX_COMPILER_FORCED=ON
    COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endforeach()
list(LENGTH blocks count)
message(STATUS "${count} projects were configured")
