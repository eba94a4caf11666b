// OpenCV: cvtColor, convertTo, transform, split, merge. Its demosaics are bilinear (near our 3x3, and the nearest it
// has to our 2x2) or edge-aware (near our chroma-filtered ones); its UYVY is of studio range.
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <tuple>
#include <utility>

#include "bench/peers/peers.h"
#include "catalogue/colour_matrix.h"

namespace bench {

namespace {

constexpr auto near = Likeness::near;

cv::Mat from(const Job& job, int type) { return {job.rows(), job.columns(), type, job.from}; }
cv::Mat to(const Job& job, int type, int plane = 0) {
    return {job.rows(), job.columns(), type, job.to + static_cast<std::size_t>(plane) * job.pixels()};
}

// One call of cvtColor.
PeerRow color(const std::string& conversion, int fromType, int toType, int code, Likeness likeness = Likeness::same) {
    return row(
        conversion,
        [=](const Job& job) {
            cv::Mat d = to(job, toType);
            cv::cvtColor(from(job, fromType), d, code);
        },
        likeness);
}

// Samples times a factor.
PeerRow scaled(const std::string& conversion, int fromType, int toType, double factor) {
    return row(conversion, [=](const Job& job) {
        cv::Mat d = to(job, toType);
        from(job, fromType).convertTo(d, toType, factor);
    });
}

// The same, to an image in between, and cvtColor.
PeerRow scaledColor(const std::string& conversion, int type, double factor, int toType, int code) {
    return {conversion,
            [=](const Job& job) -> Call {
                return [=, between = cv::Mat()]() mutable {
                    from(job, CV_16U).convertTo(between, type, factor);
                    cv::Mat d = to(job, toType);
                    cv::cvtColor(between, d, code);
                };
            },
            near};
}

// Weighted sums of channels in floating point.
PeerRow weighed(const std::string& conversion, int fromType, cv::Matx13f weights) {
    return row(
        conversion,
        [=](const Job& job) {
            cv::Mat d = to(job, CV_8U);
            cv::transform(from(job, fromType), d, weights);
        },
        near);
}

// The catalogue's matrix, on three or four channels.
PeerRow corrected(const std::string& conversion, int fromType, bool blueFirstFrom, bool blueFirstTo) {
    const int channels = CV_MAT_CN(fromType);
    cv::Mat weights = cv::Mat::zeros(3, channels, CV_32F);
    for (int k = 0; k < 9; ++k) {
        const int row = blueFirstTo ? 2 - k / 3 : k / 3, column = blueFirstFrom ? 2 - k % 3 : k % 3;
        weights.at<float>(row, column) = catalogue::colourMatrix[k];
    }
    return row(conversion, [=](const Job& job) {
        cv::Mat d = to(job, CV_8UC3);
        cv::transform(from(job, fromType), d, weights);
    });
}

// In place; about the x axis (0), the y axis (1), or both (-1).
void addFlips(std::vector<PeerRow>& rows, const std::string& source, const std::string& output, int type) {
    const std::pair<const char*, int> flips[] = {
        {" flip vertical -> ", 0}, {" flip horizontal -> ", 1}, {" turn -> ", -1}};
    for (const auto& [method, code] : flips)
        rows.push_back(row(source + method + output, [type, code = code](const Job& job) {
            cv::Mat image = from(job, type);
            cv::flip(image, image, code);
        }));
}

// Lines of one and a half times the length.
void addStretched(std::vector<PeerRow>& rows, const std::string& source, const std::string& output, int type) {
    const std::pair<const char*, int> modes[] = {{" nearest -> ", cv::INTER_NEAREST},
                                                 {" linear -> ", cv::INTER_LINEAR}};
    for (const auto& [method, mode] : modes)
        rows.push_back(row(
            source + method + output,
            [type, mode = mode](const Job& job) {
                cv::Mat d(job.rows(), job.columns() / 2 * 3, type, job.to);
                cv::resize(from(job, type), d, d.size(), 0, 0, mode);
            },
            near));
}

void splitRgb(const Job& job) {
    std::vector<cv::Mat> planes{to(job, CV_8U, 0), to(job, CV_8U, 1), to(job, CV_8U, 2)};
    cv::split(from(job, CV_8UC3), planes);
}

// Grey with zero chroma.
Call toUyvy(const Job& job) {
    const std::vector<cv::Mat> planes{cv::Mat::zeros(job.rows(), job.columns(), CV_8U), from(job, CV_8U)};
    return [=] {
        cv::Mat d = to(job, CV_8UC2);
        cv::merge(planes, d);
    };
}

} // namespace

Peer openCv() {
    cv::setNumThreads(1);
    Peer peer{"OpenCV",
              "",
              {color("Mono8 -> BGR24", CV_8U, CV_8UC3, cv::COLOR_GRAY2BGR),
               color("Mono8 -> RGB24", CV_8U, CV_8UC3, cv::COLOR_GRAY2RGB),
               color("Mono8 -> BGRA32", CV_8U, CV_8UC4, cv::COLOR_GRAY2BGRA),
               color("Mono8 -> RGBA32", CV_8U, CV_8UC4, cv::COLOR_GRAY2RGBA),
               {"Mono8 -> UYVY", toUyvy},

               scaled("Mono10 -> Mono8", CV_16U, CV_8U, 1 / 4.0),
               scaled("Mono10 -> Mono16", CV_16U, CV_16U, 64),
               scaled("Mono12 -> Mono8", CV_16U, CV_8U, 1 / 16.0),
               scaled("Mono12 -> Mono16", CV_16U, CV_16U, 16),
               scaled("Mono14 -> Mono8", CV_16U, CV_8U, 1 / 64.0),
               scaled("Mono14 -> Mono16", CV_16U, CV_16U, 4),
               scaled("Mono16 -> Mono8", CV_16U, CV_8U, 1 / 256.0),
               scaledColor("Mono10 -> BGR24", CV_8U, 1 / 4.0, CV_8UC3, cv::COLOR_GRAY2BGR),
               scaledColor("Mono12 -> BGR24", CV_8U, 1 / 16.0, CV_8UC3, cv::COLOR_GRAY2BGR),
               scaledColor("Mono12 -> BGR48", CV_16U, 16, CV_16UC3, cv::COLOR_GRAY2BGR),
               scaledColor("Mono16 -> BGR24", CV_8U, 1 / 256.0, CV_8UC3, cv::COLOR_GRAY2BGR),

               color("RGB8 -> Mono8", CV_8UC3, CV_8U, cv::COLOR_RGB2GRAY),
               color("RGB8 -> BGR24", CV_8UC3, CV_8UC3, cv::COLOR_RGB2BGR),
               color("RGB8 -> BGRA32", CV_8UC3, CV_8UC4, cv::COLOR_RGB2BGRA),
               color("RGB8 -> RGBA32", CV_8UC3, CV_8UC4, cv::COLOR_RGB2RGBA),
               color("BGR8 -> Mono8", CV_8UC3, CV_8U, cv::COLOR_BGR2GRAY),
               color("BGR8 -> BGRA32", CV_8UC3, CV_8UC4, cv::COLOR_BGR2BGRA),
               color("BGR8 -> RGB24", CV_8UC3, CV_8UC3, cv::COLOR_BGR2RGB),
               color("BGR8 -> RGBA32", CV_8UC3, CV_8UC4, cv::COLOR_BGR2RGBA),
               color("RGBA8 -> Mono8", CV_8UC4, CV_8U, cv::COLOR_RGBA2GRAY),
               color("RGBA8 -> BGR24", CV_8UC4, CV_8UC3, cv::COLOR_RGBA2BGR),
               color("RGBA8 -> BGRA32", CV_8UC4, CV_8UC4, cv::COLOR_RGBA2BGRA),
               color("RGBA8 -> RGB24", CV_8UC4, CV_8UC3, cv::COLOR_RGBA2RGB),
               color("BGRA8 -> Mono8", CV_8UC4, CV_8U, cv::COLOR_BGRA2GRAY),
               color("BGRA8 -> BGR24", CV_8UC4, CV_8UC3, cv::COLOR_BGRA2BGR),
               color("BGRA8 -> RGB24", CV_8UC4, CV_8UC3, cv::COLOR_BGRA2RGB),
               color("BGRA8 -> RGBA32", CV_8UC4, CV_8UC4, cv::COLOR_BGRA2RGBA),
               weighed("RGB8 -> Mono8 BT.709", CV_8UC3, {54 / 256.F, 184 / 256.F, 18 / 256.F}),
               weighed("RGB8 double precision -> Mono8", CV_8UC3, {0.21F, 0.72F, 0.07F}),
               row("RGB8 planes -> R G B", splitRgb),

               color("YUV 4:2:2 -> Mono8", CV_8UC2, CV_8U, cv::COLOR_YUV2GRAY_UYVY, near),
               color("YUV 4:2:2 -> BGR24", CV_8UC2, CV_8UC3, cv::COLOR_YUV2BGR_UYVY, near),
               color("YUV 4:2:2 -> BGRA32", CV_8UC2, CV_8UC4, cv::COLOR_YUV2BGRA_UYVY, near),
               color("YUV 4:2:2 -> RGB24", CV_8UC2, CV_8UC3, cv::COLOR_YUV2RGB_UYVY, near),
               color("YUV 4:2:2 -> RGBA32", CV_8UC2, CV_8UC4, cv::COLOR_YUV2RGBA_UYVY, near),

               color("Bayer8 2x2 -> Mono8", CV_8U, CV_8U, cv::COLOR_BayerRGGB2GRAY, near),
               color("Bayer8 2x2 -> BGR24", CV_8U, CV_8UC3, cv::COLOR_BayerRGGB2BGR, near),
               color("Bayer8 2x2 -> BGRA32", CV_8U, CV_8UC4, cv::COLOR_BayerRGGB2BGRA, near),
               color("Bayer8 2x2 -> RGB24", CV_8U, CV_8UC3, cv::COLOR_BayerRGGB2RGB, near),
               color("Bayer8 2x2 -> RGBA32", CV_8U, CV_8UC4, cv::COLOR_BayerRGGB2RGBA, near),
               color("Bayer8 3x3 -> Mono8", CV_8U, CV_8U, cv::COLOR_BayerRGGB2GRAY, near),
               color("Bayer8 3x3 -> BGR24", CV_8U, CV_8UC3, cv::COLOR_BayerRGGB2BGR, near),
               color("Bayer8 3x3 -> BGRA32", CV_8U, CV_8UC4, cv::COLOR_BayerRGGB2BGRA, near),
               color("Bayer8 3x3 -> RGB24", CV_8U, CV_8UC3, cv::COLOR_BayerRGGB2RGB, near),
               color("Bayer8 3x3 -> RGBA32", CV_8U, CV_8UC4, cv::COLOR_BayerRGGB2RGBA, near),
               color("Bayer8 LCAA -> BGR24", CV_8U, CV_8UC3, cv::COLOR_BayerRGGB2BGR_EA, near),
               color("Bayer8 LCAA -> RGB24", CV_8U, CV_8UC3, cv::COLOR_BayerRGGB2RGB_EA, near),
               color("Bayer8 LCAAV -> BGR24", CV_8U, CV_8UC3, cv::COLOR_BayerRGGB2BGR_EA, near),
               color("Bayer8 LCAAV -> RGB24", CV_8U, CV_8UC3, cv::COLOR_BayerRGGB2RGB_EA, near),
               scaledColor("Bayer10 2x2 -> BGR24", CV_8U, 1 / 4.0, CV_8UC3, cv::COLOR_BayerRGGB2BGR),
               scaledColor("Bayer12 2x2 -> BGR24", CV_8U, 1 / 16.0, CV_8UC3, cv::COLOR_BayerRGGB2BGR),
               scaledColor("Bayer12 2x2 -> BGR48", CV_16U, 16, CV_16UC3, cv::COLOR_BayerRGGB2BGR),
               scaledColor("Bayer16 2x2 -> BGR24", CV_8U, 1 / 256.0, CV_8UC3, cv::COLOR_BayerRGGB2BGR),
               color("Bayer16 2x2 -> BGR48", CV_16U, CV_16UC3, cv::COLOR_BayerRGGB2BGR, near),

               corrected("RGB8 matrix -> RGB24", CV_8UC3, false, false),
               corrected("RGB8 matrix -> BGR24", CV_8UC3, false, true),
               corrected("BGR8 matrix -> RGB24", CV_8UC3, true, false),
               corrected("BGR8 matrix -> BGR24", CV_8UC3, true, true),
               corrected("RGBA8 matrix -> RGB24", CV_8UC4, false, false),
               corrected("RGBA8 matrix -> BGR24", CV_8UC4, false, true),
               corrected("BGRA8 matrix -> RGB24", CV_8UC4, true, false),
               corrected("BGRA8 matrix -> BGR24", CV_8UC4, true, true),
               color("Mono8 one call -> BGR24", CV_8U, CV_8UC3, cv::COLOR_GRAY2BGR)},
              nullptr};
    const std::tuple<const char*, const char*, int> pixels[] = {{"Mono8", "Mono8", CV_8U},
                                                                {"Mono16", "Mono16", CV_16U},
                                                                {"RGB8", "RGB24", CV_8UC3},
                                                                {"RGB16", "RGB48", CV_16UC3}};
    for (const auto& [source, output, type] : pixels) {
        addFlips(peer.rows, source, output, type);
        addStretched(peer.rows, source, output, type);
    }
    return peer;
}

} // namespace bench
