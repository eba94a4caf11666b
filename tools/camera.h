// Frames from a camera. Built without a camera library, there are none and the functions say why.
#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "files.h"
#include "outputs.h"

namespace tool {

struct CameraSettings {
    std::string camera;                // a name that Aravis knows, see Camera::name
    std::optional<PixelFormat> format; // the camera's own choice otherwise
    std::optional<Size> size;
    std::vector<std::string> features; // "Feature=Value"
    unsigned frames = 1;
};

struct Camera {
    std::string name, description;
    bool simulated = false; // in this process
};

// The real ones first. Looking for them takes a second or two.
std::vector<Camera> findCameras();

// Hands each frame to `take`, as it arrives, and returns how many were lost meanwhile. Throws Error.
std::uint64_t grab(const CameraSettings& settings, const std::function<void(const FrameFormat&, Bytes)>& take);

// "Aravis 0.8.26", or why there is nothing.
std::string cameraSupport();

} // namespace tool
