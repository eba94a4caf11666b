/* A GStreamer pipeline that ends in the program: orvellaconvert makes BGR of a camera's mosaic, appsink hands it over.
 *
 *     appsink [SOURCE]     a source as in gst-launch-1.0, by default a test picture; with a camera for instance
 *                          "aravissrc ! video/x-bayer,format=rggb" */
#include <gst/app/gstappsink.h>
#include <gst/gst.h>
#include <gst/video/video.h>
#include <stdio.h>

static const char test_picture[] = "videotestsrc num-buffers=100 ! video/x-bayer,format=rggb,width=1280,height=960";

/* The mean of a frame's green, as a stand-in for what you do with it. */
static double mean_green(GstSample* sample) {
    GstVideoInfo info;
    GstVideoFrame frame;
    if (!gst_video_info_from_caps(&info, gst_sample_get_caps(sample)) ||
        !gst_video_frame_map(&frame, &info, gst_sample_get_buffer(sample), GST_MAP_READ))
        return -1;
    double sum = 0;
    for (int y = 0; y < info.height; ++y) {
        const guint8* const row =
            (const guint8*)GST_VIDEO_FRAME_PLANE_DATA(&frame, 0) + y * GST_VIDEO_FRAME_PLANE_STRIDE(&frame, 0);
        for (int x = 0; x < info.width; ++x) sum += row[3 * x + 1];
    }
    gst_video_frame_unmap(&frame);
    return sum / info.width / info.height;
}

int main(int argc, char** argv) {
    GError* error = NULL;
    gst_init(&argc, &argv);
    char* const line = g_strconcat(argc > 1 ? argv[1] : test_picture,
                                   " ! orvellaconvert debayer=3x3 ! video/x-raw,format=BGR"
                                   " ! appsink name=sink sync=false max-buffers=4",
                                   NULL);
    GstElement* const pipeline = gst_parse_launch(line, &error);
    g_free(line);
    if (error) return fprintf(stderr, "%s\n", error->message), 1;
    GstAppSink* const sink = GST_APP_SINK(gst_bin_get_by_name(GST_BIN(pipeline), "sink"));
    gst_element_set_state(pipeline, GST_STATE_PLAYING);

    const gint64 begin = g_get_monotonic_time();
    double green = 0;
    int frames = 0;
    for (GstSample* sample; (sample = gst_app_sink_pull_sample(sink)) != NULL; ++frames) {
        green = mean_green(sample);
        gst_sample_unref(sample);
    }
    printf("%d frames, mean green of the last %.1f, %.1f frames/s\n", frames, green,
           frames / ((double)(g_get_monotonic_time() - begin) * 1e-6));
    gst_element_set_state(pipeline, GST_STATE_NULL);
    gst_object_unref(sink);
    gst_object_unref(pipeline);
    return frames == 0;
}
