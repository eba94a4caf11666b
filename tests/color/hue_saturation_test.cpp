#include "color/hue_saturation.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

TEST(HueSaturation, BeginsNeutral) {
    const kel::HueSaturation& state = kel::hueSaturation;
    EXPECT_EQ(state.hue, 0);
    EXPECT_EQ(state.saturation, 1);
    EXPECT_TRUE(std::ranges::all_of(state.tables.uToR, [](int entry) { return entry == 0; }));
    EXPECT_TRUE(std::ranges::all_of(state.tables.vToB, [](int entry) { return entry == 0; }));
    EXPECT_EQ(state.tables.uToB[0], -128); // -226 clamped
    EXPECT_EQ(state.tables.uToB[100], -49);
    EXPECT_EQ(state.tables.vToR[255], 127); // 178 clamped
    EXPECT_EQ(state.tables.uToG[255], -43);
    EXPECT_EQ(state.tables.vToG[0], 91);
}

TEST(HueSaturation, RotatesAndScales) {
    constexpr float quarterTurn = 1.5707964F;
    kel::HueSaturation state;
    state.use(quarterTurn, 1);
    EXPECT_EQ(state.tables.uToR[228], 127); // 140 clamped: red takes over U
    EXPECT_EQ(state.tables.uToR[178], 70);  // 50 * 1.4022
    EXPECT_EQ(state.tables.vToB[178], -88); // -50 * 1.771
    EXPECT_EQ(state.tables.uToB[178], 0);
    state.use(0, 0.5F);
    EXPECT_EQ(state.tables.uToB[178], 44); // 50 * 1.771 / 2
    EXPECT_EQ(state.tables.uToG[28], 17);  // 100 * 0.3457 / 2
    state.use(quarterTurn, 0.5F);
    EXPECT_EQ(state.tables.uToR[178], 70); // the saturation leaves sine terms alone
}

} // namespace
