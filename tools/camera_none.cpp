#include "camera.h"
#include "errors.h"

namespace tool {

void grab(const CameraSettings&, const std::function<void(const FrameFormat&, Bytes)>&) {
    throw Error("no cameras: " + cameraSupport());
}

std::string cameraSupport() {
    return "built without Aravis (install libaravis-dev and libusb-1.0-0-dev, then configure and build again)";
}

} // namespace tool
