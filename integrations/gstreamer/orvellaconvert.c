/**
 * element-orvellaconvert:
 *
 * Turns mosaics and the other formats of industrial cameras into video frames, bit-exactly as the library defines.
 *
 * Mosaics are no GstVideoFormat, hence a GstBaseTransform and not a GstVideoFilter: caps, sizes and strides of the source
 * are worked out here.
 *
 *     gst-launch-1.0 videotestsrc ! video/x-bayer,format=rggb ! orvellaconvert debayer=3x3 ! videoconvert ! autovideosink
 */
#include "orvellaconvert.h"

#include <gst/video/video.h>
#include <string.h>

#include "conversion.h"
#include "formats.h"
#include "negotiation.h"

GST_DEBUG_CATEGORY_STATIC(orvella_convert_debug);
#define GST_CAT_DEFAULT orvella_convert_debug

struct _OrvellaConvert {
    GstBaseTransform parent;

    /* Properties, under the object's lock. */
    OrvDebayerMode debayer;
    gboolean corrected;
    float matrix[9];
    char* pixel_format; /* null: as the caps say */
    OrvPixelInfo override;
    gboolean stale; /* the conversion is older than the properties */

    /* Of the streaming thread. */
    GstStructure* source; /* the sink pad's caps */
    GstVideoInfo output;
    Conversion conversion;
    gboolean warned;
};

G_DEFINE_TYPE(OrvellaConvert, orvella_convert, GST_TYPE_BASE_TRANSFORM)
GST_ELEMENT_REGISTER_DEFINE_WITH_CODE(orvellaconvert, "orvellaconvert", GST_RANK_NONE, ORVELLA_TYPE_CONVERT,
                                      GST_DEBUG_CATEGORY_INIT(orvella_convert_debug, "orvellaconvert", 0,
                                                              "Frames of industrial cameras"))

enum { PROPERTY_DEBAYER = 1, PROPERTY_MATRIX, PROPERTY_PIXEL_FORMAT };

/* ---- Planning ------------------------------------------------------------------------------------------------ */

static Settings settings_of(OrvellaConvert* self) {
    GST_OBJECT_LOCK(self);
    const Settings settings = {self->corrected, self->pixel_format != NULL, self->override};
    GST_OBJECT_UNLOCK(self);
    return settings;
}

static GstCaps* transform_caps(GstBaseTransform* base, GstPadDirection direction, GstCaps* caps, GstCaps* filter) {
    const Settings settings = settings_of(ORVELLA_CONVERT(base));
    GstCaps* result = caps_across(direction, caps, &settings);
    if (filter) {
        GstCaps* const filtered = gst_caps_intersect_full(filter, result, GST_CAPS_INTERSECT_FIRST);
        gst_caps_unref(result);
        result = filtered;
    }
    GST_LOG_OBJECT(base, "%" GST_PTR_FORMAT " becomes %" GST_PTR_FORMAT, caps, result);
    return result;
}

static const char* fill_recipe(OrvellaConvert* self, Recipe* recipe) {
    const SourceFormat* const named = source_format_of(self->source);
    const char* problem = NULL;
    memset(recipe, 0, sizeof *recipe);
    GST_OBJECT_LOCK(self);
    self->stale = FALSE;
    recipe->source = self->pixel_format ? self->override : named->pixels;
    recipe->debayer = self->debayer;
    recipe->corrected = self->corrected;
    memcpy(recipe->matrix, self->matrix, sizeof recipe->matrix);
    if (!self->pixel_format && recipe->source.PixelLayout == OrvPixelLayoutYuv422)
        problem = read_colorimetry(self->source, &recipe->studio_range);
    GST_OBJECT_UNLOCK(self);
    recipe->width = (guint)GST_VIDEO_INFO_WIDTH(&self->output);
    recipe->height = (guint)GST_VIDEO_INFO_HEIGHT(&self->output);
    recipe->output = output_format_named(GST_VIDEO_INFO_NAME(&self->output))->code;
    return problem;
}

