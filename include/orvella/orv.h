/* Orvella: the pixel data of industrial cameras, turned into images.
 *
 * This is the library's current face, plain C99. What holds for every function unless its own comment says otherwise:
 *
 *   Memory        Buffers and records belong to the caller; the library keeps no pointer after a call, frees nothing.
 *   Order         The destination comes first, the source second. (OrvImageTransform takes the source first.)
 *   Images        Dense: line follows line without padding. Buffer sizes below are in bytes, for n = width * height
 *                 pixels. Source and destination must not overlap, except where a function says that it works in place.
 *   Refusals      Listed in the order in which they are checked; the first one returns, and nothing has been written.
 *   Result        An OrvErrorType: OrvErrorSuccess is 0, the others are negative and have texts (OrvGetErrorInfo).
 *   Sizes         Computed in 64 bits, so n may be 2^32 and more where width and height are the arguments, except where
 *                 a function says otherwise.
 *   Threads       Any number of threads may call at once, each with its own buffers. No function takes a lock, starts a
 *                 thread or allocates memory, unless its comment says so. A call takes up to 40 KiB of stack,
 *                 OrvResampleScanlines up to 80 KiB.
 *   Fourth byte   32-bit outputs (BGRA32, RGBA32) keep what the caller's buffer held in the fourth byte of a pixel.
 *   16-bit words  Written in the machine's native (little-endian) order.
 */
#ifndef ORVELLA_ORV_H
#define ORVELLA_ORV_H

#include <stdint.h>

#include "orvella/version.h"

#if defined(_WIN32) && !defined(ORVELLA_STATIC) /* the static library is used with ORVELLA_STATIC defined */
#define ORV_API __declspec(dllimport)
#elif defined(__GNUC__) && !defined(_WIN32)
#define ORV_API __attribute__((visibility("default")))
#else
#define ORV_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Results ------------------------------------------------------------------------------------------------- */

typedef int32_t OrvErrorType;
enum {
    OrvErrorSuccess = 0,
    OrvErrorInternalFault = -1, /* a kernel refused its parameters */
    OrvErrorApiNotStarted = -2,
    OrvErrorNotFound = -3,
    OrvErrorBadHandle = -4,
    OrvErrorDeviceNotOpen = -5,
    OrvErrorInvalidAccess = -6,
    OrvErrorBadParameter = -7, /* null pointers, zero or odd sizes, unknown codes */
    OrvErrorStructSize = -8,   /* OrvImage.Size is not sizeof(OrvImage) */
    OrvErrorMoreData = -9,     /* the text did not fit */
    OrvErrorWrongType = -10,
    OrvErrorInvalidValue = -11,
    OrvErrorTimeout = -12,
    OrvErrorOther = -13,
    OrvErrorResources = -14, /* no memory */
    OrvErrorInvalidCall = -15,
    OrvErrorNoTL = -16,
    OrvErrorNotImplemented = -17, /* an output or option that this source does not offer */
    OrvErrorNotSupported = -18
};

/* ---- Pixel formats ------------------------------------------------------------------------------------------- */

/* 32-bit codes of the GenICam Pixel Format Naming Convention (PFNC). */
typedef uint32_t OrvPixelFormatType;
enum {
    OrvPixelFormatMono8 = 0x01080001,
    OrvPixelFormatMono10 = 0x01100003,
    OrvPixelFormatMono12 = 0x01100005,
    OrvPixelFormatMono12Packed = 0x010C0006,
    OrvPixelFormatMono10p = 0x010A0046,
    OrvPixelFormatMono12p = 0x010C0047,
    OrvPixelFormatMono14 = 0x01100025,
    OrvPixelFormatMono16 = 0x01100007,
    OrvPixelFormatBayerGR8 = 0x01080008,
    OrvPixelFormatBayerRG8 = 0x01080009,
    OrvPixelFormatBayerGB8 = 0x0108000A,
    OrvPixelFormatBayerBG8 = 0x0108000B,
    OrvPixelFormatBayerGR10 = 0x0110000C,
    OrvPixelFormatBayerRG10 = 0x0110000D,
    OrvPixelFormatBayerGB10 = 0x0110000E,
    OrvPixelFormatBayerBG10 = 0x0110000F,
    OrvPixelFormatBayerGR12 = 0x01100010,
    OrvPixelFormatBayerRG12 = 0x01100011,
    OrvPixelFormatBayerGB12 = 0x01100012,
    OrvPixelFormatBayerBG12 = 0x01100013,
    OrvPixelFormatBayerGR12Packed = 0x010C002A,
    OrvPixelFormatBayerRG12Packed = 0x010C002B,
    OrvPixelFormatBayerGB12Packed = 0x010C002C,
    OrvPixelFormatBayerBG12Packed = 0x010C002D,
    OrvPixelFormatBayerGR10p = 0x010A0056,
    OrvPixelFormatBayerRG10p = 0x010A0058,
    OrvPixelFormatBayerGB10p = 0x010A0054,
    OrvPixelFormatBayerBG10p = 0x010A0052,
    OrvPixelFormatBayerGR12p = 0x010C0057,
    OrvPixelFormatBayerRG12p = 0x010C0059,
    OrvPixelFormatBayerGB12p = 0x010C0055,
    OrvPixelFormatBayerBG12p = 0x010C0053,
    OrvPixelFormatBayerGR16 = 0x0110002E,
    OrvPixelFormatBayerRG16 = 0x0110002F,
    OrvPixelFormatBayerGB16 = 0x01100030,
    OrvPixelFormatBayerBG16 = 0x01100031,
    OrvPixelFormatRgb8 = 0x02180014,
    OrvPixelFormatBgr8 = 0x02180015,
    OrvPixelFormatArgb8 = 0x02200016, /* the same code as Rgba8 */
    OrvPixelFormatRgba8 = 0x02200016,
    OrvPixelFormatBgra8 = 0x02200017,
    OrvPixelFormatRgb12 = 0x0230001A,
    OrvPixelFormatRgb16 = 0x02300033,
    OrvPixelFormatYuv411 = 0x020C001E,
    OrvPixelFormatYuv422 = 0x0210001F,
    OrvPixelFormatYuv444 = 0x02180020,
    OrvPixelFormatYCbCr411_8_CbYYCrYY = 0x020C003C,
    OrvPixelFormatYCbCr422_8_CbYCrY = 0x02100043,
    OrvPixelFormatYCbCr8_CbYCr = 0x0218003A
};

