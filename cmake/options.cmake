# What every target of the project is compiled with.
add_library(orvella_options INTERFACE)
target_compile_features(orvella_options INTERFACE cxx_std_20)
target_compile_options(orvella_options INTERFACE
  -Wall -Wextra -Wconversion -Wshadow -Wmissing-declarations
  -ffp-contract=off # a fused multiply-add would change the double-precision formulas
  $<$<BOOL:${EMSCRIPTEN}>:-Wno-shorten-64-to-32> # sizes that are computed with 64 bits, of what is in memory
  $<$<BOOL:${ORVELLA_WERROR}>:-Werror>)
if(WIN32)
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin) # programs look for DLLs beside them
endif()
if(MINGW)
  add_link_options(-static) # the compiler's libraries and those of threads: people have no DLLs of them
endif()
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# Sanitizers and coverage add code of their own to every object: kernels are no longer bare, and a library that is built so
# links only into programs that are built so.
set(ORVELLA_SANITIZE "" CACHE STRING "Sanitizers, like address,undefined or thread")
option(ORVELLA_COVERAGE "Count which lines run (gcov)" OFF)
if(ORVELLA_SANITIZE)
  add_compile_options(-fsanitize=${ORVELLA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ORVELLA_SANITIZE})
endif()
if(ORVELLA_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()
if(ORVELLA_SANITIZE OR ORVELLA_COVERAGE)
  set(ORVELLA_INSTRUMENTED TRUE)
endif()
