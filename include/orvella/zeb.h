/* Orvella: the legacy face, plain C99, for programs written against the older interface.
 *
 * Every ZEB_ function takes the arguments of the Orv function of the same name, in the same order, and does the same
 * with the same buffers, in place or not, on any thread: orv.h has the words. Where this face differs its comment says
 * so.
 *
 * Results are 32-bit words (ZEB_GetErrorInfo has their texts):
 *   0                success
 *   0x88000001       a kernel refused its parameters (OrvErrorInternalFault in orv.h)
 *   0x88000001 + N   the N-th argument, counted from 1, was refused (OrvErrorBadParameter)
 *   0x88000012       an output or option that is not offered (OrvErrorNotImplemented)
 *   0x88000014       the operation is not available
 *   0x8800001A       no memory (OrvErrorResources)
 * Arguments are checked in their order, an output that is not offered after all of them.
 */
#ifndef ORVELLA_ZEB_H
#define ORVELLA_ZEB_H

#include "orvella/orv.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Mono sources -------------------------------------------------------------------------------------------- */

/* n = 0 succeeds and writes nothing. */
ORV_API uint32_t ZEB_Y8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);
/* The 8-bit outputs only; n = 0 succeeds and writes nothing. */
ORV_API uint32_t ZEB_Y16ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);
ORV_API uint32_t ZEB_Y16ImageTransformEx(void* destination, const void* source, uint32_t n, OrvOutputCode output,
                                         const OrvShiftRecord* shift);
ORV_API uint32_t ZEB_Y12ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);
ORV_API uint32_t ZEB_Y10pImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);
ORV_API uint32_t ZEB_Y12pImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);

ORV_API uint32_t ZEB_Y16ToY8(void* destination, const void* source, uint32_t n);
/* n = 0 succeeds and writes nothing. */
ORV_API uint32_t ZEB_Y16ToY8_MMX(void* destination, const void* source, uint32_t n);
ORV_API uint32_t ZEB_Y16ToY8Ex(void* destination, const void* source, uint32_t n, uint32_t swap, uint32_t lsbAligned,
                               uint32_t bits);
ORV_API uint32_t ZEB_Y16ToBGR(void* destination, const void* source, uint32_t n);
ORV_API uint32_t ZEB_Y16ToBGREx(void* destination, const void* source, uint32_t n, uint32_t swap, uint32_t lsbAligned,
                                uint32_t bits);
ORV_API uint32_t ZEB_Y8ToBGR(void* destination, const void* source, uint32_t n);
/* 0x88000004: width is odd; checked first, as in the other face. */
ORV_API uint32_t ZEB_Packed12BitTo16Bit(void* destination, const void* source, int32_t width, uint32_t height);
ORV_API uint32_t ZEB_Packed12BitTo8Bit(void* destination, const void* source, int32_t width, int32_t height);

/* ---- RGB and YUV sources ------------------------------------------------------------------------------------- */

ORV_API uint32_t ZEB_RGB8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);
ORV_API uint32_t ZEB_BGR8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);
ORV_API uint32_t ZEB_RGBA8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);
ORV_API uint32_t ZEB_BGRA8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);
ORV_API uint32_t ZEB_RGB8ToY8(void* destination, const void* source, uint32_t n);
ORV_API uint32_t ZEB_RGB8ToBGR(void* destination, const void* source, uint32_t n);

ORV_API uint32_t ZEB_YUV411ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);
ORV_API uint32_t ZEB_YUV422ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);
ORV_API uint32_t ZEB_YUV444ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);
ORV_API uint32_t ZEB_YUV411ToBGR(void* destination, const void* source, uint32_t n);
ORV_API uint32_t ZEB_YUV422ToBGR(void* destination, const void* source, uint32_t n);
ORV_API uint32_t ZEB_YUV444ToBGR(void* destination, const void* source, uint32_t n);

/* ---- Planes -------------------------------------------------------------------------------------------------- */

ORV_API uint32_t ZEB_RGB8ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                      uint32_t height);
ORV_API uint32_t ZEB_YUV411ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                        uint32_t height);
ORV_API uint32_t ZEB_YUV422ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                        uint32_t height);
ORV_API uint32_t ZEB_YUV444ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                        uint32_t height);
ORV_API uint32_t ZEB_YUV411ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width, uint32_t height);
ORV_API uint32_t ZEB_YUV422ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width, uint32_t height);
ORV_API uint32_t ZEB_YUV444ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width, uint32_t height);

/* ---- Bayer mosaics ------------------------------------------------------------------------------------------- */

