// The installed package from C++: the general transform, and the functions with C++ linkage.
#include <orvella/orv.h>

#include <cstdio>
#include <vector>

int main() {
    std::vector<unsigned char> grey(64, 40), rgb(64 * 3);
    OrvImage source{}, destination{};
    source.Size = destination.Size = sizeof(OrvImage);
    source.Data = grey.data();
    destination.Data = rgb.data();
    OrvPixelLayout layout = 99;
    const bool done = OrvSetImageInfoFromString("PixelFormatMono8", 16, 8, 8, &source) == OrvErrorSuccess &&
                      OrvSetImageInfoFromString("RGB24", 5, 8, 8, &destination) == OrvErrorSuccess &&
                      OrvImageTransform(&source, &destination, nullptr, 0) == OrvErrorSuccess &&
                      OrvGetPixelLayout(&layout, OrvPixelFormatMono8) == OrvErrorSuccess;
    if (done && rgb == std::vector<unsigned char>(64 * 3, 40) && layout == OrvPixelLayoutMono) return 0;
    std::fprintf(stderr, "failed\n");
    return 1;
}