/* How pixels lie in memory. 12 is not assigned. */
typedef uint32_t OrvPixelLayout;
enum {
    OrvPixelLayoutMono = 0,
    OrvPixelLayoutMonoPacked = 1, /* Mono12Packed: two pixels in 3 bytes, the low nibbles in the middle byte */
    OrvPixelLayoutRaw = 2,        /* Bayer mosaic, one sample in 8 or 16 bits */
    OrvPixelLayoutRawPacked = 3,  /* Bayer mosaic, 12Packed */
    OrvPixelLayoutRgb = 4,
    OrvPixelLayoutBgr = 5,
    OrvPixelLayoutRgba = 6,
    OrvPixelLayoutBgra = 7,
    OrvPixelLayoutYuv411 = 8,  /* U Y Y V Y Y */
    OrvPixelLayoutYuv422 = 9,  /* U Y V Y */
    OrvPixelLayoutYuv444 = 10, /* U Y V */
    OrvPixelLayoutMonoP = 11,  /* Mono10p, Mono12p: a little-endian bit stream */
    OrvPixelLayoutRawP = 13    /* Bayer mosaic, 10p or 12p */
};

/* The colours of a mosaic's first two lines. */
typedef uint32_t OrvBayerPattern;
enum {
    OrvBayerPatternRGGB = 0,
    OrvBayerPatternGBRG = 1,
    OrvBayerPatternGRBG = 2,
    OrvBayerPatternBGGR = 3,
    OrvBayerPatternNone = 255
};

/* Which luma weights a grey image was, or is to be, made with. */
typedef uint32_t OrvColorSpace;
enum {
    OrvColorSpaceNone = 0, /* RGB or unknown */
    OrvColorSpaceRec709 = 1,
    OrvColorSpaceRec601 = 2
};

/* ---- Outputs ------------------------------------------------------------------------------------------------- */

/* What a conversion writes. The same numbers name the simple image formats of OrvSetImageInfoOutput. */
typedef uint32_t OrvOutputCode;
typedef uint32_t OrvSimpleImageFormat;
enum {
    OrvOutputMono8 = 0,        /* 1 byte: (77 R + 150 G + 29 B) >> 8, ITU-R BT.601 */
    OrvOutputBgr24 = 1,        /* 3 bytes: B G R */
    OrvOutputBgra32 = 2,       /* 4 bytes: B G R, the fourth is kept */
    OrvOutputRgb24 = 3,        /* 3 bytes: R G B */
    OrvOutputRgba32 = 4,       /* 4 bytes: R G B, the fourth is kept */
    OrvOutputMono8Rec709 = 5,  /* 1 byte: (54 R + 184 G + 18 B + 128) >> 8, ITU-R BT.709 */
    OrvOutputYuv422 = 6,       /* 2 bytes: U Y0 V Y1 for two pixels; limited range, where YUV sources are full range */
    OrvOutputMono16 = 7,       /* 2 bytes, BT.601 */
    OrvOutputMono16Rec709 = 8, /* 2 bytes, BT.709 */
    OrvOutputBgr48 = 9,        /* 6 bytes: B G R as words */
    OrvOutputRgb48 = 10        /* 6 bytes: R G B as words; no source offers it */
};
/* Below, "Bgr24" is short for OrvOutputBgr24 and so on; "8-bit outputs" are Mono8, Mono8Rec709, Bgr24, Bgra32, Rgb24
 * and Rgba32, "colour outputs" the last four of these, "Mono16 outputs" Mono16 and Mono16Rec709. */

/* ---- Records ------------------------------------------------------------------------------------------------- */

typedef struct OrvPixelInfo {
    uint32_t BitsPerPixel; /* storage bits */
    uint32_t BitsUsed;     /* significant bits, all channels together */
    uint32_t Alignment;    /* of a sample in its 16 bits: 1 in the low BitsUsed bits, 0 in the high ones */
    uint32_t Endianness;   /* of 16-bit samples: 0 little, 1 big */
    OrvPixelLayout PixelLayout;
    OrvBayerPattern BayerPattern;
    OrvColorSpace ColorSpace;
} OrvPixelInfo;

typedef struct OrvImageInfo {
    uint32_t Width;  /* pixels */
    uint32_t Height; /* lines */
    int32_t Stride;  /* written by the setters, read by nothing: images are dense */
    OrvPixelInfo PixelInfo;
} OrvImageInfo;

typedef struct OrvImage {
    uint32_t Size; /* sizeof(OrvImage), set by the caller: 56 where pointers have 8 bytes */
    void* Data;    /* the caller's pixels */
    OrvImageInfo ImageInfo;
} OrvImage;

typedef uint32_t OrvTransformType;
enum { OrvTransformTypeDebayerMode = 1, OrvTransformTypeColorCorrection = 2, OrvTransformTypeGammaCorrection = 3 };

typedef uint32_t OrvDebayerMode;
enum {
    OrvDebayerMode2x2 = 0,
    OrvDebayerMode3x3 = 1,
    OrvDebayerModeLCAA = 2,
    OrvDebayerModeLCAAV = 3,
    OrvDebayerModeYuv422 = 4
};

/* One option of OrvImageTransform. The first record of a type counts, later ones of that type are ignored. */
typedef struct OrvTransformInfo {
    OrvTransformType TransformType;
    union {
        OrvDebayerMode DebayerMode;
        float Matrix[9]; /* row by row: R', G', B' from R, G, B */
        float Gamma;
    } Parameter;
} OrvTransformInfo;

/* How the samples of a 16-bit source sit in their words; argument of the ...ImageTransformEx functions. */
typedef struct OrvShiftRecord {
    uint32_t Reserved;  /* not read */
    uint32_t Alignment; /* 0: no shift; 1: shift left by 16 - BitsUsed */
    uint32_t BitsUsed;
    uint32_t Endianness;   /* 0 little, 1 big */
    uint32_t BayerPattern; /* read for mosaics only */
} OrvShiftRecord;

/* Six capabilities of the platform, each as a pair of flags; this build's probe finds none, so all are 0. */
typedef struct OrvTechnoInfo {
    uint8_t Flags[12];
} OrvTechnoInfo;

/* ---- Describing images --------------------------------------------------------------------------------------- */

/* Storage bits per pixel of a PFNC code, from its effective-bits byte (bits 16 to 23): 8, 10, 12, 14, 16, 24, 32, 48.
 * OrvErrorBadParameter: bits is null; any other effective-bits byte. */
ORV_API OrvErrorType OrvBitsPerPixel(uint32_t* bits, OrvPixelFormatType format);

/* Significant bits per pixel, all channels together. OrvErrorBadParameter: bits is null; unknown format. */
ORV_API OrvErrorType OrvBitsPerPixelUsed(uint32_t* bits, OrvPixelFormatType format);

/* The format's Bayer pattern, 255 for formats without a mosaic.
 * OrvErrorBadParameter: pattern is null; unknown format. */
ORV_API OrvErrorType OrvGetBayerPattern(OrvBayerPattern* pattern, OrvPixelFormatType format);