static gboolean plan(OrvellaConvert* self) {
    const Settings settings = settings_of(self);
    const OutputFormat* const to = output_format_named(GST_VIDEO_INFO_NAME(&self->output));
    const gboolean unchanged = is_unchanged(source_format_of(self->source), to, &settings);
    Recipe recipe;
    gst_base_transform_set_passthrough(GST_BASE_TRANSFORM(self), unchanged);
    const char* problem = fill_recipe(self, &recipe);
    if (unchanged) return TRUE;
    if (!problem) problem = conversion_plan(&self->conversion, &recipe);
    if (problem)
        GST_ELEMENT_ERROR(self, STREAM, FORMAT, ("%s", problem),
                          ("%" GST_PTR_FORMAT " to %s", self->source, GST_VIDEO_INFO_NAME(&self->output)));
    return problem == NULL;
}

static gboolean set_caps(GstBaseTransform* base, GstCaps* source, GstCaps* output) {
    OrvellaConvert* const self = ORVELLA_CONVERT(base);
    gst_clear_structure(&self->source);
    if (!gst_video_info_from_caps(&self->output, output)) return FALSE;
    self->source = gst_structure_copy(gst_caps_get_structure(source, 0));
    self->warned = FALSE;
    return plan(self);
}

static void before_transform(GstBaseTransform* base, GstBuffer* buffer) {
    OrvellaConvert* const self = ORVELLA_CONVERT(base);
    (void)buffer;
    GST_OBJECT_LOCK(self);
    const gboolean stale = self->stale;
    GST_OBJECT_UNLOCK(self);
    if (stale && self->source) plan(self);
}

static gboolean stop(GstBaseTransform* base) {
    OrvellaConvert* const self = ORVELLA_CONVERT(base);
    gst_clear_structure(&self->source);
    conversion_clear(&self->conversion);
    return TRUE;
}

static gboolean start(GstBaseTransform* base) {
    OrvellaConvert* const self = ORVELLA_CONVERT(base);
    const Settings settings = settings_of(self);
    if (settings.overridden && settings.override.BitsPerPixel == 0) {
        GST_ELEMENT_ERROR(self, RESOURCE, SETTINGS,
                          ("pixel-format '%s' is no format that is converted", self->pixel_format),
                          ("names are those of PFNC, like BayerRG12p"));
        return FALSE;
    }
    return TRUE;
}

/* ---- Buffers ------------------------------------------------------------------------------------------------- */

static gboolean transform_size(GstBaseTransform* base, GstPadDirection direction, GstCaps* caps, gsize size,
                               GstCaps* other, gsize* other_size) {
    GstVideoInfo info;
    (void)base, (void)caps;
    *other_size = size; /* of the source any size is taken */
    if (direction == GST_PAD_SRC) return TRUE;
    if (!gst_video_info_from_caps(&info, other)) return FALSE;
    *other_size = info.size;
    return TRUE;
}

static gboolean get_unit_size(GstBaseTransform* base, GstCaps* caps, gsize* size) {
    GstVideoInfo info;
    (void)base;
    *size = gst_video_info_from_caps(&info, caps) && info.size > 0 ? info.size : 1;
    return TRUE;
}

/* Rows may lie anywhere on either side. */
static gboolean propose_allocation(GstBaseTransform* base, GstQuery* decided, GstQuery* query) {
    if (decided) gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, NULL);
    return GST_BASE_TRANSFORM_CLASS(orvella_convert_parent_class)->propose_allocation(base, decided, query);
}