ORV_API uint32_t ZEB_Raw8ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                        OrvOutputCode output, int32_t pattern);
ORV_API uint32_t ZEB_Raw8ImageTransform_3x3(void* destination, const void* source, uint32_t width, uint32_t height,
                                            OrvOutputCode output, int32_t pattern);
ORV_API uint32_t ZEB_Raw8ImageTransform_IntLCAA(void* destination, void* source, uint32_t width, uint32_t height,
                                                OrvOutputCode output, int32_t pattern);
ORV_API uint32_t ZEB_Raw8ImageTransform_IntLCAAV(void* destination, void* source, uint32_t width, uint32_t height,
                                                 OrvOutputCode output, int32_t pattern);
ORV_API uint32_t ZEB_Raw8ImageTransform_IntYUV422(void* destination, void* source, uint32_t width, uint32_t height,
                                                  OrvOutputCode output, int32_t pattern);
ORV_API uint32_t ZEB_Raw10pImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                          OrvOutputCode output, int32_t pattern);
ORV_API uint32_t ZEB_Raw12ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                         OrvOutputCode output, int32_t pattern);
ORV_API uint32_t ZEB_Raw12pImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                          OrvOutputCode output, int32_t pattern);
ORV_API uint32_t ZEB_Raw16ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                         OrvOutputCode output, int32_t pattern);
ORV_API uint32_t ZEB_Raw16ImageTransformEx(void* destination, const void* source, uint32_t width, uint32_t height,
                                           OrvOutputCode output, const OrvShiftRecord* record);

ORV_API uint32_t ZEB_Raw8ToBGR(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern);
ORV_API uint32_t ZEB_Raw8ToBGR_3x3(void* destination, const void* source, uint32_t width, uint32_t height,
                                   int32_t pattern);
ORV_API uint32_t ZEB_Raw8ToBGR_IntLCAA(void* destination, void* source, uint32_t width, uint32_t height,
                                       int32_t pattern);
ORV_API uint32_t ZEB_Raw8ToBGR_IntLCAAV(void* destination, void* source, uint32_t width, uint32_t height,
                                        int32_t pattern);
ORV_API uint32_t ZEB_Raw8ToBGR_IntYUV422(void* destination, void* source, uint32_t width, uint32_t height,
                                         int32_t pattern);
ORV_API uint32_t ZEB_Raw8ToBGR_mono(void* destination, const void* source, uint32_t width, uint32_t height,
                                    int32_t pattern);
ORV_API uint32_t ZEB_Raw8ToY8(void* destination, const void* source, uint32_t width, uint32_t height, int32_t pattern);
ORV_API uint32_t ZEB_Raw12ToBGR(void* destination, const void* source, uint32_t width, uint32_t height,
                                int32_t pattern);
ORV_API uint32_t ZEB_Raw12ToBGR16(void* destination, const void* source, uint32_t width, uint32_t height,
                                  int32_t pattern);
ORV_API uint32_t ZEB_Raw16ToBGR(void* destination, const void* source, uint32_t width, uint32_t height,
                                int32_t pattern);
ORV_API uint32_t ZEB_Raw16ToBGR16(void* destination, const void* source, uint32_t width, uint32_t height,
                                  int32_t pattern);
ORV_API uint32_t ZEB_Raw16ToY16(void* destination, const void* source, uint32_t width, uint32_t height,
                                int32_t pattern);

/* ---- Complementary-colour mosaics ---------------------------------------------------------------------------- */

ORV_API uint32_t ZEB_IRaw8CYGMImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                             OrvOutputCode output, uint32_t);
ORV_API uint32_t ZEB_IRaw8CYGMImageTransform_Bin(void* destination, const void* source, uint32_t width, uint32_t height,
                                                 OrvOutputCode output, uint32_t);
ORV_API uint32_t ZEB_IRaw8CYGMImageTransform_3x3(void* destination, const void* source, uint32_t width, uint32_t height,
                                                 OrvOutputCode output, uint32_t);
ORV_API uint32_t ZEB_IRaw8CYGMToBGR(void* destination, const void* source, uint32_t width, uint32_t height);
ORV_API uint32_t ZEB_IRaw8CYGMToBGR_Bin(void* destination, const void* source, uint32_t width, uint32_t height);
ORV_API uint32_t ZEB_IRaw8CYGMToBGR_3x3(void* destination, const void* source, uint32_t width, uint32_t height);
ORV_API uint32_t ZEB_IRaw8CYGMToMono(void* destination, const void* source, uint32_t width, uint32_t height);

