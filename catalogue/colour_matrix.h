// The colour correction of the catalogue's "matrix" rows.
#pragma once

namespace catalogue {

// It saturates, so that results fall outside their range on both sides.
constexpr float colourMatrix[9] = {1.75F, -0.5F, -0.3F, -0.4F, 1.6F, -0.25F, 0.05F, -0.65F, 1.9F};

} // namespace catalogue
