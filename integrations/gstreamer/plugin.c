#include <orvella/version.h>

#include "orvellaconvert.h"

static gboolean plugin_init(GstPlugin* plugin) { return GST_ELEMENT_REGISTER(orvellaconvert, plugin); }

#define PACKAGE "orvella" /* which the macro wants */
GST_PLUGIN_DEFINE(GST_VERSION_MAJOR, GST_VERSION_MINOR, orvella, "Frames of industrial cameras", plugin_init,
                  ORVELLA_VERSION_STRING, "MIT/X11", "Orvella", "Orvella")
