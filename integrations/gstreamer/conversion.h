/* One frame from memory to memory, with what GStreamer has and the library does not take: strides, odd sizes, a fourth
 * byte of 255, any demosaic method and a matrix for every source, colours in studio range, sources that must stay whole.
 *
 * A conversion is a few calls of OrvImageTransform, its stages. If one call does it, it works on the caller's memory.
 * Otherwise the frame goes through the stages in bands of rows that stay in the processor's cache. */
#pragma once
#include <glib.h>
#include <orvella/orv.h>

typedef struct {
    OrvPixelInfo source;
    OrvOutputCode output;
    OrvDebayerMode debayer; /* counts for mosaics */
    gboolean corrected;     /* by the matrix: row by row R', G', B' from R, G, B */
    float matrix[9];
    gboolean studio_range; /* a YUV source has luma 16..235, chroma 16..240 */
    guint width, height;
} Recipe;

/* What a source can become. */
gboolean is_offered(const OrvPixelInfo* source, OrvOutputCode output, gboolean corrected);

typedef struct {
    OrvPixelInfo from, to;
    OrvTransformInfo option;
} Stage;

enum { MAX_STAGES = 4 };

typedef struct {
    Recipe recipe;
    gsize source_row, output_row; /* bytes, of the frame's own width */
    Stage stages[MAX_STAGES];
    guint stage_count;
    guint width, height;             /* made even where the library wants that */
    guint band, shared;              /* rows of a band, and how many of them the next one has as well */
    guint8* scratch[MAX_STAGES + 1]; /* a band of the source, and of what each stage makes */
} Conversion;

/* Plans a conversion; a zeroed or a planned one is given. Null, or what is wrong. It takes its memory as it runs. */
const char* conversion_plan(Conversion* conversion, const Recipe* recipe);
void conversion_clear(Conversion* conversion);

/* The library's filtered methods overwrite the source: whether it is worth while to offer a writable one. */
gboolean conversion_wants_writable_source(const Conversion* conversion);

typedef struct {
    guint8* data;
    gsize stride;
} Rows;

/* The source has source_row bytes in every row, the destination output_row. The source is changed only if it is said to
 * be writable. */
OrvErrorType conversion_run(Conversion* conversion, Rows destination, Rows source, gboolean source_writable);
