#include "conversion.h"

#include <string.h>

#include "formats.h"

enum { BAND_BYTES = 1 << 18 }; /* of output: it and what it is made from fit a core's cache */

static gboolean has_fourth_byte(OrvOutputCode output) { return output == OrvOutputBgra32 || output == OrvOutputRgba32; }

static gsize row_bytes(const OrvPixelInfo* pixels, guint width) { return (gsize)width * pixels->BitsPerPixel / 8; }

static OrvPixelInfo pixels_of_output(OrvOutputCode output) {
    OrvImage image;
    memset(&image, 0, sizeof image);
    image.Size = sizeof image;
    OrvSetImageInfoOutput(output, 2, 2, &image);
    return image.ImageInfo.PixelInfo;
}

/* ---- Planning ------------------------------------------------------------------------------------------------ */

gboolean is_offered(const OrvPixelInfo* source, OrvOutputCode output, gboolean corrected) {
    const gboolean mono = is_mono(source), mosaic = is_mosaic(source);
    switch (output) {
    case OrvOutputYuv422: return !corrected && (mono || mosaic);
    case OrvOutputMono16: return !corrected && ((mono && source->BitsPerPixel != 8) || mosaic);
    default: return TRUE;
    }
}

static void add_stage(Conversion* c, OrvPixelInfo from, OrvPixelInfo to, OrvTransformInfo option) {
    Stage* const stage = &c->stages[c->stage_count++];
    stage->from = from;
    stage->to = to;
    stage->option = option;
}

static OrvTransformInfo demosaic_by(OrvDebayerMode mode) {
    OrvTransformInfo option;
    OrvSetDebayerMode(mode, &option);
    return option;
}

/* The samples of a mosaic or of a grey image with 8 bits each. Returns what they are then. */
static OrvPixelInfo add_8_bits(Conversion* c, OrvPixelInfo from) {
    OrvPixelInfo samples = from, result = from;
    switch (from.PixelLayout) {
    case OrvPixelLayoutRaw: samples.PixelLayout = OrvPixelLayoutMono; break;
    case OrvPixelLayoutRawPacked: samples.PixelLayout = OrvPixelLayoutMonoPacked; break;
    case OrvPixelLayoutRawP: samples.PixelLayout = OrvPixelLayoutMonoP; break;
    default: break;
    }
    add_stage(c, samples, pixels_of_output(OrvOutputMono8), demosaic_by(OrvDebayerMode2x2));
    result.PixelLayout = is_mosaic(&from) ? OrvPixelLayoutRaw : OrvPixelLayoutMono;
    result.BitsPerPixel = result.BitsUsed = 8;
    return result;
}

/* The library has deep mosaics by 2x2 only, UYVY from 8 bits only, and deep grey is tinted by its low bits in colour. */
static gboolean needs_8_bits(const OrvPixelInfo* from, OrvOutputCode output, OrvDebayerMode mode) {
    if (from->BitsPerPixel == 8) return FALSE;
    if (is_mosaic(from)) return mode != OrvDebayerMode2x2 || output == OrvOutputYuv422;
    return is_mono(from) && output != OrvOutputMono8 && output != OrvOutputMono16;
}

static OrvDebayerMode mode_of(const Recipe* recipe) {
    const gboolean has_neighbours = recipe->width >= 4 && recipe->height >= 4;
    const gboolean offered = is_mosaic(&recipe->source) && recipe->output != OrvOutputYuv422;
    return has_neighbours && offered ? recipe->debayer : OrvDebayerMode2x2;
}

static void plan_stages(Conversion* c) {
    const Recipe* const recipe = &c->recipe;
    const OrvPixelInfo output = pixels_of_output(recipe->output), bgr = pixels_of_output(OrvOutputBgr24);
    const OrvTransformInfo demosaic = demosaic_by(mode_of(recipe));
    OrvPixelInfo from = recipe->source;

    if (from.BitsUsed == 16 && from.Endianness == 1 && recipe->output == OrvOutputMono16) {
        from.BitsUsed = 15; /* words that need no shift; as words of 16 bits they would stay big-endian */
        from.Alignment = 0;
    }
    if (needs_8_bits(&from, recipe->output, mode_of(recipe))) from = add_8_bits(c, from);
    if (!recipe->corrected) {
        add_stage(c, from, output, demosaic);
        return;
    }
    /* The library's own correction of mosaics knows 2x2 and few outputs; that of colours has them all but grey. */
    if (from.PixelLayout != OrvPixelLayoutRgb && from.PixelLayout != OrvPixelLayoutBgr) {
        add_stage(c, from, bgr, demosaic);
        from = bgr;
    }
    OrvTransformInfo correction;
    OrvSetColorCorrectionMatrix3x3(recipe->matrix, &correction);
    const gboolean grey = recipe->output == OrvOutputMono8;
    add_stage(c, from, grey ? bgr : output, correction);
    if (grey) add_stage(c, bgr, output, demosaic);
}

