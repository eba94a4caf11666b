#include "pictures.h"

#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <memory>
#include <png.h>
#include <sstream>
#include <tiffio.h>

#include "program.h"

namespace {

// Little-endian words, or bytes.
void append(std::vector<std::uint16_t>& samples, const std::uint8_t* row, std::size_t count, unsigned bits) {
    for (std::size_t i = 0; i < count; ++i) {
        samples.push_back(bits == 8 ? row[i] : static_cast<std::uint16_t>(row[2 * i] | row[2 * i + 1] << 8));
    }
}

} // namespace

Picture readPng(const std::filesystem::path& path) {
    const std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
    if (!file) return {};
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    Picture picture;
    if (setjmp(png_jmpbuf(png)) == 0) {
        png_init_io(png, file.get());
        png_read_png(png, info, PNG_TRANSFORM_SWAP_ENDIAN, nullptr);
        picture = {png_get_image_width(png, info),
                   png_get_image_height(png, info),
                   png_get_channels(png, info),
                   png_get_bit_depth(png, info),
                   {}};
        for (unsigned y = 0; y < picture.height; ++y)
            append(picture.samples, png_get_rows(png, info)[y], std::size_t{picture.width} * picture.channels,
                   picture.bits);
    }
    png_destroy_read_struct(&png, &info, nullptr);
    return picture;
}

Picture readTiff(const std::filesystem::path& path) {
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(TIFFOpen(path.c_str(), "r"), TIFFClose);
    if (!tiff) return {};
    std::uint32_t width = 0, height = 0;
    std::uint16_t channels = 1, bits = 0;
    TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height);
    TIFFGetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, &channels);
    TIFFGetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, &bits);
    Picture picture{width, height, channels, bits, {}};
    std::vector<std::uint8_t> row(static_cast<std::size_t>(TIFFScanlineSize(tiff.get())));
    for (unsigned y = 0; y < height; ++y) {
        if (TIFFReadScanline(tiff.get(), row.data(), y) != 1) return {};
        append(picture.samples, row.data(), std::size_t{width} * channels, bits);
    }
    return picture;
}

Picture readPnm(const std::filesystem::path& path) {
    std::istringstream file(readFile(path));
    std::string magic;
    unsigned width = 0, height = 0, maximum = 0;
    file >> magic >> width >> height >> maximum;
    file.get(); // one blank ends the header
    if (!file || (magic != "P5" && magic != "P6") || (maximum != 255 && maximum != 65535)) return {};
    Picture picture{width, height, magic == "P5" ? 1u : 3u, maximum == 255 ? 8u : 16u, {}};
    for (std::size_t i = 0; i < std::size_t{width} * height * picture.channels; ++i) {
        const int high = picture.bits == 16 ? file.get() : 0;
        picture.samples.push_back(static_cast<std::uint16_t>(high << 8 | file.get()));
    }
    return file && file.peek() == EOF ? picture : Picture{};
}
