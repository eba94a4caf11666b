#include "picture_files.h"

#include <csetjmp>
#include <fstream>
#include <memory>
#include <png.h>
#include <tiffio.h>
#include <tiffio.hxx>

#include "errors.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

// ---- TIFF

class Tiff {
public:
    explicit Tiff(const fs::path& path) : stream_(path, std::ios::binary) {
        TIFFSetWarningHandler(nullptr);
        TIFFSetErrorHandler(nullptr);
        if (stream_) file_.reset(TIFFStreamOpen("TIFF", &stream_));
        if (!file_) throw Error("cannot read the TIFF file " + path.string());
    }
    TIFF* get() const { return file_.get(); }

private:
    std::ifstream stream_;
    std::unique_ptr<TIFF, decltype(&TIFFClose)> file_{nullptr, TIFFClose};
};

template <class T> T field(const Tiff& tiff, std::uint32_t tag) {
    T value{};
    TIFFGetFieldDefaulted(tiff.get(), tag, &value);
    return value;
}

// Of the page that is open.
FrameFormat tiffFrame(const fs::path& path, const Tiff& tiff) {
    const Size size{field<std::uint32_t>(tiff, TIFFTAG_IMAGEWIDTH), field<std::uint32_t>(tiff, TIFFTAG_IMAGELENGTH)};
    const unsigned channels = field<std::uint16_t>(tiff, TIFFTAG_SAMPLESPERPIXEL);
    const unsigned bits = field<std::uint16_t>(tiff, TIFFTAG_BITSPERSAMPLE);
    const FrameFormat frame = plainFrame(path.string(), size, channels, bits, false);
    const bool oneByOne = channels == 1 || field<std::uint16_t>(tiff, TIFFTAG_PLANARCONFIG) == PLANARCONFIG_CONTIG;
    const auto line = static_cast<std::uint64_t>(TIFFScanlineSize(tiff.get()));
    if (bits % 8 != 0 || !oneByOne || TIFFIsTiled(tiff.get()) ||
        line * 8 != std::uint64_t{size.width} * channels * bits)
        throw Error(path.string() + " is a TIFF file of another kind than rows of whole pixels of 8 or 16 bits");
    return frame;
}

FileHeader tiffHeader(const fs::path& path) {
    const Tiff tiff(path);
    const FrameFormat frame = tiffFrame(path, tiff);
    return {frame, 0, static_cast<unsigned>(TIFFNumberOfDirectories(tiff.get()))};
}

Bytes readTiff(const fs::path& path, unsigned page) {
    const Tiff tiff(path);
    const FrameFormat first = tiffFrame(path, tiff);
    const auto broken = [&] { return Error("cannot read page " + std::to_string(page) + " of " + path.string()); };
    if (TIFFSetDirectory(tiff.get(), page - 1) != 1) throw broken();
    const FrameFormat frame = tiffFrame(path, tiff);
    if (text(frame) != text(first))
        throw Error("page " + std::to_string(page) + " of " + path.string() + " is " + text(frame) +
                    ", unlike the first");
    const auto line = static_cast<std::size_t>(TIFFScanlineSize(tiff.get()));
    Bytes content; // grows by what is there, whatever the header promises
    for (std::uint32_t y = 0; y < frame.size.height; ++y) {
        content.resize(content.size() + line);
        if (TIFFReadScanline(tiff.get(), content.data() + y * line, y) != 1) throw broken();
    }
    return content;
}

// ---- PNG

class PngReader {
public:
    // The other constructor has made what is destroyed if this one throws.
    explicit PngReader(const fs::path& path) : PngReader(path, std::ifstream(path, std::ios::binary)) {
        if (!stream_) throw Error("cannot open " + path.string());
        if (!info_) throw std::bad_alloc();
        png_set_error_fn(
            png_, nullptr, [](png_structp png, png_const_charp) { png_longjmp(png, 1); },
            [](png_structp, png_const_charp) {});
        if (!tryToReadHeader()) throw broken();
    }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;
    ~PngReader() { png_destroy_read_struct(&png_, &info_, nullptr); }

    FrameFormat frame() const {
        return plainFrame(path_.string(), {png_get_image_width(png_, info_), png_get_image_height(png_, info_)},
                          png_get_channels(png_, info_), png_get_bit_depth(png_, info_), false);
    }
    Bytes pixels() {
        const std::size_t line = png_get_rowbytes(png_, info_), height = png_get_image_height(png_, info_);
        constexpr std::size_t expansion = 1100; // deflate makes at most 1032 bytes of one
        if (line * height / expansion > fs::file_size(path_)) throw broken();
        Bytes content(line * height);
        std::vector<png_bytep> rows(height);
        for (std::size_t y = 0; y < height; ++y) rows[y] = content.data() + y * line;
        if (!tryToReadRows(rows.data())) throw broken();
        return content;
    }

private:
    PngReader(const fs::path& path, std::ifstream stream)
        : path_(path), stream_(std::move(stream)),
          png_(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr)),
          info_(png_ ? png_create_info_struct(png_) : nullptr) {}
    Error broken() const { return Error("cannot read the PNG file " + path_.string()); }
    static void read(png_structp png, png_bytep bytes, std::size_t count) {
        auto& stream = *static_cast<std::ifstream*>(png_get_io_ptr(png));
        if (!stream.read(reinterpret_cast<char*>(bytes), static_cast<std::streamsize>(count)))
            png_error(png, "it ends");
    }
    // libpng reports errors by jumping back into these functions, so nothing here needs destruction.
    bool tryToReadHeader() {
        if (setjmp(png_jmpbuf(png_))) return false;
        png_set_read_fn(png_, &stream_, read);
        png_read_info(png_, info_);
        png_set_expand(png_);
        png_set_swap(png_); // PNG words are big-endian
        png_set_interlace_handling(png_);
        png_read_update_info(png_, info_);
        return true;
    }
    bool tryToReadRows(png_bytepp rows) {
        if (setjmp(png_jmpbuf(png_))) return false;
        png_read_image(png_, rows);
        return true;
    }

    fs::path path_;
    std::ifstream stream_;
    png_structp png_;
    png_infop info_;
};

std::string beginningOf(const fs::path& path) {
    const Bytes bytes = InputFile(path).read(longestHeader);
    return {bytes.begin(), bytes.end()};
}

bool isPng(const fs::path& path) { return endsWith(path.filename().string(), {".png"}); }

} // namespace

std::optional<FileHeader> readHeader(const fs::path& path) {
    const std::string name = path.filename().string();
    if (isPng(path)) return FileHeader{PngReader(path).frame(), 0, 1};
    if (endsWith(name, {".tif", ".tiff"})) return tiffHeader(path);
    if (!endsWith(name, {".pgm", ".ppm", ".pnm", ".pam", ".npy"})) return {};
    return plainHeader(path.string(), beginningOf(path));
}

Bytes readPage(const fs::path& path, unsigned page) {
    return isPng(path) ? PngReader(path).pixels() : readTiff(path, page);
}

} // namespace tool