static void plan_bands(Conversion* c) {
    const Recipe* const recipe = &c->recipe;
    const gsize rows = BAND_BYTES / row_bytes(&c->stages[c->stage_count - 1].to, c->width);
    c->shared = is_mosaic(&recipe->source) ? 2 : 0;
    c->band = MIN(c->height, MAX((guint)rows / 2 * 2, 8));
    if (mode_of(recipe) >= OrvDebayerModeLCAA) c->band = c->height; /* the filtered methods are one stream */
}

const char* conversion_plan(Conversion* c, const Recipe* recipe) {
    const OrvPixelInfo* const source = &recipe->source;
    const gboolean mosaic = is_mosaic(source), pairs = source->PixelLayout == OrvPixelLayoutYuv422;
    c->recipe = *recipe;
    conversion_clear(c);
    if (!is_offered(source, recipe->output, recipe->corrected)) return "this source does not become this output";
    if (source->PixelLayout == OrvPixelLayoutYuv411 && recipe->width % 4) return "the width must be a multiple of 4";
    if (!pairs && recipe->width * source->BitsPerPixel % 8) return "rows of this width end within a byte";
    if (mosaic && (recipe->width < 2 || recipe->height < 2)) return "a mosaic must be 2x2 at least";

    c->width = mosaic || pairs || recipe->output == OrvOutputYuv422 ? (recipe->width + 1) & ~1u : recipe->width;
    c->height = mosaic ? (recipe->height + 1) & ~1u : recipe->height;
    plan_stages(c);
    plan_bands(c);
    c->source_row = row_bytes(source, pairs ? c->width : recipe->width);
    c->output_row =
        row_bytes(&c->stages[c->stage_count - 1].to, recipe->output == OrvOutputYuv422 ? c->width : recipe->width);
    return NULL;
}

void conversion_clear(Conversion* c) {
    for (guint i = 0; i <= MAX_STAGES; ++i) g_clear_pointer(&c->scratch[i], g_free);
    c->stage_count = 0;
}

gboolean conversion_wants_writable_source(const Conversion* c) {
    return mode_of(&c->recipe) >= OrvDebayerModeLCAA && c->recipe.source.BitsPerPixel == 8;
}

/* ---- Running ------------------------------------------------------------------------------------------------- */

static OrvErrorType run_stage(const Stage* stage, guint width, guint height, guint8* destination, guint8* source) {
    const OrvImage from = {sizeof from, source, {width, height, (gint32)width, stage->from}};
    OrvImage to = {sizeof to, destination, {width, height, (gint32)width, stage->to}};
    return OrvImageTransform(&from, &to, &stage->option, 1);
}

static guint8 clamp_byte(gint value) { return (guint8)CLAMP(value, 0, 255); }

/* U Y V Y from studio range to the full range that the library reads. */
static void expand_range(guint8* pairs, gsize size) {
    for (gsize i = 0; i < size; i += 2) {
        pairs[i] = clamp_byte(((pairs[i] - 128) * 255 + 128 * 224 + 112) / 224);
        pairs[i + 1] = clamp_byte(((pairs[i + 1] - 16) * 255 + 109) / 219);
    }
}

/* The library makes U Y V Y from grey with the grey value as luma and zero chroma, which is a green picture. Studio range
 * as it makes from mosaics, and neutral chroma. */
static void make_neutral(guint8* pairs, gsize size) {
    for (gsize i = 0; i < size; i += 2) {
        pairs[i] = 128;
        pairs[i + 1] = (guint8)(((220 * pairs[i + 1] + 128) >> 8) + 16);
    }
}

