// The functions that the module exports. Texts go in and out as UTF-8 that ends with a zero, options as parseOptions reads
// them. Functions that can fail return false and leave a message; what they make lies in `bytes` and `text` until the
// next call.
#include <cstdlib>
#include <exception>
#include <new>

#include "conversion.h"
#include "errors.h"
#include "frames/named.h"
#include "frames/pack.h"
#include "frames/samples.h"
#include "guesses.h"
#include "headers.h"
#include "json.h"
#include "offers.h"
#include "session.h"
#include "statistics.h"

#define EXPORT(name) extern "C" __attribute__((export_name(#name), used))

namespace web {

namespace {

std::string text;
Bytes bytes;
Session session;

template <class Work> bool attempt(const Work& work) {
    try {
        work();
        return true;
    } catch (const std::bad_alloc&) {
        text = "not enough memory";
    } catch (const std::exception& error) {
        text = error.what();
    }
    return false;
}

const char* nameOf(frames::Samples samples) {
    static constexpr const char* names[] = {"grey", "rggb", "grbg",   "gbrg",   "bggr",   "rgb", "bgr",
                                            "rgba", "bgra", "yuv411", "yuv422", "yuv444", "cygm"};
    return names[static_cast<int>(samples)];
}

std::string describe(const frames::PixelFormat& format) {
    return JsonObject()
        .add("name", format.name)
        .add("bits", format.bits)
        .add("samples", nameOf(format.samples))
        .add("words", format.packing == frames::Packing::words)
        .text();
}

bool isConverted(const frames::PixelFormat& format) {
    const bool grey = format.samples == frames::Samples::grey;
    return frames::isDeepColour(format) || tool::isOffered({format, {}}, tool::outputNamed(grey ? "Mono8" : "RGB24"));
}

std::string describeFormats() {
    std::string list;
    for (const frames::PixelFormat& format : frames::pixelFormats())
        if (isConverted(format)) list += describe(format) + ",";
    return "[" + list + describe(frames::cygm8()) + "]";
}

std::string describe(const tool::FrameFormat& frame) {
    JsonObject object;
    object.add("format", frame.pixels.name).add("size", frames::text(frame.size));
    if (frame.pixels.bits != frames::findPixelFormat(frame.pixels.name)->bits)
        object.add("bitsUsed", frame.pixels.bits);
    if (frame.bigEndian) object.add("bigEndian", true);
    if (frame.msbAligned) object.add("msbAligned", true);
    return object.text();
}

std::string describeMeasured(const picture::Settings& settings, const tool::FrameFormat& frame) {
    const float unit = frame.pixels.bits == 8 ? 257 : static_cast<float>(1 << (16 - frame.pixels.bits));
    return JsonObject()
        .add("black", settings.black / unit)
        .addText("whiteBalance", jsonList(settings.whiteBalance))
        .add("low", settings.low / 65535)
        .add("high", settings.high / 65535)
        .text();
}

} // namespace

EXPORT(orvella_allocate) void* allocate(std::size_t size) { return std::malloc(size); }
EXPORT(orvella_release) void release(void* memory) { std::free(memory); }
EXPORT(orvella_text) const char* textMade() { return text.c_str(); }
EXPORT(orvella_bytes) const std::uint8_t* bytesMade() { return bytes.data(); }
EXPORT(orvella_byte_count) std::size_t byteCountMade() { return bytes.size(); }

// The pixel formats that can be shown: a list of {name, bits, samples, words}.
EXPORT(orvella_formats) bool formats() {
    return attempt([] { text = describeFormats(); });
}

// What a file's name says: {format, size}, either of them if it does.
EXPORT(orvella_named) bool named(const char* stem) {
    return attempt([&] {
        const frames::Named found = frames::named(stem);
        JsonObject object;
        if (found.format) {
            object.add("format", found.format->name);
            if (found.format->bits != frames::findPixelFormat(found.format->name)->bits)
                object.add("bitsUsed", found.format->bits);
        }
        if (found.size) object.add("size", frames::text(*found.size));
        text = object.text();
    });
}

// What a file's header says, if it has one of those that are plain: {skip, frame}, the bytes
// that it has and a frame as a guess has it. `beginning` is that of the file, 4096 bytes or all.
EXPORT(orvella_header) bool header(const char* name, const std::uint8_t* beginning, std::size_t size) {
    return attempt([&] {
        const auto found = tool::plainHeader(name, {reinterpret_cast<const char*>(beginning), size});
        text = found ? JsonObject().add("skip", found->offset).addText("frame", describe(found->frame)).text() : "{}";
    });
}

// What a dump without a header may hold, the best first: a list of {format, size, bitsUsed, bigEndian, msbAligned},
// switches only if they are set.
EXPORT(orvella_guess) bool guess(const std::uint8_t* data, std::size_t size, std::size_t count) {
    return attempt([&] {
        std::string list;
        for (const tool::FrameGuess& found : tool::guessFrames({data, data + size}, count)) {
            for (const tool::FrameFormat& frame : found.frames)
                list.append(list.empty() ? "" : ",").append(describe(frame));
        }
        text = "[" + list + "]";
    });
}

// Bytes: a test chart, as a camera would send it.
EXPORT(orvella_chart) bool chart(const char* options) {
    return attempt([&] {
        const tool::FrameFormat frame = parseOptions(options).frame.frame();
        if (const std::string missing = frames::missingFor(frame); !missing.empty())
            throw tool::UsageError("a chart in " + std::string(frame.pixels.name) + " needs " + missing);
        bytes = frames::pack(frames::makeChart(frame.size), frame);
    });
}

// {frame, row}: in bytes.
EXPORT(orvella_stored) bool stored(const char* options) {
    return attempt([&] {
        const Stored found = storedBytes(parseOptions(options));
        text = JsonObject().add("frame", found.frame).add("row", found.row).text();
    });
}

// Bytes: the frame in the output that the options name, as the converter writes it to raw files.
EXPORT(orvella_convert) bool convert(const char* options, const std::uint8_t* data, std::size_t size) {
    return attempt([&] {
        const Options parsed = parseOptions(options);
        const tool::FrameFormat frame = parsed.frame.frame();
        const tool::Recipe recipe = tool::recipeFor(frame, parsed.recipe, tool::FileType::raw);
        if (!recipe.output.planes.empty()) throw tool::UsageError("planes are several images; convert to RGB24");
        bytes = std::move(tool::follow(recipe, frame, frameBytes(parsed, data, size)).front().bytes);
    });
}

// Takes a frame to look at.
EXPORT(orvella_load) bool load(const char* options, const std::uint8_t* data, std::size_t size) {
    return attempt([&] {
        const Options parsed = parseOptions(options);
        session.load(parsed, frameBytes(parsed, data, size));
    });
}

// Of its samples: {histograms, warning}, the latter of samples above what they can be.
EXPORT(orvella_statistics) bool statistics() {
    return attempt([] {
        text = JsonObject()
                   .addText("histograms", sensorHistograms(session.frame(), session.bytes()))
                   .add("warning", tool::excess(session.frame(), session.bytes()))
                   .text();
    });
}

// Bytes: the picture, R G B A. {width, height, channels, remark, measured}
EXPORT(orvella_render) bool render(const char* options) {
    return attempt([&] {
        Session::Rendering rendering = session.render(parseOptions(options).recipe, std::move(bytes));
        const bool grey = session.frame().pixels.samples == frames::Samples::grey;
        JsonObject object;
        object.add("width", rendering.image.size.width)
            .add("height", rendering.image.size.height)
            .add("channels", grey ? 1 : 3)
            .add("remark", rendering.remark);
        if (rendering.settings) object.addText("measured", describeMeasured(*rendering.settings, session.frame()));
        bytes = std::move(rendering.image.bytes);
        text = object.text();
    });
}

// Of a picture, R G B A: a list of histograms.
EXPORT(orvella_histograms) bool histograms(const std::uint8_t* data, std::size_t size, unsigned channels) {
    return attempt([&] { text = pictureHistograms({data, size}, channels); });
}

// Bytes: 16-bit words, the samples of the pixels of this part of the frame, row by row.
EXPORT(orvella_samples) bool samples(std::uint32_t left, std::uint32_t top, std::uint32_t width, std::uint32_t height) {
    return attempt([&] {
        const tool::FrameFormat& frame = session.frame();
        if (left + width > frame.size.width || top + height > frame.size.height)
            throw tool::Error("there are no such pixels");
        std::vector<std::uint16_t> row(std::size_t{width} * frames::samplesOfPixel(frame.pixels));
        bytes.clear();
        for (std::uint32_t y = top; y < top + height; ++y) {
            frames::readPixels(frame, session.bytes(), left, y, row);
            for (const std::uint16_t sample : row) {
                bytes.push_back(static_cast<std::uint8_t>(sample & 0xFF));
                bytes.push_back(static_cast<std::uint8_t>(sample >> 8));
            }
        }
    });
}

} // namespace web
