// The element in a harness: what it makes is what the library makes, whatever the rows look like; and in pipelines.
#include <gst/check/gstharness.h>
#include <gst/video/video.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "orvella/orv.h"

#ifdef ORVELLA_HAVE_ARAVIS
#include <arv.h>
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace {

using Bytes = std::vector<std::uint8_t>;

struct Unref {
    void operator()(GstBuffer* buffer) const { gst_buffer_unref(buffer); }
    void operator()(GstElement* element) const { gst_object_unref(element); }
    void operator()(GstCaps* caps) const { gst_caps_unref(caps); }
    void operator()(GstHarness* harness) const { gst_harness_teardown(harness); }
};
template <class T> using Owned = std::unique_ptr<T, Unref>;

Bytes noise(std::size_t size) {
    std::minstd_rand random(static_cast<unsigned>(size));
    Bytes bytes(size);
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random() >> 8);
    return bytes;
}

struct Case {
    std::string source; // of the caps
    const char* pfnc;   // what the library is told
    const char* output;
    OrvOutputCode code;
    const char* properties = "";
    OrvDebayerMode debayer = OrvDebayerMode2x2;
};

struct Size {
    unsigned width, height;
};

std::string caps(const std::string& format, Size size) {
    const bool raw = std::isupper(format[0]);
    return std::string(raw ? "video/x-raw" : "video/x-bayer") + ",format=" + format +
           ",framerate=30/1,width=" + std::to_string(size.width) + ",height=" + std::to_string(size.height);
}

Owned<GstHarness> harness(const std::string& properties, const std::string& source, const std::string& output) {
    Owned<GstHarness> h(gst_harness_new_parse(("orvellaconvert " + properties).c_str()));
    gst_harness_set_sink_caps_str(h.get(), ("video/x-raw,format=" + output).c_str());
    gst_harness_set_src_caps_str(h.get(), source.c_str());
    return h;
}

GstBuffer* bufferOf(const Bytes& bytes) { return gst_buffer_new_memdup(bytes.data(), bytes.size()); }

OrvImage image(const char* name, Size size, Bytes& bytes) {
    OrvImage result{};
    result.Size = sizeof result;
    result.Data = bytes.data();
    const std::string full = std::string("PixelFormat") + name;
    EXPECT_EQ(OrvSetImageInfoFromString(full.c_str(), 0, size.width, size.height, &result), OrvErrorSuccess);
    return result;
}

// By the library alone, fourth bytes 255.
Bytes expected(const Case& c, Size size, Bytes source) {
    OrvImage from = image(c.pfnc, size, source), to = from;
    OrvSetImageInfoOutput(c.code, size.width, size.height, &to);
    Bytes result(std::size_t{size.width} * size.height * to.ImageInfo.PixelInfo.BitsPerPixel / 8, 255);
    to.Data = result.data();
    OrvTransformInfo debayer{};
    OrvSetDebayerMode(c.debayer, &debayer);
    EXPECT_EQ(OrvImageTransform(&from, &to, &debayer, 1), OrvErrorSuccess);
    return result;
}

// The rows of a dense image further apart.
Bytes spread(const Bytes& dense, unsigned height, std::size_t stride) {
    const std::size_t row = dense.size() / height;
    Bytes result(stride * height, 0xA5);
    for (unsigned y = 0; y < height; ++y) std::memcpy(&result[stride * y], &dense[row * y], row);
    return result;
}

