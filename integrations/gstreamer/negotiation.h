/* Which caps can become which. */
#pragma once
#include <gst/gst.h>

#include "formats.h"

/* What the element is set to. */
typedef struct {
    gboolean corrected;
    gboolean overridden; /* the frames are this, whatever the caps say */
    OrvPixelInfo override;
} Settings;

GstCaps* template_caps(GstPadDirection direction);

/* What caps of the pad in this direction can be at the other one, the best first. */
GstCaps* caps_across(GstPadDirection direction, const GstCaps* caps, const Settings* settings);

/* Whether frames pass through. */
gboolean is_unchanged(const SourceFormat* from, const OutputFormat* to, const Settings* settings);

/* The range of a YUV source: full, as of cameras, unless the caps have a colorimetry. Null, or what is wrong with it. */
const char* read_colorimetry(const GstStructure* source, gboolean* studio_range);
