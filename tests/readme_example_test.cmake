# The README shows the example as it is compiled.
file(READ ${SOURCE}/README.md readme)
file(READ ${SOURCE}/examples/bayer_to_bgr.cpp example)
string(FIND "${readme}" "```cpp\n${example}```" at)
if(at EQUAL -1)
  message(FATAL_ERROR "README.md does not show examples/bayer_to_bgr.cpp as it is")
endif()
