#include "frame/outputs.h"

namespace kel {

namespace {

constexpr DescribedOutput is(u32 output) { return {Refusal::none, output}; }
constexpr DescribedOutput isNone(Refusal refusal) { return {refusal, 0}; }

DescribedOutput byDepth(u32 bits, u32 depth1, u32 output1, u32 depth2, u32 output2) {
    return bits == depth1 ? is(output1) : bits == depth2 ? is(output2) : isNone(Refusal::format);
}

DescribedOutput monoOutputOf(const OrvPixelInfo& to) {
    if (to.ColorSpace == OrvColorSpaceRec709)
        return byDepth(to.BitsPerPixel, 8, OrvOutputMono8Rec709, 16, OrvOutputMono16Rec709);
    // Only full-depth native words can be written; those tagged BT.709 are not asked.
    if (to.BitsPerPixel == 16 && (to.Endianness == 1 || to.BitsUsed != 16)) return isNone(Refusal::notOffered);
    return byDepth(to.BitsPerPixel, 8, OrvOutputMono8, 16, OrvOutputMono16);
}

} // namespace

DescribedOutput outputOf(const OrvPixelInfo& to) {
    const u32 bits = to.BitsPerPixel;
    switch (to.PixelLayout) {
    case OrvPixelLayoutMono:
        if (to.ColorSpace <= OrvColorSpaceRec601) return monoOutputOf(to);
        [[fallthrough]]; // a mono image of unknown colour space is taken for RGB
    case OrvPixelLayoutRgb: return byDepth(bits, 24, OrvOutputRgb24, 48, OrvOutputRgb48);
    case OrvPixelLayoutBgr: return byDepth(bits, 24, OrvOutputBgr24, 48, OrvOutputBgr48);
    case OrvPixelLayoutRgba: return bits == 32 ? is(OrvOutputRgba32) : isNone(Refusal::format);
    case OrvPixelLayoutBgra: return bits == 32 ? is(OrvOutputBgra32) : isNone(Refusal::format);
    case OrvPixelLayoutYuv422: return is(OrvOutputYuv422);
    default: return isNone(Refusal::format);
    }
}

} // namespace kel