/* Writes one byte: 1 for Bayer formats, else 0. OrvErrorBadParameter: has is null; unknown format, and Rgb12. */
ORV_API OrvErrorType OrvHasBayerPattern(uint8_t* has, OrvPixelFormatType format);

/* Writes one byte: 1 for formats with full colour per pixel, else 0 (also for mosaics).
 * OrvErrorBadParameter: is is null; unknown format, and Mono10p and Rgb12. */
ORV_API OrvErrorType OrvIsColor(uint8_t* is, OrvPixelFormatType format);

/* Storage bits of a small format index, a numbering of its own (not PFNC), that of OrvGetSIS.
 * OrvErrorBadParameter: unknown index; bits is null. */
ORV_API OrvErrorType OrvGetBitsPerPixel(uint32_t index, uint32_t* bits);

/* Fills image->ImageInfo for a camera pixel format; Stride = width, Alignment = 1, Endianness = 0. Data is left alone.
 * OrvErrorBadParameter: image is null.
 * OrvErrorStructSize: image->Size is not sizeof(OrvImage).
 * OrvErrorBadParameter: unknown effective-bits byte of format (Width, Height and Stride are written), unknown format
 * (these and BitsPerPixel are written). */
ORV_API OrvErrorType OrvSetImageInfoFromPixelFormat(OrvPixelFormatType format, uint32_t width, uint32_t height,
                                                    OrvImage* image);

/* Fills image->ImageInfo for one of the outputs, so that OrvImageTransform writes that output; Stride = width.
 * Data is left alone.
 * OrvErrorBadParameter: image is null.
 * OrvErrorStructSize: image->Size is not sizeof(OrvImage).
 * OrvErrorBadParameter: unknown output (Width, Height and Stride are written). */
ORV_API OrvErrorType OrvSetImageInfoOutput(OrvOutputCode output, uint32_t width, uint32_t height, OrvImage* image);

/* Fills image->ImageInfo by name, which ends with a NUL and whose (ASCII) case does not matter:
 *   an output          MONO8 MONO8_REC601 BGR8 BGR24 BGRA32 RGB8 RGB24 RGBA32 MONO8_REC709 UYVY YUV422 YCBCR422 MONO16
 *                      MONO16_REC601 MONO16_REC709 BGR48 RGB48
 *   a camera format    PixelFormatBayerRG8 and so on: "PixelFormat" and what follows OrvPixelFormat in the codes above
 * If length is above 3 and the name begins with "Orv", these three letters are skipped; length serves no other purpose.
 * OrvErrorBadParameter: name or image is null.
 * OrvErrorStructSize: image->Size is not sizeof(OrvImage).
 * OrvErrorBadParameter: unknown name.
 * Then as the setter for the code found. */
ORV_API OrvErrorType OrvSetImageInfoFromString(const char* name, uint32_t length, uint32_t width, uint32_t height,
                                               OrvImage* image);

/* ---- The general transform ----------------------------------------------------------------------------------- */

/* Converts source->Data into destination->Data, as the two records say.
 *   source->Data        ceil(n * BitsPerPixel / 8) bytes. YUV layouts do not look at BitsPerPixel: they read 1.5 n
 *                       (4:1:1), 2 n (4:2:2) or 3 n bytes (4:4:4). A colour output from 16-bit little-endian mono with
 *                       all bits used reads one byte more: a pixel takes its tint from the low byte of the next one.
 *                       The debayer modes LCAA, LCAAV and YUV422 overwrite the source.
 *   destination->Data   n times the bytes per pixel of the output (OrvOutputCode); where pixels have four bytes, the
 *                       fourth keeps what it held
 *   info                count options, or null; the first record of a type counts:
 *                         debayer mode: 8-bit mosaics take every mode, Bayer 10p and 12p only 2x2, others ignore it
 *                         colour correction: replaces what is said from * on (OrvSetColorCorrectionMatrix3x3)
 *                         gamma: has no effect
 *
 * Which output a destination means, where it is filled by hand:
 *   Mono         8 or 16 bits: Mono8, Mono16, with ColorSpace 1 Mono8Rec709, Mono16Rec709; ColorSpace above 2: as Rgb
 *   Rgb, Bgr     24 or 48 bits: Rgb24, Rgb48, Bgr24, Bgr48
 *   Rgba, Bgra   32 bits: Rgba32, Bgra32
 *   Yuv422       any depth: Yuv422
 *
 * Which source is read how, where the depth is not the layout's own:
 *   Bgr of 32 bits is read as RGBA (not BGRA); Bgr, Rgba and Bgra of any other depth are taken for RawPacked
 *   RawPacked of 12 bits is 12Packed, of any other depth it is taken for RawP
 *   RawP of 10 and 12 bits is 10p and 12p, of any other depth it is taken for Raw, which has 8 and 16 bits
 * Samples of 16-bit words with BitsUsed below 16 are shifted to the top; what a word holds above BitsUsed is cut off,
 * not saturated.
 *
 * OrvErrorBadParameter: an image or its Data is null; heights differ; widths differ.
 * OrvErrorStructSize: source->Size, destination->Size is not sizeof(OrvImage). *
 * OrvErrorBadParameter: the destination describes no output (16-bit mono with ColorSpace above 2 is none).
 * OrvErrorNotImplemented: the destination is 16-bit mono, big-endian or with BitsUsed other than 16, and not tagged
 * BT.709.
 * OrvErrorBadParameter: Yuv422 with an odd width; a source that no family takes; YUV 4:1:1 with a width that is no
 * multiple of 4, 4:2:2 with an odd one; a debayer mode above 4 where it counts.
 * OrvErrorNotImplemented: a debayer mode that the source does not offer.
 * Then what the family function chosen refuses. */
ORV_API OrvErrorType OrvImageTransform(const OrvImage* source, OrvImage* destination, const OrvTransformInfo* info,
                                       uint32_t count);

/* Make info a debayer-mode record; the mode is not checked here. OrvErrorBadParameter: info is null. */
ORV_API OrvErrorType OrvSetDebayerMode(OrvDebayerMode mode, OrvTransformInfo* info);

