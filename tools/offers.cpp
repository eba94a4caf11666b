#include "offers.h"

#include "transform.h"

namespace tool {

namespace {

bool accepts(FrameFormat frame, const Output& output, const Processing& processing, Size size) {
    frame.size = size;
    Bytes source;
    Image image{output, size, {}};
    return transform(frame, source, image, processing) == OrvErrorSuccess;
}

void addTo(std::string& list, std::string_view item) { list.append(list.empty() ? "" : ", ").append(item); }

std::string offeredDepths(FrameFormat frame, const Output& output, const Processing& processing) {
    std::string list;
    if (frame.pixels.packing != Packing::words) return list;
    for (unsigned bits = 1; bits <= 16; ++bits) {
        frame.pixels.bits = bits;
        if (isOffered(frame, output, processing)) addTo(list, std::to_string(bits));
    }
    return list;
}

std::string offeredOutputs(const FrameFormat& frame, const Processing& processing) {
    std::string list;
    for (const Output& output : outputs()) {
        if (isOffered(frame, output, processing)) addTo(list, output.names[0]);
    }
    return list;
}

} // namespace

bool heedsDebayerMode(const FrameFormat& frame, const Output& output, const Processing& processing) {
    constexpr DebayerMode nonexistent{"", 0xFFFF, ""};
    return processing.debayer.code == OrvDebayerMode2x2 || !accepts(frame, output, {nonexistent}, {4, 4});
}

bool isOffered(const FrameFormat& frame, const Output& output, const Processing& processing) {
    return accepts(frame, output, processing, {4, 4}) && heedsDebayerMode(frame, output, processing);
}

std::vector<const PixelFormat*> offeredSources(const Processing& processing) {
    std::vector<const PixelFormat*> sources;
    for (const PixelFormat& pixels : pixelFormats()) {
        const bool otherPhase = isMosaic(pixels.samples) && pixels.samples != Samples::rggb;
        if (!otherPhase && !offeredOutputs({pixels, {}}, processing).empty()) sources.push_back(&pixels);
    }
    return sources;
}

std::string names(const std::vector<const PixelFormat*>& sources) {
    std::string list;
    for (const PixelFormat* const pixels : sources) addTo(list, pixels->name);
    return list + " (mosaics in every phase)";
}

std::string sizeRule(const FrameFormat& frame, const Output& output, const Processing& processing) {
    const auto takes = [&](std::uint32_t width, std::uint32_t height) {
        return accepts(frame, output, processing, {width, height});
    };
    if (!takes(2, 4) && !takes(4, 2)) return "an even width and height of at least 4";
    if (!takes(2, 4)) return "a width that is a multiple of 4";
    if (!takes(4, 2)) return "an even width, and a height that is a multiple of 4";
    if (!takes(1, 4) && takes(3, 3)) return "a width and height of at least 2";
    if (!takes(1, 4)) return takes(4, 1) ? "an even width" : "an even width and height";
    return takes(1, 1) ? "any size" : "an even number of pixels";
}

std::string advice(const FrameFormat& frame, const Output& output, const Processing& processing) {
    if (isOffered(frame, output, processing)) return "it needs " + sizeRule(frame, output, processing);
    if (const auto depths = offeredDepths(frame, output, processing); !depths.empty())
        return "offered with these bits used: " + depths;
    if (const auto others = offeredOutputs(frame, processing); !others.empty()) return "offered are " + others;
    if (const auto options = text(processing); !options.empty())
        return options + " is offered for " + names(offeredSources(processing));
    return "see 'orvella formats'";
}

} // namespace tool
