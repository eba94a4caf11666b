// Frames of a GenICam camera as cv::Mat: the library writes into the matrix, and OpenCV goes on from there.
//     camera_to_opencv [CAMERA [FRAMES]]     Fake_1, Aravis's simulated camera, and 50 by default
#include <arv.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <opencv2/imgproc.hpp>
#include <orvella/orvella.hpp>

namespace {
// The matrix keeps its memory as long as the size is the same; its rows may be apart.
void convert(ArvBuffer* buffer, orvella::Converter& converter, cv::Mat& bgr) {
    std::size_t length = 0;
    const void* const data = arv_buffer_get_image_data(buffer, &length);
    const orvella::Size size{arv_buffer_get_image_width(buffer), arv_buffer_get_image_height(buffer)};
    const auto format = static_cast<orvella::PixelFormat>(arv_buffer_get_image_pixel_format(buffer));
    bgr.create(static_cast<int>(size.height), static_cast<int>(size.width), CV_8UC3);
    orvella::Picture picture(bgr.data, bgr.step[0] * static_cast<std::size_t>(bgr.rows), orvella::Output::Bgr24, size,
                             static_cast<std::ptrdiff_t>(bgr.step[0]));
    converter.convert({data, length, format, size}, picture);
}
} // namespace

int main(int argc, char** argv) {
    arv_enable_interface("Fake");
    GError* error = nullptr;
    ArvCamera* const camera = arv_camera_new(argc > 1 ? argv[1] : "Fake_1", &error);
    if (camera) arv_camera_set_pixel_format(camera, ARV_PIXEL_FORMAT_BAYER_RG_8, &error);
    ArvStream* const stream = camera && !error ? arv_camera_create_stream(camera, nullptr, nullptr, &error) : nullptr;
    if (!stream) return std::fprintf(stderr, "%s\n", error ? error->message : "no camera"), 1;
    const guint payload = arv_camera_get_payload(camera, nullptr);
    for (int i = 0; i < 5; ++i) arv_stream_push_buffer(stream, arv_buffer_new(payload, nullptr));
    arv_camera_set_frame_rate(camera, 1000, nullptr);
    arv_camera_start_acquisition(camera, nullptr);
    const auto begin = std::chrono::steady_clock::now();
    const int wanted = argc > 2 ? std::atoi(argv[2]) : 50;
    orvella::Converter converter;
    cv::Mat bgr, smooth;
    int frames = 0;
    while (frames < wanted) {
        ArvBuffer* const buffer = arv_stream_timeout_pop_buffer(stream, 2'000'000);
        if (!buffer) break;
        if (arv_buffer_get_status(buffer) == ARV_BUFFER_STATUS_SUCCESS) {
            convert(buffer, converter, bgr);
            cv::GaussianBlur(bgr, smooth, {5, 5}, 0);
            ++frames;
        }
        arv_stream_push_buffer(stream, buffer);
    }
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    arv_camera_stop_acquisition(camera, nullptr);
    g_object_unref(stream);
    g_object_unref(camera);
    std::printf("%d frames of %dx%d, mean green %.1f, %.1f frames/s\n", frames, bgr.cols, bgr.rows, cv::mean(smooth)[1],
                frames / time.count());
    return frames == 0;
}