/* Make info a colour-correction record with the nine floats of matrix. OrvErrorBadParameter: matrix or info is null.
 *
 * With it, OrvImageTransform makes (R', G', B') = matrix * (R, G, B) of every pixel, in fixed point: coefficients in
 * steps of 1/1024, truncated toward zero (NaN counts as 0); sums of 32 bits, which wrap around, >> 10; the results are
 * clamped.
 *
 *   source                         outputs
 *   RGB8, BGR8, RGBA8, BGRA8       the colour outputs; n is the product of the sizes as a signed 32-bit number,
 *                                  and a negative one counts as 0; works in place where a pixel of the output is no
 *                                  larger
 *   Bayer of 8 bits                Mono8, Mono8Rec709, Bgr24, Rgb24
 *   Bayer of 16 bits               the Mono16 outputs, Bgr48; big-endian too, and with Alignment 1 shifted to the
 *                                  top, as without a matrix
 *   Bayer 12Packed                 Bgr24, from the top eight bits of the samples; Bgr48, from all bits
 *
 * Mosaics are converted by 2x2, whatever the debayer mode, and BayerPattern 1 means GRBG, 2 means GBRG: the other way
 * round than without a matrix. Sizes may be odd; a row of 12Packed samples then has width * 12 / 8 bytes, rounded down.
 * All lumas are BT.601.
 * What is clamped: of 8-bit pixels, bits 10 to 25 of the sum, as a signed number; from 12Packed samples to Bgr24, what
 * is below 0 or above 65535, and of the rest the low byte is kept: colours wrap around (Bgr48 does not).
 * OrvErrorBadParameter: the destination describes no output. OrvErrorNotImplemented: as OrvImageTransform says of the
 * destination.
 * OrvErrorBadParameter: any other source and output; a mosaic with a size below 2 or a BayerPattern above 3; 16 bits
 * with Alignment or Endianness above 1, or with Alignment 1 and a shift that is not 0 to 4 or 6. */
ORV_API OrvErrorType OrvSetColorCorrectionMatrix3x3(const float* matrix, OrvTransformInfo* info);

/* Make info a gamma record, which no transform reads. OrvErrorBadParameter: info is null. */
ORV_API OrvErrorType OrvSetGammaCorrection(float gamma, OrvTransformInfo* info);

/* ---- Mono sources -------------------------------------------------------------------------------------------- */

/* Each converts n pixels. A grey value becomes colour by replication, and Mono8 BT.601 and BT.709 are alike. The packed
 * sources (12Packed, 10p, 12p) take n = 0 and write nothing.
 * Works in place where a pixel of the output is no larger than one of the source. */

/* 8 bits to the 8-bit outputs and Yuv422, which gets zero chroma, and exactly 2 n bytes also for an odd n.
 *   source n bytes
 * OrvErrorBadParameter: a buffer is null, n = 0. OrvErrorNotImplemented: any other output. */
ORV_API OrvErrorType OrvY8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);

/* Big-endian 16 bits to the 8-bit and the Mono16 outputs. Colour outputs tint blue and red by one step, by the two bits
 * below the top eight, so that a display shows more than 256 levels. The Mono16 outputs copy the bytes as they are.
 *   source 2 n bytes
 * OrvErrorBadParameter: a buffer is null, n = 0. OrvErrorNotImplemented: any other output. */
ORV_API OrvErrorType OrvY16ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);

/* 16-bit words with fewer bits used, shifted to the top, to the 8-bit and the Mono16 outputs and Bgr48. No record: no
 * shift, big-endian.
 *   source 2 n bytes
 * OrvErrorBadParameter: a buffer is null, n = 0. OrvErrorNotImplemented: Alignment above 1; any other output.
 * OrvErrorInternalFault: a shift that is not 0 to 4 or 6 (so BitsUsed 11 with Alignment 1); Endianness above 1. */
ORV_API OrvErrorType OrvY16ImageTransformEx(void* destination, const void* source, uint32_t n, OrvOutputCode output,
                                            const OrvShiftRecord* shift);

/* Mono12Packed to the 8-bit outputs, from the top eight bits of each sample.
 *   source n / 2 * 3 bytes
 * OrvErrorBadParameter: a buffer is null, n is odd. OrvErrorNotImplemented: any other output. */
ORV_API OrvErrorType OrvY12ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);

/* Mono10p to the 8-bit and the Mono16 outputs.
 *   source ceil(n * 10 / 8) bytes
 * OrvErrorBadParameter: a buffer is null. OrvErrorNotImplemented: any other output. */
ORV_API OrvErrorType OrvY10pImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);

/* Mono12p to the 8-bit and the Mono16 outputs.
 *   source n / 2 * 3 bytes
 * OrvErrorBadParameter: a buffer is null, n is odd. OrvErrorNotImplemented: any other output. */
ORV_API OrvErrorType OrvY12pImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);

/* ---- Mono sources, one-call converters ----------------------------------------------------------------------- */

/* Each writes one output from n pixels, or width * height where these are the arguments. They work in place, except
 * those that write BGR24 and OrvPacked12BitTo16Bit. */

/* Big-endian 16 bits rounded to eight: the top byte, one more if the bit below it is set, but not above 255.
 *   destination n bytes, source 2 n bytes
 * OrvErrorBadParameter: a buffer is null; _MMX: n is below 2 or no multiple of 8. (The other takes any n, also 0.) */
ORV_API OrvErrorType OrvY16ToY8(void* destination, const void* source, uint32_t n);
ORV_API OrvErrorType OrvY16ToY8_MMX(void* destination, const void* source, uint32_t n);

/* Big-endian 16 bits to BGR24, blue and red tinted as by OrvY16ImageTransform.
 *   destination 3 n bytes, source 2 n bytes
 * OrvErrorBadParameter: a buffer is null, n = 0. */
ORV_API OrvErrorType OrvY16ToBGR(void* destination, const void* source, uint32_t n);

/* The same for words of either byte order, big-endian with swap 1, little-endian with swap 0. With lsbAligned 1 a
 * sample is in the low `bits` bits of its word, and what a word holds above them is cut off, not saturated; below eight
 * bits, its low byte is taken. With lsbAligned 0 the sample is at the top, and bits means nothing.
 *   destination n (Y8) or 3 n (BGR) bytes, source 2 n bytes
 * OrvErrorBadParameter: a buffer is null, n = 0, swap or lsbAligned above 1, bits above 16 (whatever lsbAligned is). */
ORV_API OrvErrorType OrvY16ToY8Ex(void* destination, const void* source, uint32_t n, uint32_t swap, uint32_t lsbAligned,
                                  uint32_t bits);
ORV_API OrvErrorType OrvY16ToBGREx(void* destination, const void* source, uint32_t n, uint32_t swap,
                                   uint32_t lsbAligned, uint32_t bits);

/* 8 bits to BGR24, each three times.
 *   destination 3 n bytes, source n bytes
 * OrvErrorBadParameter: a buffer is null, n = 0. */
ORV_API OrvErrorType OrvY8ToBGR(void* destination, const void* source, uint32_t n);

/* 12Packed to big-endian 16 bits, MSB-aligned, as OrvY16ToY8 and OrvY16ToBGR want them. A width times height of zero or
 * less writes nothing.
 *   destination 2 n bytes, source n / 2 * 3 bytes
 * The legacy word 0x88000004, not a negative code of OrvErrorType: width is odd. OrvErrorBadParameter: a buffer is
 * null. */
ORV_API OrvErrorType OrvPacked12BitTo16Bit(void* destination, const void* source, int32_t width, uint32_t height);

