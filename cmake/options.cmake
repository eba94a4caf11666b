# What every target of the project is compiled with.
add_library(orvella_options INTERFACE)
target_compile_features(orvella_options INTERFACE cxx_std_20)
target_compile_options(orvella_options INTERFACE
  -Wall -Wextra -Wconversion -Wshadow -Wmissing-declarations
  -ffp-contract=off # a fused multiply-add would change the double-precision formulas
  $<$<BOOL:${ORVELLA_WERROR}>:-Werror>)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
