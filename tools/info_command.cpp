#include <cstdio>
#include <png.h>
#include <tiffio.h>

#include "camera.h"
#include "commands.h"
#include "orvella/orv.h"

namespace tool {

void infoCommand() {
    std::uint32_t version = 0;
    OrvGetVersion(&version);
    std::printf("library   %u.%u.%u.%u\n", version >> 24, version >> 16 & 0xFF, version >> 8 & 0xFF, version & 0xFF);
    char build[64] = "";
    OrvGetApiInfoString(0, build, sizeof build);
    std::printf("build     %s\n", build);
    std::printf("program   %s\n", ORVELLA_VERSION_STRING);
    std::printf("PNG       libpng %s\n", png_get_libpng_ver(nullptr));
    const std::string tiff = TIFFGetVersion(); // several lines
    std::printf("TIFF      %s\n", tiff.substr(0, tiff.find('\n')).c_str());
    std::printf("cameras   %s\n", cameraSupport().c_str());
}

} // namespace tool