/* 12Packed to 8 bits, the top ones of each sample. A width times height of zero or less writes nothing.
 *   destination n bytes, source n / 2 * 3 bytes
 * OrvErrorBadParameter: a buffer is null, width is odd. */
ORV_API OrvErrorType OrvPacked12BitTo8Bit(void* destination, const void* source, int32_t width, int32_t height);

/* ---- RGB sources --------------------------------------------------------------------------------------------- */

/* RGB8 (R G B), BGR8 (B G R), RGBA8 (R G B A), BGRA8 (B G R A) to the 8-bit outputs. Alpha is copied from RGBA8 to
 * BGRA32 and RGBA32 and from BGRA8 to BGRA32 and RGBA32; 3-byte sources leave the fourth byte alone. n may be 0.
 * Works in place where a pixel of the output is no larger than one of the source; the same format is a plain copy, for
 * which the buffers may overlap in any way.
 *   source 3 n or 4 n bytes
 * OrvErrorBadParameter: a buffer is null. OrvErrorNotImplemented: any other output. */
ORV_API OrvErrorType OrvRGB8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);
ORV_API OrvErrorType OrvBGR8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);
ORV_API OrvErrorType OrvRGBA8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);
ORV_API OrvErrorType OrvBGRA8ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);

/* RGB8 to Mono8 as trunc((0.21 R + 0.72 G) + 0.07 B) in double precision: not the weights of Mono8 or Mono8Rec709, and
 * white becomes 254. n may be 0.
 *   destination n bytes, source 3 n bytes
 * OrvErrorBadParameter: a buffer is null. */
ORV_API OrvErrorType OrvRGB8ToY8(void* destination, const void* source, uint32_t n);

/* RGB8 to BGR24; works in place. n may be 0.
 *   destination 3 n bytes, source 3 n bytes, of which (3 n) modulo 2^32 are read
 * OrvErrorBadParameter: a buffer is null. */
ORV_API OrvErrorType OrvRGB8ToBGR(void* destination, const void* source, uint32_t n);

/* ---- YUV sources --------------------------------------------------------------------------------------------- */

/* 8-bit full-range YUV to the 8-bit outputs; the Mono8 outputs weigh the colours, they do not copy Y. With u = U - 128,
 * v = V - 128: B = Y + trunc(1.771 u), G = Y + trunc(-0.3457 u) + trunc(-0.7144 v), R = Y + trunc(1.4022 v), clamped.
 *   source n * 3 / 2 bytes (4:1:1: U Y Y V Y Y), 2 n (4:2:2: U Y V Y), 3 n (4:4:4: U Y V)
 * OrvErrorBadParameter: a buffer is null; 4:1:1: n below 2 or no multiple of 4; 4:2:2: n below 2 or odd. (4:4:4 takes
 * any n, also 0.)
 * OrvErrorNotImplemented: any other output. */
ORV_API OrvErrorType OrvYUV411ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);
ORV_API OrvErrorType OrvYUV422ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);
ORV_API OrvErrorType OrvYUV444ImageTransform(void* destination, const void* source, uint32_t n, OrvOutputCode output);

/* The same to BGR24, 3 n bytes. OrvErrorBadParameter: a buffer is null, or n as above; 4:4:4: n = 0. */
ORV_API OrvErrorType OrvYUV411ToBGR(void* destination, const void* source, uint32_t n);
ORV_API OrvErrorType OrvYUV422ToBGR(void* destination, const void* source, uint32_t n);
ORV_API OrvErrorType OrvYUV444ToBGR(void* destination, const void* source, uint32_t n);

/* ---- Planes -------------------------------------------------------------------------------------------------- */

/* Colour split into planes of n = width * height bytes each. The planes must not overlap. y may be null: no luma plane.
 * From RGB8, Y = trunc((0.299 R + 0.587 G) + 0.114 B) in double precision; from YUV, Y is the source's. From 4:2:2 the
 * colours are those of the other YUV outputs. From 4:1:1 and 4:4:4 the sums are truncated instead of the products, and
 * green's offset is clamped to -128..127, so a colour can differ by one, a saturated green by more.
 *   source 3 n bytes (RGB8, 4:4:4), 2 n (4:2:2), n * 3 / 2 (4:1:1)
 * OrvErrorBadParameter: r, g, b or source is null; 4:1:1: width is no multiple of 4; 4:2:2: width is odd. A size of 0
 * writes nothing. */
ORV_API OrvErrorType OrvRGB8ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                         uint32_t height);
ORV_API OrvErrorType OrvYUV411ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                           uint32_t height);
ORV_API OrvErrorType OrvYUV422ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                           uint32_t height);
ORV_API OrvErrorType OrvYUV444ToRGBYPlanes(void* r, void* g, void* b, void* y, const void* source, uint32_t width,
                                           uint32_t height);

/* The same without luma, with other checks of the size.
 * OrvErrorBadParameter: a buffer is null; 4:1:1: width is no multiple of 4; 4:2:2: width or height below 2, width is
 * odd; 4:4:4: width or height is 0. */
ORV_API OrvErrorType OrvYUV411ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width,
                                          uint32_t height);
ORV_API OrvErrorType OrvYUV422ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width,
                                          uint32_t height);
ORV_API OrvErrorType OrvYUV444ToRGBPlanes(void* r, void* g, void* b, const void* source, uint32_t width,
                                          uint32_t height);

/* ---- Bayer mosaics ------------------------------------------------------------------------------------------- */

/* Every pixel of the 2x2 demosaic takes red, green and blue from the 2x2 block whose top left corner it is, green being
 * the truncated mean of two; the last column and the last row repeat their neighbours (the last row with its fourth
 * bytes). pattern is an OrvBayerPattern, 0 to 3, or -1, which means 3.
 * Refusals of all mosaics: OrvErrorBadParameter: a buffer is null, width or height is 0 or odd, pattern is none of
 * these. OrvErrorNotImplemented: an output that is not offered. */

/* 8 bits, 2x2, to the 8-bit and the Mono16 outputs and Yuv422. The Mono16 outputs are the weighted sums of 8-bit
 * values, unshifted (0..65280, 128..65408).
 *   source n bytes */
ORV_API OrvErrorType OrvRaw8ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                           OrvOutputCode output, int32_t pattern);

/* 8 bits, from the 3x3 neighbourhood, to the 8-bit and the Mono16 outputs: truncated means of two or four neighbours,
 * as by bilinear interpolation, except that green at a green sample is (2 * sample + lower left + upper right) >> 2.
 * The border repeats its neighbours, whole pixels with their fourth bytes. Height 2 gives zeros, in the fourth bytes
 * too; width 2 repeats what the destination's first column held.
 *   source n bytes */
ORV_API OrvErrorType OrvRaw8ImageTransform_3x3(void* destination, const void* source, uint32_t width, uint32_t height,
                                               OrvOutputCode output, int32_t pattern);