/* Memory of a band: of the source, or of what stage i - 1 makes. Fourth bytes are 255 and stay so. */
static guint8* memory(Conversion* c, guint i) {
    const gsize size = row_bytes(i == 0 ? &c->stages[0].from : &c->stages[i - 1].to, c->width) * c->band;
    if (!c->scratch[i]) c->scratch[i] = memset(g_malloc(size), 255, size);
    return c->scratch[i];
}

/* The rows of a band without padding. What an odd size lacks comes from where the mosaic has the same colour. */
static guint8* gather(Conversion* c, Rows source, guint first, guint rows) {
    const OrvPixelInfo* const pixels = &c->recipe.source;
    const gsize row = row_bytes(pixels, c->width), pixel = pixels->BitsPerPixel / 8;
    const gsize back = is_mosaic(pixels) ? 2 : 1;
    guint8* const band = memory(c, 0);
    for (guint i = 0; i < rows; ++i) {
        const guint from = first + i < c->recipe.height ? first + i : c->recipe.height - 2;
        guint8* const to = memcpy(band + row * i, source.data + source.stride * from, c->source_row);
        if (row > c->source_row) memcpy(to + c->source_row, to + c->source_row - back * pixel, pixel);
    }
    if (c->recipe.studio_range) expand_range(band, row * rows);
    return band;
}

/* The rows that the bands before have not written rightly. */
static void scatter(const Conversion* c, Rows destination, const guint8* band, guint first, guint rows) {
    const gsize row = row_bytes(&c->stages[c->stage_count - 1].to, c->width);
    const guint end = MIN(first + rows, c->recipe.height);
    for (guint i = first + (first ? c->shared / 2 : 0); i < end; ++i)
        memcpy(destination.data + destination.stride * i, band + row * (i - first), c->output_row);
}

typedef struct {
    gboolean gathers;    /* copies the source into a dense band */
    gboolean scatters;   /* copies the result to where it belongs */
    gboolean fourth;     /* has fourth bytes, which the library does not write */
    gboolean grey_pairs; /* grey becomes U Y V Y */
} Way;

static Way way_of(const Conversion* c, Rows destination, Rows source, gboolean writable) {
    const Recipe* const recipe = &c->recipe;
    const gboolean even = c->width == recipe->width && c->height == recipe->height;
    const Way way = {!even || source.stride != c->source_row || recipe->studio_range ||
                         (conversion_wants_writable_source(c) && !writable),
                     !even || destination.stride != c->output_row, has_fourth_byte(recipe->output),
                     is_mono(&recipe->source) && recipe->output == OrvOutputYuv422};
    return way;
}

static OrvErrorType run_band(Conversion* c, Rows destination, Rows source, Way way, guint first, guint rows) {
    guint8* data = way.gathers ? gather(c, source, first, rows) : source.data + source.stride * first;
    for (guint i = 0; i < c->stage_count; ++i) {
        const gboolean arrives = i + 1 == c->stage_count && !way.scatters;
        guint8* const next = arrives ? destination.data + destination.stride * first : memory(c, i + 1);
        if (arrives && way.fourth) memset(next, 255, destination.stride * rows);
        const OrvErrorType result = run_stage(&c->stages[i], c->width, rows, next, data);
        if (result != OrvErrorSuccess) return result;
        data = next;
    }
    if (way.grey_pairs) make_neutral(data, row_bytes(&c->stages[c->stage_count - 1].to, c->width) * rows);
    if (way.scatters) scatter(c, destination, data, first, rows);
    return OrvErrorSuccess;
}

OrvErrorType conversion_run(Conversion* c, Rows destination, Rows source, gboolean source_writable) {
    Way way = way_of(c, destination, source, source_writable);
    const gboolean one_call = !way.gathers && !way.scatters && !way.grey_pairs && c->stage_count == 1;
    const guint band = one_call ? c->height : c->band;
    way.scatters |= band < c->height && c->shared; /* bands overlap: only good rows may arrive */
    for (guint first = 0;; first += band - c->shared) {
        const guint rows = MIN(band, c->height - first);
        const OrvErrorType result = run_band(c, destination, source, way, first, rows);
        if (result != OrvErrorSuccess || first + rows == c->height) return result;
    }
}
