#include "picture.h"

namespace tool {

// Binary PGM or PPM; words are big-endian there.
Bytes encodePnm(const Picture& picture) {
    const std::string header = std::string(picture.channels == 1 ? "P5" : "P6") + "\n" +
                               std::to_string(picture.size.width) + " " + std::to_string(picture.size.height) + "\n" +
                               (picture.bits == 16 ? "65535" : "255") + "\n";
    Bytes file(header.begin(), header.end());
    file.reserve(header.size() + picture.bytes.size());
    if (picture.bits == 8) {
        file.insert(file.end(), picture.bytes.begin(), picture.bytes.end());
        return file;
    }
    for (std::size_t i = 0; i < picture.bytes.size(); i += 2) {
        file.push_back(picture.bytes[i + 1]);
        file.push_back(picture.bytes[i]);
    }
    return file;
}

} // namespace tool