/* 8 bits, 2x2, then chroma filtered against colour aliasing, to the 8-bit and the Mono16 outputs: over four pixels of a
 * row (LCAA), over four pixels of two rows (LCAAV), over two pixels (YUV422). Each half of the rows is one stream of
 * pairs of pixels: what stands left of a row is the end of the row before.
 * LCAAV takes the row below; from the last pair of a half's second-to-last row on it takes the row above (where the
 * image has none, the row itself), and the last two pairs of a half are not filtered.
 * THE SOURCE IS OVERWRITTEN: in the end it holds the lower half of the image as U Y V Y.
 * These calls allocate a few lines of scratch memory; without memory they return OrvErrorSuccess and write nothing.
 *   source n bytes */
ORV_API OrvErrorType OrvRaw8ImageTransform_IntLCAA(void* destination, void* source, uint32_t width, uint32_t height,
                                                   OrvOutputCode output, int32_t pattern);
ORV_API OrvErrorType OrvRaw8ImageTransform_IntLCAAV(void* destination, void* source, uint32_t width, uint32_t height,
                                                    OrvOutputCode output, int32_t pattern);
ORV_API OrvErrorType OrvRaw8ImageTransform_IntYUV422(void* destination, void* source, uint32_t width, uint32_t height,
                                                     OrvOutputCode output, int32_t pattern);

/* 10p and 12p, 2x2, to the 8-bit and the Mono16 outputs; all bits of the samples count.
 *   source height rows of width * 10 / 8 (rounded down) or width * 12 / 8 bytes; where width is no multiple of 4,
 *   the last 10p sample of a row reaches a byte further, within ceil(n * 10 / 8) bytes */
ORV_API OrvErrorType OrvRaw10pImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                             OrvOutputCode output, int32_t pattern);
ORV_API OrvErrorType OrvRaw12pImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                             OrvOutputCode output, int32_t pattern);

/* 12Packed, 2x2, to the 8-bit and the Mono16 outputs, from the top eight bits of each sample.
 *   source n / 2 * 3 bytes */
ORV_API OrvErrorType OrvRaw12ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                            OrvOutputCode output, int32_t pattern);

/* Big-endian 16 bits, 2x2, to the 8-bit outputs, from the first byte of each sample.
 *   source 2 n bytes */
ORV_API OrvErrorType OrvRaw16ImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                            OrvOutputCode output, int32_t pattern);

/* 16-bit words, shifted to the top, 2x2, to the 8-bit and the Mono16 outputs from the top eight bits and to Bgr48 from
 * all 16. record->BayerPattern: 1 and 2 are exchanged as elsewhere; of any other value the two low bits count.
 *   source 2 n bytes
 * OrvErrorBadParameter: a buffer is null, width or height is 0 or odd, record is null. OrvErrorNotImplemented: any
 * other output; Alignment above 1.
 * OrvErrorInternalFault: a shift that is not 0 to 4 or 6 (so BitsUsed 11 with Alignment 1); Endianness above 1. */
ORV_API OrvErrorType OrvRaw16ImageTransformEx(void* destination, const void* source, uint32_t width, uint32_t height,
                                              OrvOutputCode output, const OrvShiftRecord* record);

/* ---- Bayer mosaics, one-call converters ---------------------------------------------------------------------- */

/* Each writes one output, by 2x2 where the name says no other method. Words of 16-bit outputs are native.
 * OrvErrorBadParameter: a buffer is null, width or height is 0 or odd, pattern is neither 0 to 3 nor -1 (which means
 * 3). */

/* 8 bits to BGR24: OrvRaw8ImageTransform and its variants with output Bgr24. The Int ones overwrite the source.
 *   destination 3 n bytes, source n bytes */
ORV_API OrvErrorType OrvRaw8ToBGR(void* destination, const void* source, uint32_t width, uint32_t height,
                                  int32_t pattern);
ORV_API OrvErrorType OrvRaw8ToBGR_3x3(void* destination, const void* source, uint32_t width, uint32_t height,
                                      int32_t pattern);
ORV_API OrvErrorType OrvRaw8ToBGR_IntLCAA(void* destination, void* source, uint32_t width, uint32_t height,
                                          int32_t pattern);
ORV_API OrvErrorType OrvRaw8ToBGR_IntLCAAV(void* destination, void* source, uint32_t width, uint32_t height,
                                           int32_t pattern);
ORV_API OrvErrorType OrvRaw8ToBGR_IntYUV422(void* destination, void* source, uint32_t width, uint32_t height,
                                            int32_t pattern);

/* 8 bits to grey: the luma of output Mono8, as Mono8 (n bytes) or three times as BGR24 (3 n bytes).
 *   source n bytes */
ORV_API OrvErrorType OrvRaw8ToY8(void* destination, const void* source, uint32_t width, uint32_t height,
                                 int32_t pattern);
ORV_API OrvErrorType OrvRaw8ToBGR_mono(void* destination, const void* source, uint32_t width, uint32_t height,
                                       int32_t pattern);

/* 12Packed to BGR24 (3 n bytes) from the top eight bits, or to BGR48 (6 n bytes), samples MSB-aligned.
 *   source n / 2 * 3 bytes */
ORV_API OrvErrorType OrvRaw12ToBGR(void* destination, const void* source, uint32_t width, uint32_t height,
                                   int32_t pattern);
ORV_API OrvErrorType OrvRaw12ToBGR16(void* destination, const void* source, uint32_t width, uint32_t height,
                                     int32_t pattern);

/* Big-endian 16 bits to BGR24 (3 n bytes) from the first byte, to BGR48 (6 n bytes), or to Mono16 (2 n bytes) as
 * (77 R + 150 G + 29 B) >> 8.
 *   source 2 n bytes */
ORV_API OrvErrorType OrvRaw16ToBGR(void* destination, const void* source, uint32_t width, uint32_t height,
                                   int32_t pattern);
ORV_API OrvErrorType OrvRaw16ToBGR16(void* destination, const void* source, uint32_t width, uint32_t height,
                                     int32_t pattern);
ORV_API OrvErrorType OrvRaw16ToY16(void* destination, const void* source, uint32_t width, uint32_t height,
                                   int32_t pattern);

/* ---- Geometry ------------------------------------------------------------------------------------------------ */