/* ---- Colour-correction objects ------------------------------------------------------------------------------- */

ORV_API uint32_t ZEB_CreateColorCorrectionMatrix_Int8(const float* matrix, ColorCorrectionHandle* handle);
ORV_API uint32_t ZEB_CreateColorCorrectionMatrix_Int16(const float* matrix, ColorCorrectionHandle* handle);
/* 0x88000002: always, also when the object was found. */
ORV_API uint32_t ZEB_DestroyColorCorrection(ColorCorrectionHandle handle);
ORV_API uint32_t ZEB_Raw8ToBGR_CC(void* destination, const void* source, uint32_t width, uint32_t height,
                                  int32_t pattern, ColorCorrectionHandle handle);
ORV_API uint32_t ZEB_Raw8ToY8_CC(void* destination, const void* source, uint32_t width, uint32_t height,
                                 int32_t pattern, ColorCorrectionHandle handle);
ORV_API uint32_t ZEB_Raw12ToBGR_CC(void* destination, const void* source, uint32_t width, uint32_t height,
                                   int32_t pattern, ColorCorrectionHandle handle);
ORV_API uint32_t ZEB_Raw12ToBGR16_CC(void* destination, const void* source, uint32_t width, uint32_t height,
                                     int32_t pattern, ColorCorrectionHandle handle);
ORV_API uint32_t ZEB_Raw16ToBGR16_CC(void* destination, const void* source, uint32_t width, uint32_t height,
                                     int32_t pattern, ColorCorrectionHandle handle);
ORV_API uint32_t ZEB_Raw16ToY16_CC(void* destination, const void* source, uint32_t width, uint32_t height,
                                   int32_t pattern, ColorCorrectionHandle handle);

/* ---- Geometry ------------------------------------------------------------------------------------------------ */

ORV_API uint32_t ZEB_Flip(void* image, uint32_t width, uint32_t height, int32_t mode, uint32_t coding);
ORV_API uint32_t ZEB_FlipVertical(void* image, uint32_t lineLength, uint32_t height);
/* 1 on success, as in the other face. */
ORV_API uint32_t ZEB_ResampleScanlinesEx(void* destination, const void* source, int32_t destinationLength,
                                         int32_t destinationPitch, int32_t sourceLength, int32_t sourcePitch,
                                         int32_t lines, uint32_t bytesPerPixel, uint32_t mode, float a, float b);
ORV_API uint32_t ZEB_ResampleScanlines(void* destination, const void* source, int32_t destinationLength,
                                       int32_t sourceLength, int32_t lines, uint32_t bytesPerPixel, uint32_t mode,
                                       float a, float b);
ORV_API uint32_t ZEB_GetResampledScanlineLength(uint32_t* result, int32_t sourceLength, float a, float b);
ORV_API uint32_t ZEB_InterlacedToProgressive(void* destination, const void* source, uint32_t lineLength,
                                             uint32_t lines);
ORV_API uint32_t ZEB_GetSIS(void* destination, const void* image, uint32_t width, uint32_t height, uint32_t formatIndex,
                            int32_t line, int32_t kind);

/* ---- Texts, version, platform -------------------------------------------------------------------------------- */

/* The English text of a result word, taken as an unsigned 32-bit value in 64 bits: a sign-extended word is not found.
 * A text that is cut has no NUL, and is a success here.
 * 0x88000003: buffer is null. 0x88000004: size is 0. */
ORV_API uint32_t ZEB_GetErrorInfo(int64_t code, char* buffer, uint32_t size);

/* 0x88000002: version is null. */
ORV_API uint32_t ZEB_GetVersion(uint32_t* version);

/* 0x88000002: buffer is null (not 0x88000003). */
ORV_API uint32_t ZEB_GetApiInfoString(uint32_t type, char* buffer, uint32_t size);

/* 0x88000002: record is null. */
ORV_API uint32_t ZEB_GetTechnoInfo(OrvTechnoInfo* record);

/* 0x88000002: unknown index. 0x88000003: bits is null. */
ORV_API uint32_t ZEB_GetBitsPerPixel(uint32_t index, uint32_t* bits);

#ifdef __cplusplus
} /* extern "C" */

/* C++ linkage. A variant with several threads, which is not available: 0x88000014, whatever the arguments. */
ORV_API uint32_t ZEB_Y16ToY8_MT(void* destination, const void* source, uint32_t n);
#endif

#endif