Bytes rowsOf(GstBuffer* buffer, const char* format, Size size) {
    GstVideoInfo info;
    gst_video_info_set_format(&info, gst_video_format_from_string(format), size.width, size.height);
    GstVideoFrame frame;
    EXPECT_TRUE(gst_video_frame_map(&frame, &info, buffer, GST_MAP_READ));
    const bool pairs = info.finfo->format == GST_VIDEO_FORMAT_UYVY;
    const auto row = pairs ? std::size_t{size.width + 1} / 2 * 4
                           : std::size_t{size.width} * static_cast<unsigned>(GST_VIDEO_FRAME_COMP_PSTRIDE(&frame, 0));
    Bytes result;
    for (unsigned y = 0; y < size.height; ++y) {
        const auto* line = static_cast<std::uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, 0)) +
                           std::size_t{y} * static_cast<unsigned>(GST_VIDEO_FRAME_PLANE_STRIDE(&frame, 0));
        result.insert(result.end(), line, line + row);
    }
    gst_video_frame_unmap(&frame);
    return result;
}

Bytes run(GstHarness* h, GstBuffer* source, const char* output, Size size) {
    const Owned<GstBuffer> result(gst_harness_push_and_pull(h, source));
    return result ? rowsOf(result.get(), output, size) : Bytes();
}

const Case cases[] = {
    {"rggb", "BayerRG8", "BGR", OrvOutputBgr24},
    {"grbg", "BayerGR8", "RGB", OrvOutputRgb24, "debayer=3x3", OrvDebayerMode3x3},
    {"gbrgle", "BayerGB8", "BGRx", OrvOutputBgra32, "debayer=3x3", OrvDebayerMode3x3},
    {"bggr", "BayerBG8", "RGBx", OrvOutputRgba32},
    {"rggb", "BayerRG8", "UYVY", OrvOutputYuv422},
    {"rggb", "BayerRG8", "BGR", OrvOutputBgr24, "debayer=lcaa", OrvDebayerModeLCAA},
    {"grbg", "BayerGR8", "BGRx", OrvOutputBgra32, "debayer=lcaav", OrvDebayerModeLCAAV},
    {"grbg", "BayerGR8", "GRAY16_LE", OrvOutputMono16, "debayer=yuv422", OrvDebayerModeYuv422},
    {"rggb10le", "BayerRG10", "BGR", OrvOutputBgr24},
    {"gbrg12le", "BayerGB12", "GRAY16_LE", OrvOutputMono16},
    {"bggr16le", "BayerBG16", "BGRx", OrvOutputBgra32},
    {"GRAY8", "Mono8", "RGB", OrvOutputRgb24},
    {"GRAY16_LE", "Mono16", "GRAY8", OrvOutputMono8},
    {"GRAY16_LE", "Mono12", "GRAY16_LE", OrvOutputMono16, "pixel-format=Mono12"},
    {"UYVY", "Yuv422", "BGRx", OrvOutputBgra32},
    {"RGB", "Rgb8", "BGR", OrvOutputBgr24},
    {"BGR", "Bgr8", "GRAY8", OrvOutputMono8},
    {"rggb", "BayerRG12p", "BGR", OrvOutputBgr24, "pixel-format=BayerRG12p"},
    {"rggb", "BayerGR12Packed", "RGBx", OrvOutputRgba32, "pixel-format=BayerGR12Packed"},
    {"GRAY16_LE", "Mono10p", "GRAY8", OrvOutputMono8, "pixel-format=mono10p"},
    {"RGB", "Yuv411", "RGB", OrvOutputRgb24, "pixel-format=Yuv411"},
};