/* Mirrors an image in place: mode 1 every line left to right, 2 upside down, 3 both, a turn by 180 degrees. The colour
 * coding (not PFNC) says how many bytes move as one: 1 for 0 Mono8, 9 Raw8, 128 to 130 Y8; 2 for 1 YUV 4:1:1, 2 YUV
 * 4:2:2, 3 YUV 4:4:4, 5 Mono16, 7 signed Mono16, 10 Raw16; 3 for 4 RGB8; 6 for 6 RGB16, 8 signed RGB16. Mode 2 takes
 * any other coding as well, as 1 byte. All YUV codings are taken as lines of width * 2 bytes, although pixels of 4:1:1
 * have 1.5 and those of 4:4:4 have 3, and modes 1 and 3 put their chroma in the wrong places.
 *   image width * height * the bytes that move as one
 * OrvErrorBadParameter: image is null, width is 0, height is below 2 (also for mode 1), mode is not 1 to 3; modes 1 and
 * 3: unknown coding; a line of 4 GiB or more. */
ORV_API OrvErrorType OrvFlip(void* image, uint32_t width, uint32_t height, int32_t mode, uint32_t coding);

/* Turns an image upside down in place. It needs no memory.
 *   image lineLength * height bytes
 * OrvErrorBadParameter: image is null, lineLength is 0, height is below 2. */
ORV_API OrvErrorType OrvFlipVertical(void* image, uint32_t lineLength, uint32_t height);

/* Stretches or shrinks lines. Output pixel i is at x = i * (a / b) of the source line, a / b being a float and the
 * product a double. k = trunc(x + 0.5), but at most the last pixel, is the nearest source pixel.
 *   mode 0, nearest  pixel k of the source line; the last pixel is sourceLength - 1
 *   mode 1, linear   between pixels k - 1 and k, byte by byte. With w = trunc((x - k) * 1024), q and p the bytes of the
 *                    two pixels: (p * (1024 + w) + q * -w) >> 10 if w < 0, (q * (1024 - w) + p * w) >> 10 if w > 0
 *                    (not pixels k and k + 1), and p if w = 0 or k is 0 or the last pixel, destinationLength - 1
 * So linear mode, when it shrinks a line, uses nothing behind source pixel destinationLength - 1; when it stretches
 * one, it can run on behind the end of the source line. It reads pixels 0 to k of the last output pixel, and the buffer
 * must hold these, also behind its last line. Positions in front of the line or without a value (negative ratios, NaN)
 * mean pixel 0. If a length or the number of lines is 0 or negative, nothing is written. Pitches are the pixels from
 * line to line and may be negative; in OrvResampleScanlines they are the lengths. No memory is needed. Lines are
 * finished one after the other: where the pitch is shorter than a line, the next line overwrites its end.
 *   bytesPerPixel 1 to 6
 * 1 (not 0) on success.
 * OrvErrorBadParameter: a buffer is null, bytesPerPixel is not 1 to 6, mode is above 1, b is 0. */
ORV_API OrvErrorType OrvResampleScanlines(void* destination, const void* source, int32_t destinationLength,
                                          int32_t sourceLength, int32_t lines, uint32_t bytesPerPixel, uint32_t mode,
                                          float a, float b);
ORV_API OrvErrorType OrvResampleScanlinesEx(void* destination, const void* source, int32_t destinationLength,
                                            int32_t destinationPitch, int32_t sourceLength, int32_t sourcePitch,
                                            int32_t lines, uint32_t bytesPerPixel, uint32_t mode, float a, float b);

/* The length of a resampled line: trunc(sourceLength * b / a), the product a float and the quotient a double, raised to
 * a multiple of 4, as length / 4 * 4 + 4, unless it is one. The quotient is kept within -2^31 and 2^32 - 4, and NaN
 * becomes 0 (a may be 0); a negative length is written modulo 2^32.
 * OrvErrorBadParameter: result is null, b is 0. */
ORV_API OrvErrorType OrvGetResampledScanlineLength(uint32_t* result, int32_t sourceLength, float a, float b);

/* Weaves two fields, stored one after the other, into a frame: line 2 i is line i of the second field, line 2 i + 1 is
 * line i of the first. Works in place, and then needs memory for half a frame.
 *   destination and source lineLength * lines bytes
 * If lineLength is odd, a source of its own has the second field at byte lines * (lineLength / 2), which is lines / 2
 * bytes before half the frame; in place it is at half the frame.
 * OrvErrorBadParameter: a buffer is null, lines is odd. OrvErrorResources: in place, no memory. */
ORV_API OrvErrorType OrvInterlacedToProgressive(void* destination, const void* source, uint32_t lineLength,
                                                uint32_t lines);

/* Copies a block of data out of an image, 12 bytes (kind 1) or 52 (kind 2). It begins at the start of a line (line >=
 * 0) or -line pixels before the end of the image (line < 0). formatIndex is that of OrvGetBitsPerPixel.
 *   destination 12 or 52 bytes, image width * height * bits per pixel / 8 bytes
 * OrvErrorBadParameter: a buffer is null, width or height is 0, unknown index; the block begins within a byte; unknown
 * kind.
 * OrvErrorInternalFault: the block begins before the image or ends with the image or behind it. */
ORV_API OrvErrorType OrvGetSIS(void* destination, const void* image, uint32_t width, uint32_t height,
                               uint32_t formatIndex, int32_t line, int32_t kind);

/* ---- Colour-correction objects ------------------------------------------------------------------------------- */

/* A colour-correction object: a u32 kind (2 for converters with 8-bit outputs, 3 for those with 16-bit outputs), then
 * nine i32 coefficients. It belongs to the library; its memory stays until the process ends. */
typedef void* ColorCorrectionHandle;

/* Make an object of nine floats, row by row: R', G', B' from R, G, B. Coefficients are kept in steps of 1/1024,
 * truncated toward zero; what 32 bits cannot hold becomes the nearest value that they can, NaN becomes 0.
 * These calls and OrvDestroyColorCorrection take a lock. They allocate memory, and they throw
 * kel::thread::KELThreadException (orvella/exceptions.hpp) if the lock cannot be taken or released.
 * OrvErrorBadParameter: matrix is null; handle is null. OrvErrorResources: no memory. *handle is written on success
 * only. */
ORV_API OrvErrorType OrvCreateColorCorrectionMatrix_Int8(const float* matrix, ColorCorrectionHandle* handle);
ORV_API OrvErrorType OrvCreateColorCorrectionMatrix_Int16(const float* matrix, ColorCorrectionHandle* handle);

/* Takes the object out of the set of live ones. The handle is not read: null, unknown and destroyed ones do no harm.
 * OrvErrorBadParameter: always, also when the object was found, and when the lock cannot be taken: this call never
 * throws. */
ORV_API OrvErrorType OrvDestroyColorCorrection(ColorCorrectionHandle handle);

/* The one-call converters of mosaics, with a colour-correction object; a null handle is the plain conversion. The
 * matrix is applied to every pixel after the 2x2 demosaic. Sums have 32 bits and wrap around. 8-bit outputs take the
 * bits 10 to 25 of each sum as a signed word and clamp it to 0..255; 16-bit outputs clamp sum >> 10 to 0..65535. Luma
 * is weighed after the correction. Buffers as of the functions without _CC.
 * OrvErrorBadParameter: what these refuse; an object that was made by OrvCreateColorCorrectionMatrix_Int16 for an 8-bit
 * output (BGR, Y8), or by ..._Int8 for a 16-bit one (BGR16, Y16). */
