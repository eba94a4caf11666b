#include "frame/outputs.h"

namespace kel {

namespace {

constexpr Result badDestination = badArgument(2); // of OrvImageTransform

Result byDepth(u32 bits, u32 depth1, u32 output1, u32 depth2, u32 output2, u32& output) {
    if (bits != depth1 && bits != depth2) return badDestination;
    output = bits == depth1 ? output1 : output2;
    return success;
}

Result monoOutputOf(const OrvPixelInfo& to, u32& output) {
    if (to.ColorSpace == OrvColorSpaceRec709)
        return byDepth(to.BitsPerPixel, 8, OrvOutputMono8Rec709, 16, OrvOutputMono16Rec709, output);
    // Only full-depth native words can be written; those tagged BT.709 were never asked.
    if (to.BitsPerPixel == 16 && (to.Endianness == 1 || to.BitsUsed != 16)) return notImplemented;
    return byDepth(to.BitsPerPixel, 8, OrvOutputMono8, 16, OrvOutputMono16, output);
}

} // namespace

Result outputOf(const OrvPixelInfo& to, u32& output) {
    const u32 bits = to.BitsPerPixel;
    switch (to.PixelLayout) {
    case OrvPixelLayoutMono:
        if (to.ColorSpace <= OrvColorSpaceRec601) return monoOutputOf(to, output);
        [[fallthrough]]; // a mono image of unknown colour space is taken for RGB
    case OrvPixelLayoutRgb: return byDepth(bits, 24, OrvOutputRgb24, 48, OrvOutputRgb48, output);
    case OrvPixelLayoutBgr: return byDepth(bits, 24, OrvOutputBgr24, 48, OrvOutputBgr48, output);
    case OrvPixelLayoutRgba: return byDepth(bits, 32, OrvOutputRgba32, 32, OrvOutputRgba32, output);
    case OrvPixelLayoutBgra: return byDepth(bits, 32, OrvOutputBgra32, 32, OrvOutputBgra32, output);
    case OrvPixelLayoutYuv422: output = OrvOutputYuv422; return success;
    default: return badDestination;
    }
}

} // namespace kel
