#include <gtest/gtest.h>

#include "kernels/machine_check.h"
#include "support/levels.h"

namespace {

TEST(Machine, DoesAsThePlainDefinitions) {
    support::atEveryLevel([] {
        for (unsigned seed = 0; seed < 20000; ++seed) {
            const char* fault = kel::machineCheck().firstFault(seed);
            ASSERT_EQ(fault, nullptr) << fault << " differs for seed " << seed;
        }
    });
}

} // namespace
