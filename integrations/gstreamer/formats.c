#include "formats.h"

#include <string.h>

#define WORDS(bits, endianness, layout, pattern)                                                                       \
    { 16, (bits), 1, (endianness), (layout), (pattern), OrvColorSpaceNone }
#define BYTES(bits, layout, pattern, space)                                                                            \
    { (bits), (bits), 1, 0, (layout), (pattern), (space) }

/* 8 bits, under both of their names, and the words that GStreamer 1.24, V4L2 and libcamera name. */
#define MOSAIC_WORDS(name, bits, pattern)                                                                              \
    {"video/x-bayer", name #bits "le", WORDS(bits, 0, OrvPixelLayoutRaw, pattern)}, {                                  \
        "video/x-bayer", name #bits "be", WORDS(bits, 1, OrvPixelLayoutRaw, pattern)                                   \
    }
#define MOSAIC(name, pattern)                                                                                          \
    {"video/x-bayer", name, BYTES(8, OrvPixelLayoutRaw, pattern, OrvColorSpaceNone)},                                  \
        {"video/x-bayer", name "le", BYTES(8, OrvPixelLayoutRaw, pattern, OrvColorSpaceNone)},                         \
        MOSAIC_WORDS(name, 10, pattern), MOSAIC_WORDS(name, 12, pattern), MOSAIC_WORDS(name, 14, pattern),             \
        MOSAIC_WORDS(name, 16, pattern)

const SourceFormat source_formats[] = {
    MOSAIC("rggb", OrvBayerPatternRGGB),
    MOSAIC("grbg", OrvBayerPatternGRBG),
    MOSAIC("gbrg", OrvBayerPatternGBRG),
    MOSAIC("bggr", OrvBayerPatternBGGR),
    {"video/x-raw", "GRAY8", BYTES(8, OrvPixelLayoutMono, OrvBayerPatternNone, OrvColorSpaceNone)},
    {"video/x-raw", "GRAY16_LE", WORDS(16, 0, OrvPixelLayoutMono, OrvBayerPatternNone)},
    {"video/x-raw", "GRAY16_BE", WORDS(16, 1, OrvPixelLayoutMono, OrvBayerPatternNone)},
    {"video/x-raw", "UYVY", BYTES(16, OrvPixelLayoutYuv422, OrvBayerPatternNone, OrvColorSpaceRec601)},
    {"video/x-raw", "RGB", BYTES(24, OrvPixelLayoutRgb, OrvBayerPatternNone, OrvColorSpaceNone)},
    {"video/x-raw", "BGR", BYTES(24, OrvPixelLayoutBgr, OrvBayerPatternNone, OrvColorSpaceNone)},
};
const guint source_format_count = G_N_ELEMENTS(source_formats);

const OutputFormat output_formats[] = {
    {"BGR", OrvOutputBgr24},   {"RGB", OrvOutputRgb24},        {"BGRx", OrvOutputBgra32}, {"RGBx", OrvOutputRgba32},
    {"GRAY8", OrvOutputMono8}, {"GRAY16_LE", OrvOutputMono16}, {"UYVY", OrvOutputYuv422},
};
const guint output_format_count = G_N_ELEMENTS(output_formats);

const SourceFormat* source_format_of(const GstStructure* structure) {
    const char* const name = gst_structure_get_string(structure, "format");
    for (guint i = 0; name && i < source_format_count; ++i) {
        if (gst_structure_has_name(structure, source_formats[i].media) && !strcmp(name, source_formats[i].name))
            return &source_formats[i];
    }
    return NULL;
}

const OutputFormat* output_format_named(const char* name) {
    for (guint i = 0; i < output_format_count; ++i) {
        if (!strcmp(name, output_formats[i].name)) return &output_formats[i];
    }
    return NULL;
}

gboolean pixels_of_pfnc(const char* name, OrvPixelInfo* pixels) {
    OrvImage image;
    memset(&image, 0, sizeof image);
    image.Size = sizeof image;
    char* const full = g_strconcat("PixelFormat", name, NULL);
    const OrvErrorType result = OrvSetImageInfoFromString(full, (guint32)strlen(full), 2, 2, &image);
    g_free(full);
    *pixels = image.ImageInfo.PixelInfo;
    return result == OrvErrorSuccess && pixels->BitsPerPixel <= 32; /* nothing reads colours of 16 bits */
}

gboolean is_mosaic(const OrvPixelInfo* pixels) {
    return pixels->PixelLayout == OrvPixelLayoutRaw || pixels->PixelLayout == OrvPixelLayoutRawPacked ||
           pixels->PixelLayout == OrvPixelLayoutRawP;
}

gboolean is_mono(const OrvPixelInfo* pixels) {
    return pixels->PixelLayout == OrvPixelLayoutMono || pixels->PixelLayout == OrvPixelLayoutMonoPacked ||
           pixels->PixelLayout == OrvPixelLayoutMonoP;
}
