// The machine operations of this level against their plain definitions, for node.
#include <cstdio>

#include "kernels/machine_check.h"

int main() {
    for (unsigned seed = 0; seed < 20000; ++seed)
        if (const char* fault = kel::machineCheck().firstFault(seed)) {
            std::printf("%s differs for seed %u\n", fault, seed);
            return 1;
        }
    std::printf("level %s: every operation does as its definition\n", kel::nameOf(kel::level()));
    return 0;
}