// Dense frames, rows padded to four bytes, rows that meta data place, a tail; small frames, and many bands.
TEST(Element, MakesWhatTheLibraryMakes) {
    for (const Case& c : cases) {
        for (const Size size : {Size{16, 4}, Size{652, 412}}) {
            SCOPED_TRACE(c.source + " " + c.pfnc + " to " + c.output + ", " + std::to_string(size.width));
            Bytes probe(1);
            const unsigned bits = image(c.pfnc, size, probe).ImageInfo.PixelInfo.BitsPerPixel;
            const std::size_t row = std::size_t{size.width} * bits / 8;
            const Bytes source = noise(row * size.height), wanted = expected(c, size, source);
            const auto h = harness(c.properties, caps(c.source, size), c.output);

            EXPECT_TRUE(run(h.get(), bufferOf(source), c.output, size) == wanted) << "dense";
            const Bytes padded = spread(source, size.height, (row + 3) / 4 * 4);
            EXPECT_TRUE(run(h.get(), bufferOf(padded), c.output, size) == wanted) << "padded to 4";
            Bytes tail = source;
            tail.resize(source.size() + 1);
            EXPECT_TRUE(run(h.get(), bufferOf(tail), c.output, size) == wanted) << "tail";
            const auto stride = static_cast<gint>(row + 12);
            GstBuffer* const placed = bufferOf(spread(source, size.height, row + 12));
            gsize offsets[] = {0, 0, 0, 0};
            gint strides[] = {stride, 0, 0, 0};
            gst_buffer_add_video_meta_full(placed, GST_VIDEO_FRAME_FLAG_NONE, GST_VIDEO_FORMAT_GRAY8, size.width,
                                           size.height, 1, offsets, strides);
            EXPECT_TRUE(run(h.get(), placed, c.output, size) == wanted) << "placed";
        }
    }
}

// Chains of conversions, against one channel or a constant that is known.
struct Colour {
    const char *source, *properties, *output;
    Bytes block, pixel; // repeated over the source, found all over the result
};
TEST(Element, KeepsFlatColours) {
    const Colour colours[] = {
        {"rggb", "", "BGR", {10, 20, 10, 20, 20, 30, 20, 30}, {30, 20, 10}},
        {"rggb", "debayer=3x3", "RGBx", {10, 20, 10, 20, 20, 30, 20, 30}, {10, 20, 30, 255}},
        {"rggb", "matrix=<0,0,1,0,1,0,1,0,0>", "BGR", {10, 20, 10, 20, 20, 30, 20, 30}, {10, 20, 30}},
        {"rggb", "debayer=lcaa matrix=<0,2,0,0,2,0,0,2,0>", "GRAY8", {10, 20, 10, 20, 20, 30, 20, 30}, {40}},
        {"GRAY8", "", "UYVY", {100}, {128, 102, 128, 102}},
        {"GRAY8", "matrix=<0,0,0,0,1,0,0,0,0>", "RGBx", {100}, {0, 100, 0, 255}},
        {"GRAY16_BE", "", "GRAY16_LE", {0x12, 0x34}, {0x34, 0x12}},
        {"GRAY16_LE", "", "RGB", {0xC0, 0x12}, {0x12, 0x12, 0x12}}, // no tint
        {"UYVY,colorimetry=bt601", "", "RGB", {128, 235}, {255, 255, 255}},
        {"UYVY,colorimetry=bt601", "", "RGB", {128, 16}, {0, 0, 0}},
        {"UYVY", "", "RGB", {128, 235}, {235, 235, 235}},
        {"UYVY", "matrix=<0,0,0,1,0,0,0,0,0>", "BGRx", {128, 77}, {0, 77, 0, 255}},
    };
    for (const Colour& c : colours) {
        for (const Size size : {Size{64, 16}, Size{63, 15}, Size{3, 2}, Size{2, 3}, Size{1001, 301}}) {
            SCOPED_TRACE(std::string(c.source) + " " + c.properties + " to " + c.output + ", " +
                         std::to_string(size.width));
            const bool mosaic = c.block.size() == 8;
            const std::size_t pixel = mosaic ? 1 : c.block.size();
            const std::size_t even = c.source[0] == 'U' ? (size.width + 1) / 2 * 2 : size.width;
            Bytes source;
            for (unsigned y = 0; y < size.height; ++y) {
                for (std::size_t i = 0; i < even * pixel; ++i)
                    source.push_back(c.block[mosaic ? y % 2 * 4 + i % 4 : i % c.block.size()]);
            }
            const auto h = harness(c.properties, caps(c.source, size), c.output);
            const Bytes got = run(h.get(), bufferOf(source), c.output, size);
            Bytes wanted;
            while (wanted.size() < got.size()) wanted.insert(wanted.end(), c.pixel.begin(), c.pixel.end());
            wanted.resize(got.size());
            EXPECT_FALSE(got.empty());
            EXPECT_TRUE(got == wanted);
        }
    }
}

