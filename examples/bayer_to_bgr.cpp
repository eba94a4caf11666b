// An 8-bit Bayer frame becomes BGR24, as display code wants it.
#include <orvella/orv.h>

#include <cstdio>
#include <vector>

int main() {
    const unsigned width = 640, height = 480;
    std::vector<unsigned char> frame(width * height, 128); // from your camera
    std::vector<unsigned char> picture(width * height * 3);

    OrvImage source{}, destination{};
    source.Size = destination.Size = sizeof(OrvImage);
    source.Data = frame.data();
    destination.Data = picture.data();
    OrvSetImageInfoFromPixelFormat(OrvPixelFormatBayerRG8, width, height, &source);
    OrvSetImageInfoOutput(OrvOutputBgr24, width, height, &destination);

    OrvTransformInfo debayer{};
    OrvSetDebayerMode(OrvDebayerMode3x3, &debayer);
    const OrvErrorType result = OrvImageTransform(&source, &destination, &debayer, 1);

    char text[100];
    OrvGetErrorInfo(result, text, sizeof text);
    std::printf("%s, first pixel B %d G %d R %d\n", text, picture[0], picture[1], picture[2]);
    return result == OrvErrorSuccess ? 0 : 1;
}
