#include <algorithm>
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

constexpr auto simulation = "Fake"; // the interface of Aravis, off by default

Reference<ArvCamera> open(const std::string& name) {
    arv_enable_interface(simulation);
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
    for (const std::string& feature : settings.features) {
        Attempt attempt("set " + feature);
        arv_device_set_features_from_string(arv_camera_get_device(camera), feature.c_str(), attempt);
        attempt.check();
    }
}

// Frames one after the other, as the camera sends them.
class Stream {
public:
    explicit Stream(ArvCamera* camera) : camera_(camera) {
        Attempt attempt("start the camera");
        stream_.reset(arv_camera_create_stream(camera, nullptr, nullptr, attempt));
        attempt.check();
        const guint size = arv_camera_get_payload(camera, attempt);
        attempt.check();
        for (int i = 0; i < buffers; ++i) arv_stream_push_buffer(stream_.get(), arv_buffer_new(size, nullptr));
        arv_camera_set_acquisition_mode(camera, ARV_ACQUISITION_MODE_CONTINUOUS, nullptr); // not all have modes
        arv_camera_start_acquisition(camera, attempt);
        attempt.check();
    }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;
    ~Stream() { arv_camera_stop_acquisition(camera_, nullptr); }

    ArvBuffer* next() {
        constexpr guint64 fiveSeconds = 5'000'000;
        for (int attempts = 0; attempts < buffers; ++attempts) {
            ArvBuffer* const buffer = arv_stream_timeout_pop_buffer(stream_.get(), fiveSeconds);
            if (!buffer) break;
            if (arv_buffer_get_status(buffer) == ARV_BUFFER_STATUS_SUCCESS) return buffer;
            giveBack(buffer);
        }
        throw Error("the camera delivered no complete frame");
    }
    void giveBack(ArvBuffer* buffer) { arv_stream_push_buffer(stream_.get(), buffer); }

    std::uint64_t lost() const {
        guint64 completed = 0, failed = 0, withoutBuffer = 0;
        arv_stream_get_statistics(stream_.get(), &completed, &failed, &withoutBuffer);
        return failed + withoutBuffer;
    }

private:
    static constexpr int buffers = 32; // what may arrive while a frame is being written
    ArvCamera* camera_;
    Reference<ArvStream> stream_;
};

FrameFormat formatOf(ArvBuffer* buffer) {
    const auto code = arv_buffer_get_image_pixel_format(buffer);
    const PixelFormat* const format = pixelFormatWithCode(code);
    if (!format) throw Error("the camera sends an unknown pixel format with the PFNC code " + std::to_string(code));
    const auto width = static_cast<std::uint32_t>(arv_buffer_get_image_width(buffer));
    const auto height = static_cast<std::uint32_t>(arv_buffer_get_image_height(buffer));
    return {*format, {width, height}};
}

} // namespace

std::vector<Camera> findCameras() {
    arv_enable_interface(simulation);
    arv_update_device_list();
    const auto text = [](const char* of) { return std::string(of ? of : ""); };
    std::vector<Camera> cameras;
    for (unsigned i = 0; i < arv_get_n_devices(); ++i) {
        const bool simulated = text(arv_get_device_protocol(i)) == simulation;
        const std::string description = text(arv_get_device_vendor(i)) + " " + text(arv_get_device_model(i)) + ", " +
                                        text(arv_get_device_protocol(i)) + " " + text(arv_get_device_address(i));
        cameras.push_back(
            {text(arv_get_device_id(i)), simulated ? "simulated in this program" : description, simulated});
    }
    std::stable_partition(cameras.begin(), cameras.end(), [](const Camera& camera) { return !camera.simulated; });
    return cameras;
}

std::uint64_t grab(const CameraSettings& settings, const std::function<void(const FrameFormat&, Bytes)>& take) {
    const Reference<ArvCamera> camera = open(settings.camera);
    configure(camera.get(), settings);
    Stream stream(camera.get());
    for (unsigned i = 0; i < settings.frames; ++i) {
        ArvBuffer* const buffer = stream.next();
        const FrameFormat frame = formatOf(buffer);
        std::size_t size = 0;
        const auto* const data = static_cast<const std::uint8_t*>(arv_buffer_get_image_data(buffer, &size));
        if (size < byteCount(frame)) {
            throw Error("the camera sent " + std::to_string(size) + " bytes, but " + text(frame) + " has " +
                        std::to_string(byteCount(frame)));
        }
        take(frame, Bytes(data, data + byteCount(frame)));
        stream.giveBack(buffer);
    }
    return stream.lost();
}

std::string cameraSupport() { return "Aravis " ARAVIS_VERSION; }

} // namespace tool
