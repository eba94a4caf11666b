#pragma once
#include <gst/base/gstbasetransform.h>

G_BEGIN_DECLS

#define ORVELLA_TYPE_CONVERT (orvella_convert_get_type())
G_DECLARE_FINAL_TYPE(OrvellaConvert, orvella_convert, ORVELLA, CONVERT, GstBaseTransform)

GST_ELEMENT_REGISTER_DECLARE(orvellaconvert);

G_END_DECLS
