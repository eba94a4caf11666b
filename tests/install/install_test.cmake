# Installs the build into an empty prefix and uses it as a stranger would: by the CMake package, and by pkg-config after the
# tree has been moved.
#   cmake -DBUILD=... -DSOURCE=... -DSCRATCH=... -DC=... -DCXX=... [-DTOOLCHAIN=... -DEMULATOR=...] -P install_test.cmake
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    list(JOIN ARGN " " command)
    message(FATAL_ERROR "${command}\n${output}")
  endif()
endfunction()

separate_arguments(EMULATOR)
file(REMOVE_RECURSE ${SCRATCH})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${SCRATCH}/first)
set(compilers -DCMAKE_C_COMPILER=${C} -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_PREFIX_PATH=${SCRATCH}/first)
if(TOOLCHAIN) # which looks for packages among those of the other machine
  file(GLOB_RECURSE package ${SCRATCH}/first/orvella-config.cmake)
  cmake_path(GET package PARENT_PATH package)
  set(compilers -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN} -Dorvella_DIR=${package})
endif()
file(GLOB converter ${SCRATCH}/first/bin/orvella ${SCRATCH}/first/bin/orvella.exe)
if(converter)
  run(${EMULATOR} ${converter} --version)
endif()
set(ENV{WINEPATH} ${SCRATCH}/first/bin)

foreach(only_c OFF ON)
  set(build ${SCRATCH}/build-${only_c})
  run(${CMAKE_COMMAND} -S ${SOURCE}/consumer -B ${build} -DONLY_C=${only_c} ${compilers})
  run(${CMAKE_COMMAND} --build ${build})
  run(${CMAKE_CTEST_COMMAND} --test-dir ${build} --output-on-failure)
endforeach()

# As a part of another project; nothing is built, so there would be an error if it had anything to install.
run(${CMAKE_COMMAND} -S ${SOURCE}/parent -B ${SCRATCH}/parent -DORVELLA=${SOURCE}/../.. ${compilers})
run(${CMAKE_COMMAND} --install ${SCRATCH}/parent --prefix ${SCRATCH}/nothing)

find_program(PKG_CONFIG pkg-config)
if(NOT PKG_CONFIG)
  message(FATAL_ERROR "pkg-config is missing (Debian package pkg-config)")
endif()
file(RENAME ${SCRATCH}/first ${SCRATCH}/moved)
file(GLOB_RECURSE module ${SCRATCH}/moved/orvella.pc)
cmake_path(GET module PARENT_PATH module_directory)
set(ENV{PKG_CONFIG_PATH} ${module_directory})
if(STATIC)
  set(static --static)
endif()
execute_process(COMMAND ${PKG_CONFIG} ${static} --cflags --libs orvella OUTPUT_VARIABLE flags
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags)
run(${C} -std=c99 ${SOURCE}/consumer/program_c.c ${flags} -o ${SCRATCH}/by-pkg-config.exe)
cmake_path(GET module_directory PARENT_PATH library_directory)
run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${library_directory} WINEPATH=${SCRATCH}/moved/bin ${EMULATOR} ${SCRATCH}/by-pkg-config.exe)
