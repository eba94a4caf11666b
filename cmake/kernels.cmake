# Kernel sources are compiled once per instruction-set level, into objects that define exactly one symbol each: a table in
# namespace kel::<level>.

# The levels, each of which includes the ones before it, and what a machine must have for them: the features become compiler
# flags and, in the generated kernels/levels.h, what the library asks the machine for. Names as in g++'s -m. Level plain
# needs nothing: it is what any machine can run.
if(CMAKE_CXX_BYTE_ORDER STREQUAL BIG_ENDIAN)
  message(FATAL_ERROR "Orvella's kernels are written for little-endian machines")
elseif(EMSCRIPTEN)
  set(ORVELLA_LEVELS wasm) # as sse4, by emscripten's headers
elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
  set(ORVELLA_LEVELS plain sse4 avx2 avx512)
elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "aarch64|arm64" AND NOT ORVELLA_SIMD_LEVEL STREQUAL plain)
  set(ORVELLA_LEVELS neon) # which every aarch64 has
  if(ORVELLA_PLAIN_TOO) # for the tests of it
    set(ORVELLA_LEVELS plain neon)
  endif()
else()
  set(ORVELLA_LEVELS plain)
endif()
set(ORVELLA_FEATURES_sse4 ssse3 sse4.1)
set(ORVELLA_FEATURES_wasm ${ORVELLA_FEATURES_sse4} simd128)
set(ORVELLA_FEATURES_avx2 avx2)
set(ORVELLA_FEATURES_avx512 avx512f avx512bw avx512vl avx512vbmi avx512vnni) # Ice Lake, Zen 4 and later

list(GET ORVELLA_LEVELS -1 top)
set(ORVELLA_SIMD_LEVEL ${top} CACHE STRING "Highest instruction-set level that is built")
set_property(CACHE ORVELLA_SIMD_LEVEL PROPERTY STRINGS ${ORVELLA_LEVELS})
list(FIND ORVELLA_LEVELS "${ORVELLA_SIMD_LEVEL}" top)
if(top EQUAL -1)
  message(FATAL_ERROR "ORVELLA_SIMD_LEVEL is '${ORVELLA_SIMD_LEVEL}', but must be one of: ${ORVELLA_LEVELS}")
endif()
math(EXPR count "${top} + 1")
list(SUBLIST ORVELLA_LEVELS 0 ${count} ORVELLA_LEVELS) # from here on those that are built

# KEL_LEVELS(X, ...): X(level, condition, ...) for each
set(levels "")
foreach(level IN LISTS ORVELLA_LEVELS)
  set(condition true)
  if(NOT EMSCRIPTEN) # where a machine that lacks them does not load the module
    foreach(feature IN LISTS ORVELLA_FEATURES_${level})
      string(APPEND condition " && __builtin_cpu_supports(\"${feature}\")")
    endforeach()
  endif()
  string(APPEND levels " \\\n    X(${level}, ${condition} __VA_OPT__(, ) __VA_ARGS__)")
endforeach()
set(ORVELLA_GENERATED ${PROJECT_BINARY_DIR}/generated)
file(CONFIGURE OUTPUT ${ORVELLA_GENERATED}/kernels/levels.h
  CONTENT "// Generated: the list stands in cmake/kernels.cmake.\n#pragma once\n#define KEL_LEVELS(X, ...)@levels@\n" @ONLY)

# orvella_add_per_level(<name> <source>...): builds the object libraries <name>_<level> and lists them in <name>.
function(orvella_add_per_level name)
  foreach(level IN LISTS ORVELLA_LEVELS)
    set(objects ${name}_${level})
    add_library(${objects} OBJECT ${ARGN})
    target_link_libraries(${objects} PRIVATE orvella_options)
    target_include_directories(${objects} PRIVATE ${PROJECT_SOURCE_DIR}/src ${ORVELLA_GENERATED}
      ${PROJECT_SOURCE_DIR}/include ${PROJECT_BINARY_DIR}/include)
    target_compile_definitions(${objects} PRIVATE ORVELLA_STATIC KEL_LEVEL=${level} $<$<STREQUAL:${level},plain>:KEL_PLAIN>)
    list(TRANSFORM ORVELLA_FEATURES_${level} PREPEND -m OUTPUT_VARIABLE flags)
    if(MINGW)
      # g++ takes the stack to be aligned for vectors of 32 bytes and more, which it is not on Windows (bug 54412).
      list(APPEND flags -Wa,-muse-unaligned-vector-move)
    endif()
    # No link-time optimisation: it could mix code of one level into another.
    set(optimisation -O3)
    if(ORVELLA_INSTRUMENTED)
      set(optimisation -O1) # takes a third less time to compile
      if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND level STREQUAL plain AND NOT ORVELLA_SIMD_LEVEL STREQUAL plain)
        # g++ takes three times as long to check values, too, where a vector is many of them; clang does (preset "ubsan").
        list(APPEND optimisation -fno-sanitize=undefined)
      endif()
    endif()
    target_compile_options(${objects} PRIVATE ${flags} ${optimisation} -Wno-psabi -fno-lto)
    list(APPEND libraries ${objects})
  endforeach()
  set(${name} ${libraries} PARENT_SCOPE)
endfunction()
