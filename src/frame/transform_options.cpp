#include <algorithm>

#include "orvella/orv.h"

OrvErrorType OrvSetDebayerMode(OrvDebayerMode mode, OrvTransformInfo* info) {
    if (!info) return OrvErrorBadParameter;
    info->TransformType = OrvTransformTypeDebayerMode;
    info->Parameter.DebayerMode = mode;
    return OrvErrorSuccess;
}

OrvErrorType OrvSetColorCorrectionMatrix3x3(const float* matrix, OrvTransformInfo* info) {
    if (!matrix || !info) return OrvErrorBadParameter;
    info->TransformType = OrvTransformTypeColorCorrection;
    std::copy_n(matrix, 9, info->Parameter.Matrix);
    return OrvErrorSuccess;
}

OrvErrorType OrvSetGammaCorrection(float gamma, OrvTransformInfo* info) {
    if (!info) return OrvErrorBadParameter;
    info->TransformType = OrvTransformTypeGammaCorrection;
    info->Parameter.Gamma = gamma;
    return OrvErrorSuccess;
}