/* A pool, which saves a page fault for every 4 KiB of every frame: downstream's, or one of our own. */
static gboolean decide_allocation(GstBaseTransform* base, GstQuery* query) {
    const gboolean offered = gst_query_get_n_allocation_pools(query) > 0;
    GstBufferPool* pool = NULL;
    GstCaps* caps = NULL;
    GstVideoInfo info;
    guint size = 0, least = 0, most = 0;
    gst_query_parse_allocation(query, &caps, NULL);
    if (!caps || !gst_video_info_from_caps(&info, caps)) return FALSE;
    if (offered) gst_query_parse_nth_allocation_pool(query, 0, &pool, &size, &least, &most);
    if (!pool) pool = gst_video_buffer_pool_new();
    size = MAX(size, (guint)info.size);

    GstStructure* const config = gst_buffer_pool_get_config(pool);
    gst_buffer_pool_config_set_params(config, caps, size, least, most);
    if (gst_query_find_allocation_meta(query, GST_VIDEO_META_API_TYPE, NULL))
        gst_buffer_pool_config_add_option(config, GST_BUFFER_POOL_OPTION_VIDEO_META);
    gst_buffer_pool_set_config(pool, config);
    if (offered)
        gst_query_set_nth_allocation_pool(query, 0, pool, size, least, most);
    else
        gst_query_add_allocation_pool(query, pool, size, least, most);
    gst_object_unref(pool);
    return GST_BASE_TRANSFORM_CLASS(orvella_convert_parent_class)->decide_allocation(base, query);
}

/* Where the rows of the source lie: as its meta data say, else dense or padded to 4 bytes, whichever the size tells; what
 * follows the frame is ignored. */
static gboolean find_rows(OrvellaConvert* self, GstBuffer* buffer, const GstMapInfo* map, Rows* rows) {
    const gsize row = self->conversion.source_row, padded = (row + 3) & ~(gsize)3;
    const gsize above = self->conversion.recipe.height - 1u;
    const GstVideoMeta* const meta = gst_buffer_get_video_meta(buffer);
    gsize offset = 0;
    rows->stride = row;
    if (meta && meta->stride[0] > 0 && (gsize)meta->stride[0] >= row) {
        rows->stride = (gsize)meta->stride[0];
        offset = meta->offset[0];
    } else if (map->size != row * (above + 1) && map->size >= padded * above + row) {
        rows->stride = padded;
    } else if (padded != row && !self->warned) {
        self->warned = TRUE;
        GST_ELEMENT_INFO(self, STREAM, FORMAT, ("rows of %" G_GSIZE_FORMAT " bytes without padding", row), (NULL));
    }
    rows->data = map->data + offset;
    if (offset + rows->stride * above + row <= map->size) return TRUE;
    GST_ELEMENT_ERROR(self, STREAM, FORMAT,
                      ("a frame of %u rows needs %" G_GSIZE_FORMAT " bytes, but %" G_GSIZE_FORMAT " came",
                       self->conversion.recipe.height, offset + rows->stride * above + row, map->size),
                      ("%" GST_PTR_FORMAT, self->source));
    return FALSE;
}

static GstFlowReturn convert(OrvellaConvert* self, GstVideoFrame* frame, GstBuffer* source, const GstMapInfo* map,
                             gboolean writable) {
    const Rows destination = {GST_VIDEO_FRAME_PLANE_DATA(frame, 0), (gsize)GST_VIDEO_FRAME_PLANE_STRIDE(frame, 0)};
    Rows rows;
    char text[100];
    if (!find_rows(self, source, map, &rows)) return GST_FLOW_ERROR;
    const OrvErrorType result = conversion_run(&self->conversion, destination, rows, writable);
    if (result == OrvErrorSuccess) return GST_FLOW_OK;
    OrvGetErrorInfo(result, text, sizeof text);
    GST_ELEMENT_ERROR(self, STREAM, FORMAT, ("%s", text), ("%" GST_PTR_FORMAT, self->source));
    return GST_FLOW_ERROR;
}

