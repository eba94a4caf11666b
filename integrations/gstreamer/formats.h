/* What GStreamer calls the formats that the element knows. */
#pragma once
#include <gst/gst.h>
#include <orvella/orv.h>

typedef struct {
    const char* media; /* "video/x-bayer", "video/x-raw" */
    const char* name;  /* the caps field "format" */
    OrvPixelInfo pixels;
} SourceFormat;

typedef struct {
    const char* name; /* "video/x-raw" all of them */
    OrvOutputCode code;
} OutputFormat;

extern const SourceFormat source_formats[];
extern const guint source_format_count;
extern const OutputFormat output_formats[];
extern const guint output_format_count;

/* The row that the structure's fixed format names, or null. */
const SourceFormat* source_format_of(const GstStructure* structure);
const OutputFormat* output_format_named(const char* name);

/* What a PFNC name like BayerRG12p means; FALSE if nothing converts it. */
gboolean pixels_of_pfnc(const char* name, OrvPixelInfo* pixels);

gboolean is_mosaic(const OrvPixelInfo* pixels);
gboolean is_mono(const OrvPixelInfo* pixels);