// The filtered methods overwrite their source: never one that somebody else holds.
TEST(Element, LeavesHeldFramesAlone) {
    constexpr Size size{64, 32};
    const Bytes source = noise(64 * 32);
    const auto h = harness("debayer=lcaa", caps("rggb", size), "BGR");
    const Owned<GstBuffer> held(bufferOf(source));
    const Bytes first = run(h.get(), gst_buffer_ref(held.get()), "BGR", size);
    EXPECT_EQ(gst_buffer_memcmp(held.get(), 0, source.data(), source.size()), 0);
    // A buffer of its own over memory that is shared.
    EXPECT_EQ(run(h.get(), gst_buffer_copy(held.get()), "BGR", size), first);
    EXPECT_EQ(gst_buffer_memcmp(held.get(), 0, source.data(), source.size()), 0);
    EXPECT_EQ(run(h.get(), bufferOf(source), "BGR", size), first);
}

TEST(Element, FollowsItsProperties) {
    constexpr Size size{4, 4};
    const auto h = harness("", caps("RGB", size), "RGB");
    Bytes source(48), swapped(48);
    for (unsigned i = 0; i < 48; ++i) source[i] = static_cast<std::uint8_t>(i);
    for (unsigned i = 0; i < 48; ++i) swapped[i] = source[i / 3 * 3 + 2 - i % 3];
    EXPECT_EQ(run(h.get(), bufferOf(source), "RGB", size), source);
    const Owned<GstElement> element(gst_harness_find_element(h.get(), "orvellaconvert"));
    gst_util_set_object_arg(G_OBJECT(element.get()), "matrix", "<0,0,1,0,1,0,1,0,0>");
    EXPECT_EQ(run(h.get(), bufferOf(source), "RGB", size), swapped);
}

// How the pipeline ends: "end", or the text of its error.
std::string outcome(const std::string& description) {
    GError* error = nullptr;
    const Owned<GstElement> pipeline(gst_parse_launch(description.c_str(), &error));
    std::string result = "end";
    if (!error) {
        gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
        GstBus* const bus = gst_element_get_bus(pipeline.get());
        GstMessage* const message = gst_bus_timed_pop_filtered(
            bus, 30 * GST_SECOND, static_cast<GstMessageType>(GST_MESSAGE_EOS | GST_MESSAGE_ERROR));
        if (!message) result = "no end";
        if (message && GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR)
            gst_message_parse_error(message, &error, nullptr);
        if (message) gst_message_unref(message);
        gst_object_unref(bus);
        gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    }
    if (error) result = error->message;
    g_clear_error(&error);
    return result;
}

