/* Live: frames from a GenICam camera become BGR, and are counted: there is no window.
 *
 *     live_loop [CAMERA [FRAMES]]     Fake_1, Aravis's simulated camera, and 100 by default */
#include <arv.h>
#include <orvella/orv.h>
#include <stdio.h>
#include <stdlib.h>

static OrvErrorType convert(ArvBuffer* buffer, unsigned char* bgr, size_t room) {
    const unsigned width = (unsigned)arv_buffer_get_image_width(buffer);
    const unsigned height = (unsigned)arv_buffer_get_image_height(buffer);
    OrvImage source = {.Size = sizeof source}, picture = {.Size = sizeof picture};
    size_t size = 0;
    source.Data = (void*)arv_buffer_get_image_data(buffer, &size);
    picture.Data = bgr;
    /* What the frame is stands in the buffer: it is not always what was asked for. */
    OrvErrorType result =
        OrvSetImageInfoFromPixelFormat(arv_buffer_get_image_pixel_format(buffer), width, height, &source);
    if (result != OrvErrorSuccess) return result;
    OrvSetImageInfoOutput(OrvOutputBgr24, width, height, &picture);
    const size_t pixels = (size_t)width * height;
    if (size < (pixels * source.ImageInfo.PixelInfo.BitsPerPixel + 7) / 8 || room < pixels * 3)
        return OrvErrorBadParameter;
    OrvTransformInfo debayer;
    OrvSetDebayerMode(OrvDebayerMode3x3, &debayer); /* for mosaics of 8 bits; others have 2x2 only */
    return OrvImageTransform(&source, &picture, &debayer, 1);
}

int main(int argc, char** argv) {
    const int wanted = argc > 2 ? atoi(argv[2]) : 100;
    GError* error = NULL;
    arv_enable_interface("Fake");
    ArvCamera* const camera = arv_camera_new(argc > 1 ? argv[1] : "Fake_1", &error);
    if (camera) arv_camera_set_pixel_format(camera, ARV_PIXEL_FORMAT_BAYER_RG_8, &error);
    ArvStream* const stream = camera && !error ? arv_camera_create_stream(camera, NULL, NULL, &error) : NULL;
    if (!stream) return fprintf(stderr, "%s\n", error ? error->message : "no camera"), 1;
    const guint payload = arv_camera_get_payload(camera, NULL);
    const size_t room = (size_t)payload * 3;
    unsigned char* const bgr = malloc(room);
    for (int i = 0; i < 5; ++i) arv_stream_push_buffer(stream, arv_buffer_new(payload, NULL));
    arv_camera_set_frame_rate(camera, 1000, NULL); /* as fast as it can */
    arv_camera_start_acquisition(camera, NULL);
    const gint64 begin = g_get_monotonic_time();
    int converted = 0, lost = 0;
    while (converted + lost < wanted) {
        ArvBuffer* const buffer = arv_stream_timeout_pop_buffer(stream, 2000000);
        if (!buffer) break;
        const int complete = arv_buffer_get_status(buffer) == ARV_BUFFER_STATUS_SUCCESS;
        *(complete && convert(buffer, bgr, room) == OrvErrorSuccess ? &converted : &lost) += 1;
        arv_stream_push_buffer(stream, buffer);
    }
    const double seconds = (double)(g_get_monotonic_time() - begin) * 1e-6;
    arv_camera_stop_acquisition(camera, NULL);
    g_object_unref(stream);
    g_object_unref(camera);
    free(bgr);
    printf("%d frames converted, %d lost, %.1f frames/s\n", converted, lost, converted / seconds);
    return converted == 0;
}