ORV_API OrvErrorType OrvRaw8ToBGR_CC(void* destination, const void* source, uint32_t width, uint32_t height,
                                     int32_t pattern, ColorCorrectionHandle handle);
ORV_API OrvErrorType OrvRaw8ToY8_CC(void* destination, const void* source, uint32_t width, uint32_t height,
                                    int32_t pattern, ColorCorrectionHandle handle);
ORV_API OrvErrorType OrvRaw12ToBGR_CC(void* destination, const void* source, uint32_t width, uint32_t height,
                                      int32_t pattern, ColorCorrectionHandle handle);
ORV_API OrvErrorType OrvRaw12ToBGR16_CC(void* destination, const void* source, uint32_t width, uint32_t height,
                                        int32_t pattern, ColorCorrectionHandle handle);
ORV_API OrvErrorType OrvRaw16ToBGR16_CC(void* destination, const void* source, uint32_t width, uint32_t height,
                                        int32_t pattern, ColorCorrectionHandle handle);
ORV_API OrvErrorType OrvRaw16ToY16_CC(void* destination, const void* source, uint32_t width, uint32_t height,
                                      int32_t pattern, ColorCorrectionHandle handle);

/* ---- Complementary-colour mosaics ---------------------------------------------------------------------------- */

/* 8-bit mosaic of cyan, yellow, green and magenta cells to the 8-bit outputs and Yuv422. Two fields follow each other:
 * first lines 1, 3, 5 ..., then lines 0, 2, 4 ... Of four lines, the first and the third hold Cy Ye, the second Gr Mg,
 * the last Mg Gr. Every pixel is made from the 2x2 block whose top left corner it is; the last column and the last row
 * repeat their neighbours (the last row with its fourth bytes). The unnamed argument is ignored.
 *   source n bytes
 * OrvErrorBadParameter: a buffer is null, width is 0 or odd, height is 0 or no multiple of 4. OrvErrorNotImplemented:
 * any other output. */
ORV_API OrvErrorType OrvIRaw8CYGMImageTransform(void* destination, const void* source, uint32_t width, uint32_t height,
                                                OrvOutputCode output, uint32_t);

/* OrvIRaw8CYGMImageTransform with output Bgr24 (3 n bytes) and Mono8 (n bytes).
 * OrvErrorBadParameter: a buffer is null, width is 0 or odd, height is 0 or no multiple of 4. */
ORV_API OrvErrorType OrvIRaw8CYGMToBGR(void* destination, const void* source, uint32_t width, uint32_t height);
ORV_API OrvErrorType OrvIRaw8CYGMToMono(void* destination, const void* source, uint32_t width, uint32_t height);

/* Binning: one pixel for each 2x2 block of columns 2c, 2c + 1 and lines 2r, 2r + 1. The image is width / 2 wide and
 * height / 2 high. ToBGR: with output Bgr24.
 *   destination n / 4 pixels, source n bytes
 * OrvErrorBadParameter: a buffer is null, width is 0 or odd, height is 0 or no multiple of 4; Yuv422 and width is no
 * multiple of 4.
 * OrvErrorNotImplemented: any other output. */
ORV_API OrvErrorType OrvIRaw8CYGMImageTransform_Bin(void* destination, const void* source, uint32_t width,
                                                    uint32_t height, OrvOutputCode output, uint32_t);
ORV_API OrvErrorType OrvIRaw8CYGMToBGR_Bin(void* destination, const void* source, uint32_t width, uint32_t height);

/* 3x3: every inner pixel is made from the four 2x2 blocks that touch it; the border repeats its neighbours, columns
 * first (rows with their fourth bytes). ToBGR: with output Bgr24.
 *   destination n pixels, source n bytes
 * OrvErrorBadParameter: a buffer is null, width is 2, width is 0 or odd, height is 0 or no multiple of 4.
 * OrvErrorNotImplemented: any other output. */
ORV_API OrvErrorType OrvIRaw8CYGMImageTransform_3x3(void* destination, const void* source, uint32_t width,
                                                    uint32_t height, OrvOutputCode output, uint32_t);
ORV_API OrvErrorType OrvIRaw8CYGMToBGR_3x3(void* destination, const void* source, uint32_t width, uint32_t height);

/* ---- Texts, version, platform -------------------------------------------------------------------------------- */

/* The English text of a code, "return code not found" for an unknown one (still a success).
 * Copies at most size bytes; a text that is cut has no NUL.
 * OrvErrorBadParameter: buffer is null, size is 0. OrvErrorMoreData: a known code's text was cut. */
ORV_API OrvErrorType OrvGetErrorInfo(OrvErrorType code, char* buffer, uint32_t size);

/* (a << 24) | (b << 16) | (c << 8) | d of version a.b.c.d. OrvErrorBadParameter: version is null. */
ORV_API OrvErrorType OrvGetVersion(uint32_t* version);

/* How the library was built: type 0 "Release X86", 1 "X86", 2 "Release", any other "". Cut to size, always with a NUL;
 * a size of 0 writes nothing. OrvErrorBadParameter: buffer is null. */
ORV_API OrvErrorType OrvGetApiInfoString(uint32_t type, char* buffer, uint32_t size);

/* What the platform probe found. A null record returns the legacy word 0x88000002, not a negative code. */
ORV_API OrvErrorType OrvGetTechnoInfo(OrvTechnoInfo* record);

#ifdef __cplusplus
} /* extern "C" */

/* C++ linkage: these two do not check for null pointers. */

/* The format's OrvPixelLayout. OrvErrorBadParameter: unknown format. */
ORV_API OrvErrorType OrvGetPixelLayout(OrvPixelLayout* layout, OrvPixelFormatType format);

/* 2 (BT.601) for the six YUV formats, 0 for every other value. Never fails. */
ORV_API OrvErrorType OrvGetColorSpace(OrvColorSpace* space, OrvPixelFormatType format);

/* The older general transform: by PFNC code instead of image records, mosaics by 2x2 only. Buffers as for
 * OrvImageTransform, except that 12p sources are read as 12Packed, and 16-bit ones with all bits used as big-endian.
 * The unnamed argument is ignored.
 * OrvErrorBadParameter: a buffer is null; a format that OrvIsColor refuses.
 * OrvErrorBadParameter: the YCbCr names, Rgb16, Bayer 10p.
 * Then what the family function chosen refuses. */
ORV_API OrvErrorType OrvTransformOLD(void* destination, OrvOutputCode output, const void* source, uint32_t width,
                                     uint32_t height, int32_t, OrvPixelFormatType format);
#endif

#endif
