# orvella_add_kernels(<source>...): compile kernel sources once per instruction-set level, into the object libraries
# orvella_kernels_<level>, and list these in ORVELLA_KERNELS. Each object defines exactly one symbol, a table in namespace
# kel::<level>.
set(ORVELLA_SIMD_LEVEL avx512 CACHE STRING "Highest instruction-set level that is built")
set(ORVELLA_LEVELS baseline sse4 avx2 avx512)
set_property(CACHE ORVELLA_SIMD_LEVEL PROPERTY STRINGS ${ORVELLA_LEVELS})

set(ORVELLA_FLAGS_baseline "")
set(ORVELLA_FLAGS_sse4 -mssse3 -msse4.1)
set(ORVELLA_FLAGS_avx2 -mavx2)
set(ORVELLA_FLAGS_avx512 -mavx512bw -mavx512vl -mavx512vbmi -mavx512vnni)

list(FIND ORVELLA_LEVELS "${ORVELLA_SIMD_LEVEL}" ORVELLA_TOP_LEVEL)
if(ORVELLA_TOP_LEVEL EQUAL -1)
  message(FATAL_ERROR "ORVELLA_SIMD_LEVEL is '${ORVELLA_SIMD_LEVEL}', but must be one of: ${ORVELLA_LEVELS}")
endif()

function(orvella_add_kernels)
  foreach(index RANGE ${ORVELLA_TOP_LEVEL})
    list(GET ORVELLA_LEVELS ${index} level)
    set(kernels orvella_kernels_${level})
    add_library(${kernels} OBJECT ${ARGN})
    target_link_libraries(${kernels} PRIVATE orvella_options)
    target_include_directories(${kernels} PRIVATE ${PROJECT_SOURCE_DIR}/src)
    target_compile_definitions(${kernels} PRIVATE KEL_LEVEL=${level} KEL_TOP_LEVEL=${ORVELLA_TOP_LEVEL})
    # No link-time optimisation: it could mix code of one level into another.
    target_compile_options(${kernels} PRIVATE ${ORVELLA_FLAGS_${level}} -O3 -Wno-psabi -fno-lto)
    list(APPEND libraries ${kernels})
  endforeach()
  set(ORVELLA_KERNELS ${libraries} PARENT_SCOPE)
endfunction()
