#include "negotiation.h"

#include <gst/video/video.h>
#include <string.h>

#include "conversion.h"

/* UYVY is BT.601 in studio range, at sizes too where GStreamer would take it for BT.709. */
#define UYVY_COLORIMETRY GST_VIDEO_COLORIMETRY_BT601

static gboolean names_format(const GstStructure* structure, const char* media, const char* name) {
    const GValue* const formats = gst_structure_get_value(structure, "format");
    GValue value = G_VALUE_INIT;
    if (!gst_structure_has_name(structure, media)) return FALSE;
    if (!formats) return TRUE;
    g_value_init(&value, G_TYPE_STRING);
    g_value_set_static_string(&value, name);
    const gboolean named = gst_value_intersect(NULL, formats, &value);
    g_value_unset(&value);
    return named;
}

static void add_name(GValue* list, const char* name) {
    GValue value = G_VALUE_INIT;
    g_value_init(&value, G_TYPE_STRING);
    g_value_set_static_string(&value, name);
    gst_value_list_append_and_take_value(list, &value);
}

/* Appends a copy of the structure with these formats, if there are any; takes the list. */
static void append_formats(GstCaps* caps, const GstStructure* like, const char* media, GValue* formats) {
    if (gst_value_list_get_size(formats) > 0) {
        GstStructure* const structure = gst_structure_copy(like);
        gst_structure_set_name(structure, media);
        gst_structure_remove_fields(structure, "format", "colorimetry", "chroma-site", "bpp", "depth", NULL);
        gst_structure_set_value(structure, "format", formats);
        gst_caps_append_structure(caps, structure);
    }
    g_value_unset(formats);
}

gboolean is_unchanged(const SourceFormat* from, const OutputFormat* to, const Settings* settings) {
    return !settings->corrected && !settings->overridden && !strcmp(from->name, to->name);
}

static gboolean becomes(const SourceFormat* from, const OutputFormat* to, const Settings* settings) {
    const OrvPixelInfo* const pixels = settings->overridden ? &settings->override : &from->pixels;
    return is_unchanged(from, to, settings) || is_offered(pixels, to->code, settings->corrected);
}

static void append_outputs(GstCaps* caps, const GstStructure* source, const Settings* settings) {
    GValue same = G_VALUE_INIT, others = G_VALUE_INIT, pairs = G_VALUE_INIT;
    g_value_init(&same, GST_TYPE_LIST);
    g_value_init(&others, GST_TYPE_LIST);
    g_value_init(&pairs, GST_TYPE_LIST);
    for (guint o = 0; o < output_format_count; ++o) {
        const OutputFormat* const to = &output_formats[o];
        gboolean offered = FALSE, unchanged = FALSE;
        for (guint s = 0; s < source_format_count; ++s) {
            const SourceFormat* const from = &source_formats[s];
            if (!names_format(source, from->media, from->name) || !becomes(from, to, settings)) continue;
            if (is_unchanged(from, to, settings))
                unchanged = TRUE;
            else
                offered = TRUE;
        }
        if (unchanged) add_name(&same, to->name);
        if (offered) add_name(to->code == OrvOutputYuv422 ? &pairs : &others, to->name);
    }
    /* Best is what needs no conversion, and keeps its colorimetry. */
    if (gst_value_list_get_size(&same) > 0) {
        GstStructure* const structure = gst_structure_copy(source);
        gst_structure_set_value(structure, "format", &same);
        gst_caps_append_structure(caps, structure);
    }
    g_value_unset(&same);
    append_formats(caps, source, "video/x-raw", &others);
    const guint before = gst_caps_get_size(caps);
    append_formats(caps, source, "video/x-raw", &pairs);
    if (gst_caps_get_size(caps) > before)
        gst_structure_set(gst_caps_get_structure(caps, before), "colorimetry", G_TYPE_STRING, UYVY_COLORIMETRY, NULL);
}

static void append_sources(GstCaps* caps, const GstStructure* output, const Settings* settings) {
    static const char* const media[] = {"video/x-bayer", "video/x-raw"};
    for (guint m = 0; m < G_N_ELEMENTS(media); ++m) {
        GValue formats = G_VALUE_INIT;
        g_value_init(&formats, GST_TYPE_LIST);
        for (guint s = 0; s < source_format_count; ++s) {
            const SourceFormat* const from = &source_formats[s];
            gboolean wanted = FALSE;
            for (guint o = 0; o < output_format_count && !strcmp(from->media, media[m]); ++o) {
                wanted |= names_format(output, "video/x-raw", output_formats[o].name) &&
                          becomes(from, &output_formats[o], settings);
            }
            if (wanted) add_name(&formats, from->name);
        }
        append_formats(caps, output, media[m], &formats);
    }
}

GstCaps* caps_across(GstPadDirection direction, const GstCaps* caps, const Settings* settings) {
    GstCaps* const result = gst_caps_new_empty();
    for (guint i = 0; i < gst_caps_get_size(caps); ++i) {
        const GstStructure* const structure = gst_caps_get_structure(caps, i);
        const GstCapsFeatures* const features = gst_caps_get_features(caps, i);
        if (features && !gst_caps_features_is_equal(features, GST_CAPS_FEATURES_MEMORY_SYSTEM_MEMORY)) continue;
        if (direction == GST_PAD_SINK)
            append_outputs(result, structure, settings);
        else
            append_sources(result, structure, settings);
    }
    return result;
}

GstCaps* template_caps(GstPadDirection direction) {
    GstCaps* const caps = gst_caps_new_empty();
    const guint count = direction == GST_PAD_SINK ? source_format_count : output_format_count;
    static const char* const media[] = {"video/x-bayer", "video/x-raw"};
    for (guint m = direction == GST_PAD_SINK ? 0 : 1; m < G_N_ELEMENTS(media); ++m) {
        GstStructure* const any =
            gst_structure_new(media[m], "width", GST_TYPE_INT_RANGE, 1, G_MAXINT, "height", GST_TYPE_INT_RANGE, 1,
                              G_MAXINT, "framerate", GST_TYPE_FRACTION_RANGE, 0, 1, G_MAXINT, 1, NULL);
        GValue formats = G_VALUE_INIT;
        g_value_init(&formats, GST_TYPE_LIST);
        for (guint i = 0; i < count; ++i) {
            if (direction == GST_PAD_SRC)
                add_name(&formats, output_formats[i].name);
            else if (!strcmp(source_formats[i].media, media[m]))
                add_name(&formats, source_formats[i].name);
        }
        append_formats(caps, any, media[m], &formats);
        gst_structure_free(any);
    }
    return caps;
}

const char* read_colorimetry(const GstStructure* source, gboolean* studio_range) {
    const char* const text = gst_structure_get_string(source, "colorimetry");
    GstVideoColorimetry colorimetry;
    *studio_range = FALSE;
    if (!text || !gst_video_colorimetry_from_string(&colorimetry, text)) return NULL;
    if (colorimetry.matrix == GST_VIDEO_COLOR_MATRIX_BT709 || colorimetry.matrix == GST_VIDEO_COLOR_MATRIX_BT2020)
        return "YUV is read as BT.601 only; put a videoconvert in front";
    *studio_range = colorimetry.range == GST_VIDEO_COLOR_RANGE_16_235;
    return NULL;
}
