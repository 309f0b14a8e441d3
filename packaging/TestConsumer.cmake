# SPDX-FileCopyrightText: 2026 The KyApplication authors
# SPDX-License-Identifier: MIT

# Run by CTest: see the CMakeLists.txt beside this file.

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ECHO STDOUT COMMAND_ERROR_IS_FATAL ANY)
endfunction()

string(REPLACE ";" "," sanitizers "${SANITIZE}")
set(flags -std=c++20)
if(sanitizers)
  list(APPEND flags -fsanitize=${sanitizers})
endif()
list(JOIN flags " " flag_text)
set(prefix ${WORK_DIR}/prefix)

file(REMOVE_RECURSE ${prefix} ${WORK_DIR}/cmake-consumer)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix}
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

run(${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${WORK_DIR}/cmake-consumer -G ${GENERATOR}
  -D CMAKE_PREFIX_PATH=${prefix} -D CMAKE_CXX_COMPILER=${CXX} -D "CMAKE_CXX_FLAGS=${flag_text}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/cmake-consumer)
run(${WORK_DIR}/cmake-consumer/consumer)

set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIB_DIR}/pkgconfig)
execute_process(COMMAND pkg-config --cflags --libs ky-application
  OUTPUT_VARIABLE pc_flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(pc_flags UNIX_COMMAND "${pc_flags}")
run(${CXX} ${flags} -fPIC ${CONSUMER_DIR}/main.cpp -o ${WORK_DIR}/pc-consumer
  ${pc_flags} -Wl,-rpath,${prefix}/${LIB_DIR})
run(${WORK_DIR}/pc-consumer)
