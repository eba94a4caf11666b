// Prints the level that the library chooses.
#include <cstdio>

#include "kernels/level.h"

int main() { std::puts(kel::nameOf(kel::level())); }
