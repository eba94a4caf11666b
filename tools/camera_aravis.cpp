#include <arv.h>
#include <memory>
#include <utility>

#include "camera.h"
#include "conversion.h"
#include "errors.h"

namespace tool {

namespace {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <class T> using Reference = std::unique_ptr<T, Unref>;

// Passes &error to a call that may fail, then throws if it did.
class Attempt {
public:
    explicit Attempt(std::string what) : what_(std::move(what)) {}
    Attempt(const Attempt&) = delete;
    Attempt& operator=(const Attempt&) = delete;
    ~Attempt() { g_clear_error(&error_); }

    operator GError**() { return &error_; }
    void check() const {
        if (error_) throw Error("cannot " + what_ + ": " + error_->message);
    }

private:
    std::string what_;
    GError* error_ = nullptr;
};

Reference<ArvCamera> open(const std::string& name) {
    arv_enable_interface("Fake"); // off by default
    Attempt attempt("open the camera " + name);
    Reference<ArvCamera> camera(arv_camera_new(name.c_str(), attempt));
    attempt.check();
    if (!camera) throw Error("there is no camera " + name);
    return camera;
}

void configure(ArvCamera* camera, const CameraSettings& settings) {
    if (settings.size) {
        Attempt attempt("set the size " + text(*settings.size));
        const auto width = static_cast<gint>(settings.size->width), height = static_cast<gint>(settings.size->height);
        arv_camera_set_region(camera, 0, 0, width, height, attempt);
        attempt.check();
    }
    if (settings.format) {
        Attempt attempt("set the pixel format " + std::string(settings.format->name));
        arv_camera_set_pixel_format(camera, settings.format->code, attempt);
        attempt.check();
    }
}

Reference<ArvBuffer> nextFrame(ArvCamera* camera) {
    constexpr guint64 fiveSeconds = 5'000'000;
    Attempt attempt("take a frame");
    Reference<ArvBuffer> buffer(arv_camera_acquisition(camera, fiveSeconds, attempt));
    attempt.check();
    if (!buffer || arv_buffer_get_status(buffer.get()) != ARV_BUFFER_STATUS_SUCCESS)
        throw Error("the camera delivered no complete frame");
    return buffer;
}

FrameFormat formatOf(ArvBuffer* buffer) {
    const auto code = arv_buffer_get_image_pixel_format(buffer);
    const PixelFormat* const format = pixelFormatWithCode(code);
    if (!format) throw Error("the camera sends an unknown pixel format with the PFNC code " + std::to_string(code));
    const auto width = static_cast<std::uint32_t>(arv_buffer_get_image_width(buffer));
    const auto height = static_cast<std::uint32_t>(arv_buffer_get_image_height(buffer));
    return {*format, {width, height}};
}

} // namespace

void grab(const CameraSettings& settings, const std::function<void(const FrameFormat&, Bytes)>& take) {
    const Reference<ArvCamera> camera = open(settings.camera);
    configure(camera.get(), settings);
    for (unsigned i = 0; i < settings.frames; ++i) {
        const Reference<ArvBuffer> buffer = nextFrame(camera.get());
        const FrameFormat frame = formatOf(buffer.get());
        std::size_t size = 0;
        const auto* const data = static_cast<const std::uint8_t*>(arv_buffer_get_image_data(buffer.get(), &size));
        if (size < byteCount(frame)) {
            throw Error("the camera sent " + std::to_string(size) + " bytes, but " + text(frame) + " has " +
                        std::to_string(byteCount(frame)));
        }
        take(frame, Bytes(data, data + byteCount(frame)));
    }
}

std::string cameraSupport() { return "Aravis " ARAVIS_VERSION; }

} // namespace tool
