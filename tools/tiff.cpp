#include <memory>
#include <sstream>
#include <tiffio.h>
#include <tiffio.hxx>

#include "errors.h"
#include "picture.h"

namespace tool {

Bytes encodeTiff(const Picture& picture, const Encoding& encoding) {
    std::ostringstream stream;
    const bool colour = picture.channels > 1;
    bool written = true;
    {
        const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(TIFFStreamOpen("TIFF", &stream), TIFFClose);
        if (!tiff) throw Error("cannot write TIFF");
        TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, picture.size.width);
        TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, picture.size.height);
        TIFFSetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, picture.channels);
        TIFFSetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, picture.bits);
        TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC, colour ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK);
        TIFFSetField(tiff.get(), TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        const unsigned level = encoding.compression.value_or(0);
        TIFFSetField(tiff.get(), TIFFTAG_COMPRESSION, level > 0 ? COMPRESSION_ADOBE_DEFLATE : COMPRESSION_NONE);
        if (level > 0) TIFFSetField(tiff.get(), TIFFTAG_ZIPQUALITY, static_cast<int>(level));
        TIFFSetField(tiff.get(), TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff.get(), 0));
        if (picture.channels == 4) {
            const std::uint16_t alpha = EXTRASAMPLE_UNASSALPHA;
            TIFFSetField(tiff.get(), TIFFTAG_EXTRASAMPLES, 1, &alpha);
        }
        Bytes row(picture.rowBytes()); // libtiff may change it
        for (std::uint32_t y = 0; y < picture.size.height && written; ++y) {
            const auto* const from = picture.bytes.data() + y * row.size();
            std::copy(from, from + row.size(), row.begin());
            written = TIFFWriteScanline(tiff.get(), row.data(), y) == 1;
        }
        written = written && TIFFFlush(tiff.get()) == 1;
    }
    if (!written || !stream) throw Error("cannot write TIFF: the picture is too large for it");
    const std::string_view content = stream.view();
    return Bytes(content.begin(), content.end());
}

} // namespace tool
