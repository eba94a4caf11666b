/* The installed package from C: the records' layout, a conversion, both faces. */
#include <orvella/orv.h>
#include <orvella/zeb.h>
#include <stddef.h>
#include <stdio.h>
#include <string.h>

/* C99 has no static_assert: an array of negative size does not compile. */
#define ASSERT_LAYOUT(name, condition) typedef char name[(condition) ? 1 : -1]
ASSERT_LAYOUT(image_size, sizeof(OrvImage) == 56);
ASSERT_LAYOUT(image_data, offsetof(OrvImage, Data) == 8);
ASSERT_LAYOUT(image_info, offsetof(OrvImage, ImageInfo) == 16);
ASSERT_LAYOUT(info_size, sizeof(OrvImageInfo) == 40);
ASSERT_LAYOUT(info_pixel, offsetof(OrvImageInfo, PixelInfo) == 12);
ASSERT_LAYOUT(pixel_size, sizeof(OrvPixelInfo) == 28);
ASSERT_LAYOUT(option_size, sizeof(OrvTransformInfo) == 40);
ASSERT_LAYOUT(option_parameter, offsetof(OrvTransformInfo, Parameter) == 4);
ASSERT_LAYOUT(shift_size, sizeof(OrvShiftRecord) == 20);
ASSERT_LAYOUT(techno_size, sizeof(OrvTechnoInfo) == 12);

static int failed(const char* what) {
    fprintf(stderr, "failed: %s\n", what);
    return 1;
}

int main(void) {
    const uint8_t mosaic[4] = {200, 100, 50, 30}; /* R G / G B */
    const uint8_t expected[12] = {30, 75, 200, 30, 75, 200, 30, 75, 200, 30, 75, 200};
    uint8_t bgr[12];
    uint32_t version = 0;
    char text[64];

    if (OrvGetVersion(&version) != OrvErrorSuccess || ZEB_GetVersion(&version) != 0) return failed("version");
    if (version >> 24 != ORVELLA_VERSION_MAJOR) return failed("version number");
    if (OrvRaw8ImageTransform(bgr, mosaic, 2, 2, OrvOutputBgr24, OrvBayerPatternRGGB) != OrvErrorSuccess)
        return failed("conversion");
    if (memcmp(bgr, expected, sizeof expected) != 0) return failed("its result");
    if (ZEB_Raw8ImageTransform(bgr, NULL, 2, 2, OrvOutputBgr24, OrvBayerPatternRGGB) != 0x88000003)
        return failed("legacy refusal");
    if (ZEB_GetErrorInfo(0x88000003, text, sizeof text) != 0 || strcmp(text, "Parameter 2 is invalid") != 0)
        return failed("text");
    return 0;
}
