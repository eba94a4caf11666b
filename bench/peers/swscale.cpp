// swscale: whatever pair of pixel formats it converts, at equal sizes.
extern "C" {
#include <libavutil/pixfmt.h>
#include <libswscale/swscale.h>
}

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "bench/peers/peers.h"
#include "catalogue/conversions.h"

namespace bench {

namespace {

struct Format {
    const char* name;
    AVPixelFormat format;
    int bytes; // of a pixel
    Likeness likeness = Likeness::same;
};
constexpr auto near = Likeness::near;

constexpr Format sources[] = {
    {"Mono8", AV_PIX_FMT_GRAY8, 1},
    {"Mono10", AV_PIX_FMT_GRAY10LE, 2},
    {"Mono12", AV_PIX_FMT_GRAY12LE, 2},
    {"Mono12 big-endian", AV_PIX_FMT_GRAY12BE, 2},
    {"Mono14", AV_PIX_FMT_GRAY14LE, 2},
    {"Mono16", AV_PIX_FMT_GRAY16LE, 2, near}, // ours is tinted by the lower bits
    {"Mono16 big-endian", AV_PIX_FMT_GRAY16BE, 2, near},
    {"RGB8", AV_PIX_FMT_RGB24, 3},
    {"BGR8", AV_PIX_FMT_BGR24, 3},
    {"RGBA8", AV_PIX_FMT_RGBA, 4},
    {"BGRA8", AV_PIX_FMT_BGRA, 4},
    {"YUV 4:2:2", AV_PIX_FMT_UYVY422, 2},
    {"Bayer8 2x2", AV_PIX_FMT_BAYER_RGGB8, 1, near}, // bilinear
    {"Bayer8 3x3", AV_PIX_FMT_BAYER_RGGB8, 1, near},
    {"Bayer16 2x2", AV_PIX_FMT_BAYER_RGGB16LE, 2, near},
    {"Bayer16 big-endian 2x2", AV_PIX_FMT_BAYER_RGGB16BE, 2, near},
};
constexpr Format destinations[] = {
    {"Mono8", AV_PIX_FMT_GRAY8, 1},   {"BGR24", AV_PIX_FMT_BGR24, 3}, {"BGRA32", AV_PIX_FMT_BGRA, 4},
    {"RGB24", AV_PIX_FMT_RGB24, 3},   {"RGBA32", AV_PIX_FMT_RGBA, 4}, {"Mono16", AV_PIX_FMT_GRAY16LE, 2},
    {"BGR48", AV_PIX_FMT_BGR48LE, 6},
};

bool isListed(const std::string& conversion) {
    if (conversion == "Mono16 big-endian -> Mono16") return false; // there ours only copies
    return std::ranges::any_of(catalogue::conversions(), [&](const auto& known) { return known.name() == conversion; });
}

Call prepare(const Job& job, const Format& from, const Format& to) {
    const int width = job.columns(), height = job.rows(), fullRange = 1;
    const std::shared_ptr<SwsContext> context(
        sws_getContext(width, height, from.format, width, height, to.format, SWS_POINT, nullptr, nullptr, nullptr),
        sws_freeContext);
    if (!context) throw std::runtime_error(std::string("swscale does not convert ") + from.name + " to " + to.name);
    const int* matrix = sws_getCoefficients(SWS_CS_ITU601);
    sws_setColorspaceDetails(context.get(), matrix, fullRange, matrix, fullRange, 0, 1 << 16, 1 << 16);
    return [=] {
        const std::uint8_t* const source[] = {job.from};
        std::uint8_t* const destination[] = {job.to};
        const int sourcePitch[] = {width * from.bytes}, pitch[] = {width * to.bytes};
        sws_scale(context.get(), source, sourcePitch, 0, height, destination, pitch);
    };
}

} // namespace

Peer swscale() {
    Peer peer{"swscale", "", {}, nullptr};
    for (const Format& from : sources)
        for (const Format& to : destinations) {
            const std::string conversion = std::string(from.name) + " -> " + to.name;
            if (isListed(conversion) && sws_isSupportedInput(from.format) && sws_isSupportedOutput(to.format))
                peer.rows.push_back(
                    {conversion, [&from, &to](const Job& job) { return prepare(job, from, to); }, from.likeness});
        }
    return peer;
}

} // namespace bench
