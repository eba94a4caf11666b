#include "camera.h"
#include "errors.h"

namespace tool {

namespace {

[[noreturn]] void refuse() { throw Error("no cameras: " + cameraSupport()); }

} // namespace

std::vector<Camera> findCameras() { refuse(); }

std::uint64_t grab(const CameraSettings&, const std::function<void(const FrameFormat&, Bytes)>&) { refuse(); }

std::string cameraSupport() {
    return "built without Aravis (on Linux install libaravis-dev and libusb-1.0-0-dev, then configure and build again)";
}

} // namespace tool
