// Frames from a camera. Built without a camera library, there are none and the functions say why.
#pragma once
#include <functional>
#include <optional>
#include <string>

#include "files.h"
#include "frame.h"

namespace tool {

struct CameraSettings {
    std::string camera;                // a name that Aravis knows; "Fake_1" is simulated in this process
    std::optional<PixelFormat> format; // the camera's own choice otherwise
    std::optional<Size> size;
    unsigned frames = 1;
};

// Hands each frame to `take`, as it arrives. Throws Error.
void grab(const CameraSettings& settings, const std::function<void(const FrameFormat&, Bytes)>& take);

// "Aravis 0.8.26", or why there is nothing.
std::string cameraSupport();

} // namespace tool
