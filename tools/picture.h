// Pictures, and what files hold of them.
#pragma once
#include <optional>

#include "file_types.h"

namespace tool {

// Rows of pixels without padding: grey, R G B or R G B A; 16-bit samples are little-endian words.
struct Picture {
    Size size;
    unsigned channels = 1; // 1, 3, 4
    unsigned bits = 8;     // 8, 16
    Bytes bytes;

    std::size_t rowBytes() const { return std::size_t{size.width} * channels * bits / 8; }
};

struct Encoding {
    std::optional<unsigned> compression; // 0 to 9, of PNG and TIFF; otherwise what is quick
    unsigned framesPerSecond = 25;       // of Y4M
};

// The content of such a file; of Y4M, one frame, which follows the header and the frames before. Throws Error.
Bytes encode(Image image, FileType type, const Encoding& encoding = {});
Bytes y4mHeader(const Image& image, const Encoding& encoding);

Bytes encodePng(const Picture& picture, const Encoding& encoding);
Bytes encodePnm(const Picture& picture);
Bytes encodeTiff(const Picture& picture, const Encoding& encoding);
Bytes encodeY4mFrame(const Picture& picture);

} // namespace tool