static GstFlowReturn transform(GstBaseTransform* base, GstBuffer* source, GstBuffer* destination) {
    OrvellaConvert* const self = ORVELLA_CONVERT(base);
    GstFlowReturn flow = GST_FLOW_ERROR;
    GstVideoFrame frame;
    GstMapInfo map;
    if (self->conversion.stage_count == 0) return GST_FLOW_NOT_NEGOTIATED; /* its plan failed, and said so */
    /* Only a frame that nobody else holds may be overwritten. */
    const gboolean writable = conversion_wants_writable_source(&self->conversion) && gst_buffer_is_writable(source) &&
                              gst_buffer_is_all_memory_writable(source);
    if (!gst_buffer_map(source, &map, writable ? GST_MAP_READWRITE : GST_MAP_READ)) {
        GST_ELEMENT_ERROR(self, RESOURCE, READ, (NULL), ("the source cannot be mapped"));
        return flow;
    }
    if (gst_video_frame_map(&frame, &self->output, destination, GST_MAP_WRITE)) {
        flow = convert(self, &frame, source, &map, writable);
        gst_video_frame_unmap(&frame);
    } else {
        GST_ELEMENT_ERROR(self, RESOURCE, WRITE, (NULL), ("the destination cannot be mapped"));
    }
    gst_buffer_unmap(source, &map);
    return flow;
}

/* ---- Properties ---------------------------------------------------------------------------------------------- */

#define TYPE_DEBAYER (debayer_get_type())
static GType debayer_get_type(void) {
    static const GEnumValue values[] = {
        {OrvDebayerMode2x2, "From blocks of 2x2 samples", "2x2"},
        {OrvDebayerMode3x3, "From neighbourhoods of 3x3 samples, bilinear", "3x3"},
        {OrvDebayerModeLCAA, "2x2, chroma filtered over 4 pixels of a row", "lcaa"},
        {OrvDebayerModeLCAAV, "2x2, chroma filtered over 4x2 pixels", "lcaav"},
        {OrvDebayerModeYuv422, "2x2, chroma filtered over 2 pixels of a row", "yuv422"},
        {0, NULL, NULL},
    };
    static gsize type = 0;
    if (g_once_init_enter(&type)) g_once_init_leave(&type, g_enum_register_static("OrvellaConvertDebayer", values));
    return type;
}

static void set_matrix(OrvellaConvert* self, const GValue* value) {
    const guint count = gst_value_array_get_size(value);
    if (count != 0 && count != 9) {
        g_warning("orvellaconvert: a matrix has nine numbers, not %u", count);
        return;
    }
    self->corrected = count == 9;
    for (guint i = 0; i < count; ++i) self->matrix[i] = (float)g_value_get_double(gst_value_array_get_value(value, i));
}

static void get_matrix(const OrvellaConvert* self, GValue* value) {
    for (guint i = 0; self->corrected && i < 9; ++i) {
        GValue number = G_VALUE_INIT;
        g_value_init(&number, G_TYPE_DOUBLE);
        g_value_set_double(&number, (double)self->matrix[i]);
        gst_value_array_append_and_take_value(value, &number);
    }
}

static void set_pixel_format(OrvellaConvert* self, const char* name) {
    g_clear_pointer(&self->pixel_format, g_free);
    if (!name || !*name) return;
    self->pixel_format = g_strdup(name);
    if (!pixels_of_pfnc(name, &self->override)) self->override.BitsPerPixel = 0; /* start() complains */
}

static void set_property(GObject* object, guint id, const GValue* value, GParamSpec* spec) {
    OrvellaConvert* const self = ORVELLA_CONVERT(object);
    GST_OBJECT_LOCK(self);
    switch (id) {
    case PROPERTY_DEBAYER: self->debayer = (OrvDebayerMode)g_value_get_enum(value); break;
    case PROPERTY_MATRIX: set_matrix(self, value); break;
    case PROPERTY_PIXEL_FORMAT: set_pixel_format(self, g_value_get_string(value)); break;
    default: G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, spec);
    }
    self->stale = TRUE;
    GST_OBJECT_UNLOCK(self);
    gst_base_transform_reconfigure_src(GST_BASE_TRANSFORM(self)); /* what is offered may have changed */
}

