// The eleven outputs as image descriptions: one row per OrvOutputCode, and the way back from a description to the code.
#pragma once
#include "orvella/orv.h"
#include "support/refusal.h"

namespace kel {

struct OutputFormat {
    u32 bits; // per pixel, all of them used
    OrvPixelLayout layout;
    OrvColorSpace colorSpace;
};

constexpr OutputFormat outputFormats[] = {
    {8, OrvPixelLayoutMono, OrvColorSpaceRec601},    // OrvOutputMono8
    {24, OrvPixelLayoutBgr, OrvColorSpaceNone},      // OrvOutputBgr24
    {32, OrvPixelLayoutBgra, OrvColorSpaceNone},     // OrvOutputBgra32
    {24, OrvPixelLayoutRgb, OrvColorSpaceNone},      // OrvOutputRgb24
    {32, OrvPixelLayoutRgba, OrvColorSpaceNone},     // OrvOutputRgba32
    {8, OrvPixelLayoutMono, OrvColorSpaceRec709},    // OrvOutputMono8Rec709
    {16, OrvPixelLayoutYuv422, OrvColorSpaceRec601}, // OrvOutputYuv422
    {16, OrvPixelLayoutMono, OrvColorSpaceRec601},   // OrvOutputMono16
    {16, OrvPixelLayoutMono, OrvColorSpaceRec709},   // OrvOutputMono16Rec709
    {48, OrvPixelLayoutBgr, OrvColorSpaceNone},      // OrvOutputBgr48
    {48, OrvPixelLayoutRgb, OrvColorSpaceNone},      // OrvOutputRgb48
};
static_assert(sizeof outputFormats / sizeof *outputFormats == OrvOutputRgb48 + 1);

// The output that a destination describes.
struct DescribedOutput {
    Refusal refusal;
    u32 output;
};
DescribedOutput outputOf(const OrvPixelInfo& destination);

} // namespace kel
