#include "file_headers.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <map>
#include <memory>
#include <sstream>
#include <tiffio.h>

#include "errors.h"
#include "frames/names.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t longestHeader = 4096;

// Samples that are `bits` deep and lie in bytes or words. Throws Error.
FrameFormat plainFrame(const fs::path& path, Size size, unsigned channels, unsigned bits, bool bigEndian) {
    const bool deep = bits > 8;
    const char* const name = channels == 1            ? (deep ? "Mono16" : "Mono8")
                             : channels == 3 && !deep ? "Rgb8"
                             : channels == 4 && !deep ? "Rgba8"
                                                      : nullptr;
    if (!name || bits > 16 || size.pixels() == 0) {
        throw Error(path.string() + " holds " + std::to_string(channels) + " channels of " + std::to_string(bits) +
                    " bits at " + text(size) + ", which are no camera's frame");
    }
    FrameFormat frame{*findPixelFormat(name), size, false, deep && bigEndian};
    if (deep) frame.pixels.bits = bits == 9 ? 10 : bits == 11 ? 12 : bits; // what the library takes
    return frame;
}

// The next word of a PNM header, without comments.
std::string pnmWord(std::istream& stream) {
    std::string word;
    while (stream >> word && word.starts_with('#')) std::getline(stream, word);
    return word;
}

unsigned number(const std::string& text) {
    unsigned value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::optional<FileHeader> pnmHeader(const fs::path& path, const std::string& content) {
    std::istringstream stream(content);
    const std::string magic = pnmWord(stream);
    std::map<std::string, unsigned> fields{{"DEPTH", magic == "P6" ? 3 : 1}};
    if (magic == "P5" || magic == "P6") {
        for (const char* const field : {"WIDTH", "HEIGHT", "MAXVAL"}) fields[field] = number(pnmWord(stream));
    } else if (magic == "P7") {
        for (std::string field; (field = pnmWord(stream)) != "ENDHDR" && stream;) {
            if (std::string value = pnmWord(stream); field != "TUPLTYPE") fields[field] = number(value);
        }
    }
    stream.get(); // one blank ends the header
    if (!stream || fields["MAXVAL"] == 0) throw Error(path.string() + " has no binary PNM or PAM header");
    return FileHeader{plainFrame(path, {fields["WIDTH"], fields["HEIGHT"]}, fields["DEPTH"],
                                 static_cast<unsigned>(std::bit_width(fields["MAXVAL"])), true),
                      static_cast<std::uint64_t>(stream.tellg())};
}

// NumPy's header is a dictionary: {'descr': '<u2', 'fortran_order': False, 'shape': (480, 640), }.
std::optional<FileHeader> npyHeader(const fs::path& path, const std::string& content) {
    const auto byte = [&](std::size_t i) { return std::uint64_t{static_cast<unsigned char>(content[i])}; };
    const auto after = [&](const std::string& key) { // what stands behind it, without blanks
        const std::size_t at = content.find("'" + key + "':");
        return at == std::string::npos ? std::string()
                                       : content.substr(content.find_first_not_of(' ', at + key.size() + 3));
    };
    const std::string type = after("descr").substr(0, 5), shape = after("shape");
    const bool known =
        content.size() > 12 && content.starts_with("\x93NUMPY") && !after("fortran_order").starts_with("T");
    if (!known || (type != "'|u1'" && type != "'<u2'" && type != "'>u2'") || !shape.starts_with('('))
        throw Error(path.string() + " is no .npy file of rows of unsigned 8- or 16-bit integers");
    std::vector<unsigned> sides;
    std::istringstream stream(shape.substr(1, shape.find(')') - 1));
    for (std::string side; std::getline(stream, side, ',');)
        if (const auto digit = side.find_first_of("0123456789"); digit != std::string::npos)
            sides.push_back(number(side.substr(digit)));
    const bool colour = sides.size() >= 3 && (sides.back() == 3 || sides.back() == 4);
    const unsigned channels = colour ? sides.back() : 1;
    if (colour) sides.pop_back();
    if (sides.size() < 2) throw Error(path.string() + " has no rows and columns");
    const Size size{sides[sides.size() - 1], sides[sides.size() - 2]}; // before them: frames
    const std::uint64_t offset = byte(6) == 1 ? 10 + (byte(8) | byte(9) << 8) : 12 + (byte(8) | byte(9) << 8);
    return FileHeader{plainFrame(path, size, channels, type == "'|u1'" ? 8 : 16, type[1] == '>'), offset};
}

using Tiff = std::unique_ptr<TIFF, decltype(&TIFFClose)>;

Tiff openTiff(const fs::path& path) {
    TIFFSetWarningHandler(nullptr);
    TIFFSetErrorHandler(nullptr);
    Tiff tiff(TIFFOpen(path.c_str(), "r"), TIFFClose);
    if (!tiff) throw Error("cannot read the TIFF file " + path.string());
    return tiff;
}

template <class T> T field(const Tiff& tiff, std::uint32_t tag) {
    T value{};
    TIFFGetFieldDefaulted(tiff.get(), tag, &value);
    return value;
}

FileHeader tiffHeader(const fs::path& path) {
    const Tiff tiff = openTiff(path);
    const Size size{field<std::uint32_t>(tiff, TIFFTAG_IMAGEWIDTH), field<std::uint32_t>(tiff, TIFFTAG_IMAGELENGTH)};
    const unsigned channels = field<std::uint16_t>(tiff, TIFFTAG_SAMPLESPERPIXEL);
    const unsigned bits = field<std::uint16_t>(tiff, TIFFTAG_BITSPERSAMPLE);
    const FileHeader header{plainFrame(path, size, channels, bits, false), 0, true};
    const bool oneByOne = channels == 1 || field<std::uint16_t>(tiff, TIFFTAG_PLANARCONFIG) == PLANARCONFIG_CONTIG;
    const auto line = static_cast<std::uint64_t>(TIFFScanlineSize(tiff.get()));
    if (bits % 8 != 0 || !oneByOne || TIFFIsTiled(tiff.get()) ||
        line * 8 != std::uint64_t{size.width} * channels * bits)
        throw Error(path.string() + " is a TIFF file of another kind than rows of whole pixels of 8 or 16 bits");
    return header;
}

std::string beginningOf(const fs::path& path) {
    const Bytes bytes = InputFile(path).read(longestHeader);
    return {bytes.begin(), bytes.end()};
}

} // namespace

std::optional<FileHeader> readHeader(const fs::path& path) {
    const std::string ending = path.extension().string();
    const auto is = [&](std::initializer_list<std::string_view> endings) {
        return std::ranges::any_of(endings, [&](std::string_view known) { return sameName(ending, known); });
    };
    if (is({".pgm", ".ppm", ".pnm", ".pam"})) return pnmHeader(path, beginningOf(path));
    if (is({".npy"})) return npyHeader(path, beginningOf(path));
    if (is({".tif", ".tiff"})) return tiffHeader(path);
    return {};
}

Bytes readTiff(const fs::path& path) {
    const Tiff tiff = openTiff(path);
    const auto line = static_cast<std::size_t>(TIFFScanlineSize(tiff.get()));
    Bytes content(line * field<std::uint32_t>(tiff, TIFFTAG_IMAGELENGTH));
    for (std::uint32_t y = 0; y * line < content.size(); ++y) {
        if (TIFFReadScanline(tiff.get(), content.data() + y * line, y) != 1)
            throw Error("cannot read the TIFF file " + path.string());
    }
    return content;
}

} // namespace tool
