// Version, build description and capabilities, for both faces. Here the current face translates the legacy one's words.
#include <algorithm>
#include <cstring>
#include <string_view>

#include "legacy/words.h"
#include "orvella/orv.h"
#include "orvella/zeb.h"

namespace kel {

namespace {

constexpr u32 version = u32{ORVELLA_VERSION_MAJOR} << 24 | u32{ORVELLA_VERSION_MINOR} << 16 |
                        u32{ORVELLA_VERSION_PATCH} << 8 | u32{ORVELLA_VERSION_TWEAK};

constexpr OrvErrorType fromLegacyWord(u32 word) {
    if (word >= legacyParameter1 && word <= legacyParameter12) return OrvErrorBadParameter;
    switch (word) {
    case legacySuccess: return OrvErrorSuccess;
    case legacyGeneralError: return OrvErrorInternalFault;
    case legacyNotImplemented: return OrvErrorNotImplemented;
    case legacyNotSupported: return OrvErrorNotSupported;
    case legacyNotStarted: return OrvErrorApiNotStarted;
    case legacyNoResources:
    case legacyNoMemory: return OrvErrorResources;
    case legacyMoreData: return OrvErrorMoreData;
    default: return OrvErrorOther;
    }
}

constexpr std::string_view buildDescription(u32 type) {
    switch (type) {
    case 0: return "Release X86";
    case 1: return "X86";
    case 2: return "Release";
    default: return "";
    }
}

// Cut to size, always with a NUL; a size of 0 writes nothing.
void copyTerminated(std::string_view text, char* buffer, u32 size) {
    if (size == 0) return;
    const size_t length = std::min<size_t>(text.size(), size - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

// Two words of capability bits; this build knows of no probe.
struct Capabilities {
    u32 a, b;
};
constexpr Capabilities probePlatform() { return {0, 0}; }

} // namespace

} // namespace kel

uint32_t ZEB_GetVersion(uint32_t* version) {
    if (!version) return kel::legacyParameter1;
    *version = kel::version;
    return kel::legacySuccess;
}

OrvErrorType OrvGetVersion(uint32_t* version) { return kel::fromLegacyWord(ZEB_GetVersion(version)); }

uint32_t ZEB_GetApiInfoString(uint32_t type, char* buffer, uint32_t size) {
    if (!buffer) return kel::legacyParameter1;
    kel::copyTerminated(kel::buildDescription(type), buffer, size);
    return kel::legacySuccess;
}

OrvErrorType OrvGetApiInfoString(uint32_t type, char* buffer, uint32_t size) {
    if (!buffer) return OrvErrorBadParameter;
    kel::copyTerminated(kel::buildDescription(type), buffer, size);
    return OrvErrorSuccess;
}

uint32_t ZEB_GetTechnoInfo(OrvTechnoInfo* record) {
    if (!record) return kel::legacyParameter1;
    constexpr int bits[] = {0, 1, 2, 3, 4, 8}; // of the six capabilities
    const auto [a, b] = kel::probePlatform();
    for (size_t k = 0; k < 6; ++k) {
        record->Flags[2 * k] = a >> bits[k] & 1;
        record->Flags[2 * k + 1] = b >> bits[k] & 1;
    }
    return kel::legacySuccess;
}

OrvErrorType OrvGetTechnoInfo(OrvTechnoInfo* record) {
    if (!record) return static_cast<OrvErrorType>(kel::legacyParameter1); // the word itself, untranslated
    return kel::fromLegacyWord(ZEB_GetTechnoInfo(record));
}
