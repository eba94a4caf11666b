# Kernel sources are compiled once per instruction-set level, into objects that define exactly one symbol each: a table in
# namespace kel::<level>.

# The levels, each of which includes the ones before it, and what a machine must have for them: the features become compiler
# flags and, in the generated kernels/levels.h, what the library asks the machine for. Names as in g++'s -m.
set(ORVELLA_LEVELS baseline sse4 avx2 avx512)
set(ORVELLA_FEATURES_baseline "") # SSE2, which every x86-64 has
set(ORVELLA_FEATURES_sse4 ssse3 sse4.1)
set(ORVELLA_FEATURES_avx2 avx2)
set(ORVELLA_FEATURES_avx512 avx512f avx512bw avx512vl avx512vbmi avx512vnni) # Ice Lake, Zen 4 and later
if(EMSCRIPTEN)
  set(ORVELLA_LEVELS sse4) # by emscripten's headers, in WebAssembly's vectors of 16 bytes
endif()

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

# orvella_add_kernels(<source>...): builds the object libraries orvella_kernels_<level> and lists them in ORVELLA_KERNELS.
function(orvella_add_kernels)
  foreach(level IN LISTS ORVELLA_LEVELS)
    set(kernels orvella_kernels_${level})
    add_library(${kernels} OBJECT ${ARGN})
    target_link_libraries(${kernels} PRIVATE orvella_options)
    target_include_directories(${kernels} PRIVATE ${PROJECT_SOURCE_DIR}/src ${ORVELLA_GENERATED}
      ${PROJECT_SOURCE_DIR}/include ${PROJECT_BINARY_DIR}/include)
    target_compile_definitions(${kernels} PRIVATE KEL_LEVEL=${level})
    list(TRANSFORM ORVELLA_FEATURES_${level} PREPEND -m OUTPUT_VARIABLE flags)
    if(EMSCRIPTEN)
      list(APPEND flags -msimd128)
    endif()
    # No link-time optimisation: it could mix code of one level into another.
    target_compile_options(${kernels} PRIVATE ${flags} -O3 -Wno-psabi -fno-lto)
    list(APPEND libraries ${kernels})
  endforeach()
  set(ORVELLA_KERNELS ${libraries} PARENT_SCOPE)
endfunction()
