// The plain loops, by kind of source: each function adds its rows.
#pragma once
#include <vector>

#include "bench/peers/peers.h"

namespace bench {

void addPixelLoops(std::vector<PeerRow>& rows);
void addMosaicLoops(std::vector<PeerRow>& rows);
void addCygmLoops(std::vector<PeerRow>& rows);
void addGeometryLoops(std::vector<PeerRow>& rows);

} // namespace bench
