// Milliseconds of processor time for a frame through elements that demosaic, in turn in one process: this one, and
// bayer2rgb if it is there (Debian package gstreamer1.0-plugins-bad, or its one file in GST_PLUGIN_PATH).
//
//     orvella_gstreamer_speed [WIDTH HEIGHT]
#include <gst/check/gstharness.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

namespace {

struct Run {
    std::string element;
    GstHarness* harness;
    std::vector<double> times; // ms
};

double milliseconds() { // of this thread, in which the elements work: others may be at work beside it
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

double timeFrame(GstHarness* harness, GstBuffer* source) {
    const double begin = milliseconds();
    gst_buffer_unref(gst_harness_push_and_pull(harness, gst_buffer_ref(source)));
    return milliseconds() - begin;
}

} // namespace

int main(int argc, char** argv) {
    gst_init(&argc, &argv);
    gst_registry_scan_path(gst_registry_get(), ORVELLA_PLUGIN_FOLDER);
    const int width = argc > 2 ? std::atoi(argv[1]) : 2448, height = argc > 2 ? std::atoi(argv[2]) : 2048;
    const std::string size = ",framerate=30/1,width=" + std::to_string(width) + ",height=" + std::to_string(height);

    std::vector<Run> runs;
    for (const char* element : {"orvellaconvert", "orvellaconvert debayer=3x3", "bayer2rgb"}) {
        const std::string name(element);
        GstElementFactory* const factory = gst_element_factory_find(name.substr(0, name.find(' ')).c_str());
        if (!factory) continue;
        gst_object_unref(factory);
        runs.push_back({element, gst_harness_new_parse(element), {}});
        gst_harness_set_sink_caps_str(runs.back().harness, ("video/x-raw,format=BGRx" + size).c_str());
        gst_harness_set_src_caps_str(runs.back().harness, ("video/x-bayer,format=rggb" + size).c_str());
    }
    const auto bytes = static_cast<gsize>(width) * static_cast<gsize>(height);
    GstBuffer* const source = gst_buffer_new_allocate(nullptr, bytes, nullptr);
    gst_buffer_memset(source, 0, 100, bytes);
    for (int round = 0; round < 51; ++round)
        for (Run& run : runs) run.times.push_back(timeFrame(run.harness, source));
    for (Run& run : runs) {
        std::ranges::sort(run.times);
        std::printf("%-28s %6.2f ms at best, %6.2f ms median, %dx%d rggb to BGRx\n", run.element.c_str(),
                    run.times.front(), run.times[run.times.size() / 2], width, height);
        gst_harness_teardown(run.harness);
    }
    gst_buffer_unref(source);
}