static void get_property(GObject* object, guint id, GValue* value, GParamSpec* spec) {
    OrvellaConvert* const self = ORVELLA_CONVERT(object);
    GST_OBJECT_LOCK(self);
    switch (id) {
    case PROPERTY_DEBAYER: g_value_set_enum(value, (gint)self->debayer); break;
    case PROPERTY_MATRIX: get_matrix(self, value); break;
    case PROPERTY_PIXEL_FORMAT: g_value_set_string(value, self->pixel_format); break;
    default: G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, spec);
    }
    GST_OBJECT_UNLOCK(self);
}

static void finalize(GObject* object) {
    OrvellaConvert* const self = ORVELLA_CONVERT(object);
    g_clear_pointer(&self->pixel_format, g_free);
    gst_clear_structure(&self->source);
    conversion_clear(&self->conversion);
    G_OBJECT_CLASS(orvella_convert_parent_class)->finalize(object);
}

static void install_properties(GObjectClass* object) {
    const GParamFlags flags = G_PARAM_READWRITE | G_PARAM_STATIC_STRINGS;
    g_object_class_install_property(
        object, PROPERTY_DEBAYER,
        g_param_spec_enum(
            "debayer", "Demosaic method",
            "How mosaics become colours; UYVY and frames of less than 4x4 are made by 2x2, and deep mosaics "
            "are cut to 8 bits for the other methods",
            TYPE_DEBAYER, OrvDebayerMode2x2, flags | GST_PARAM_MUTABLE_PLAYING));
    g_object_class_install_property(
        object, PROPERTY_MATRIX,
        gst_param_spec_array("matrix", "Colour correction",
                             "Nine numbers, row by row R', G', B' from R, G, B, as <1.2,-0.1,-0.1,0.0,...>; applied to "
                             "colours of 8 bits, after the demosaic; none: no correction",
                             g_param_spec_double("number", "Number", "A coefficient, in steps of 1/1024", -G_MAXDOUBLE,
                                                 G_MAXDOUBLE, 0, flags),
                             flags | GST_PARAM_MUTABLE_PLAYING));
    g_object_class_install_property(
        object, PROPERTY_PIXEL_FORMAT,
        g_param_spec_string(
            "pixel-format", "Pixel format",
            "What the frames really are, by PFNC name, like BayerRG12p, whatever format the caps give them: "
            "for packed data, which has no name in caps",
            NULL, flags | GST_PARAM_MUTABLE_READY));
}

static void orvella_convert_class_init(OrvellaConvertClass* class) {
    GObjectClass* const object = G_OBJECT_CLASS(class);
    GstElementClass* const element = GST_ELEMENT_CLASS(class);
    GstBaseTransformClass* const base = GST_BASE_TRANSFORM_CLASS(class);
    object->set_property = set_property;
    object->get_property = get_property;
    object->finalize = finalize;
    install_properties(object);
    gst_type_mark_as_plugin_api(TYPE_DEBAYER, 0);

    GstCaps *const sink = template_caps(GST_PAD_SINK), *const source = template_caps(GST_PAD_SRC);
    gst_element_class_add_pad_template(element, gst_pad_template_new("sink", GST_PAD_SINK, GST_PAD_ALWAYS, sink));
    gst_element_class_add_pad_template(element, gst_pad_template_new("src", GST_PAD_SRC, GST_PAD_ALWAYS, source));
    gst_caps_unref(sink);
    gst_caps_unref(source);
    gst_element_class_set_static_metadata(element, "Converter of industrial cameras' frames", "Filter/Converter/Video",
                                          "Turns mosaics, deep and packed pixels into video frames", "Orvella");
    base->transform_caps = transform_caps;
    base->set_caps = set_caps;
    base->start = start;
    base->stop = stop;
    base->before_transform = before_transform;
    base->transform_size = transform_size;
    base->get_unit_size = get_unit_size;
    base->propose_allocation = propose_allocation;
    base->decide_allocation = decide_allocation;
    base->transform = transform;
}

static void orvella_convert_init(OrvellaConvert* self) {
    self->debayer = OrvDebayerMode2x2;
    gst_base_transform_set_qos_enabled(GST_BASE_TRANSFORM(self), TRUE);
}