TEST(Pipelines, EndAsTheyShould) {
    const std::string source = "videotestsrc num-buffers=3 ! ", sink = " ! fakesink";
    const struct {
        std::string pipeline;
        const char* outcome; // the beginning
    } table[] = {
        {"video/x-bayer,format=rggb ! orvellaconvert debayer=3x3 ! videoconvert ! video/x-raw,format=I420", "end"},
        {"video/x-bayer,format=bggr,width=321,height=241 ! orvellaconvert ! video/x-raw,format=UYVY", "end"},
        {"video/x-raw,format=GRAY16_LE ! orvellaconvert pixel-format=Mono12", "end"},
        {"video/x-raw,format=UYVY,height=480 ! orvellaconvert ! video/x-raw,format=RGB", "end"},
        {"video/x-bayer,format=rggb ! orvellaconvert pixel-format=BayerRG12p",
         "a frame of 240 rows needs 115200 bytes"},
        {"video/x-bayer,format=rggb ! orvellaconvert pixel-format=BayerXX8", "pixel-format 'BayerXX8' is no format"},
        {"video/x-raw,format=RGB ! orvellaconvert pixel-format=Rgb16", "pixel-format 'Rgb16' is no format"},
        {"video/x-raw,format=RGB,width=33 ! orvellaconvert pixel-format=Mono12p",
         "rows of this width end within a byte"},
        {"video/x-raw,format=UYVY,colorimetry=bt709 ! orvellaconvert ! video/x-raw,format=RGB",
         "YUV is read as BT.601 only"},
        {"video/x-raw,format=RGB ! orvellaconvert ! video/x-raw,format=UYVY", "could not link"},
        {"video/x-bayer,format=rggb ! orvellaconvert matrix=<1,0,0,0,1,0,0,0,1> ! video/x-raw,format=GRAY16_LE",
         "could not link"},
    };
    for (const auto& [pipeline, wanted] : table)
        EXPECT_EQ(outcome(source + pipeline + sink).substr(0, std::strlen(wanted)), wanted) << pipeline;
}

TEST(Pipelines, OfTheReadmeRun) {
    std::ifstream readme(ORVELLA_README);
    const std::string launch = "gst-launch-1.0 ", window = "autovideosink";
    int count = 0;
    for (std::string line; std::getline(readme, line);) {
        if (!line.starts_with(launch)) continue;
        if (const auto at = line.find(window); at != std::string::npos) line.replace(at, window.size(), "fakesink");
#ifndef ORVELLA_HAVE_ARAVIS
        if (line.find("aravissrc") != std::string::npos) continue;
#endif
        EXPECT_EQ(outcome(line.substr(launch.size())), "end") << line;
        ++count;
    }
    EXPECT_GT(count, 0);
}

#ifdef ORVELLA_HAVE_ARAVIS
TEST(Pipelines, TakeACamerasFrames) {
    EXPECT_EQ(outcome("aravissrc camera-name=Fake_1 num-buffers=3 ! video/x-bayer,format=rggb,width=512,height=512 ! "
                      "orvellaconvert ! fakesink"),
              "end");
}

// Aravis reads raw packets where it may, as root, and sees none of the loopback's.
void giveUpRawSockets() {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct sets[_LINUX_CAPABILITY_U32S_3]{};
    syscall(SYS_capget, &header, sets);
    sets[CAP_TO_INDEX(CAP_NET_RAW)].effective &= ~static_cast<unsigned>(CAP_TO_MASK(CAP_NET_RAW));
    syscall(SYS_capset, &header, sets);
}

// A simulated camera on the network, as far as this machine has one.
TEST(Pipelines, TakeAGigECamerasFrames) {
    giveUpRawSockets();
    ArvGvFakeCamera* const camera = arv_gv_fake_camera_new("127.0.0.1", "pipeline");
    if (arv_gv_fake_camera_is_running(camera)) {
        EXPECT_EQ(outcome("aravissrc camera-name=Aravis-pipeline num-buffers=3 ! "
                          "video/x-bayer,format=rggb,width=512,height=512 ! orvellaconvert debayer=3x3 ! fakesink"),
                  "end");
    } else {
        std::puts("skipped: no camera can be simulated on 127.0.0.1");
    }
    g_object_unref(camera);
}
#endif

} // namespace

int main(int argc, char** argv) {
    setenv("GST_REGISTRY_FORK", "no", 1); // a process of its own could not load a plugin with a sanitizer in it
    setenv("G_DEBUG", "fatal-criticals", 1);
    gst_init(&argc, &argv);
    testing::InitGoogleTest(&argc, argv);
#ifdef ORVELLA_HAVE_ARAVIS
    arv_enable_interface("Fake"); // the simulated camera
#endif
    gst_registry_scan_path(gst_registry_get(), ORVELLA_PLUGIN_FOLDER);
    return RUN_ALL_TESTS();
}
