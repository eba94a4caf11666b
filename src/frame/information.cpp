// Version, build description and capabilities, for both faces. Here the current face translates the legacy one's words.
#include <algorithm>
#include <cstring>
#include <string_view>

#include "orvella/orv.h"
#include "orvella/zeb.h"
#include "support/integers.h"

namespace kel {

namespace {

constexpr u32 version = u32{ORVELLA_VERSION_MAJOR} << 24 | u32{ORVELLA_VERSION_MINOR} << 16 |
                        u32{ORVELLA_VERSION_PATCH} << 8 | u32{ORVELLA_VERSION_TWEAK};

constexpr u32 parameter1Invalid = 0x88000002;

constexpr OrvErrorType fromLegacyWord(u32 word) {
    if (word >= 0x88000002 && word <= 0x8800000D) return OrvErrorBadParameter;
    switch (word) {
    case 0: return OrvErrorSuccess;
    case 0x88000000: return OrvErrorInternalFault;
    case 0x88000012: return OrvErrorNotImplemented;
    case 0x88000013: return OrvErrorNotSupported;
    case 0x88000015: return OrvErrorApiNotStarted;
    case 0x88000019:
    case 0x8800001A: return OrvErrorResources;
    case 234: return OrvErrorMoreData; // the operating system's code for it
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
    if (!version) return kel::parameter1Invalid;
    *version = kel::version;
    return 0;
}

OrvErrorType OrvGetVersion(uint32_t* version) { return kel::fromLegacyWord(ZEB_GetVersion(version)); }

uint32_t ZEB_GetApiInfoString(uint32_t type, char* buffer, uint32_t size) {
    if (!buffer) return kel::parameter1Invalid;
    kel::copyTerminated(kel::buildDescription(type), buffer, size);
    return 0;
}

OrvErrorType OrvGetApiInfoString(uint32_t type, char* buffer, uint32_t size) {
    if (!buffer) return OrvErrorBadParameter;
    kel::copyTerminated(kel::buildDescription(type), buffer, size);
    return OrvErrorSuccess;
}

uint32_t ZEB_GetTechnoInfo(OrvTechnoInfo* record) {
    if (!record) return kel::parameter1Invalid;
    constexpr int bits[] = {0, 1, 2, 3, 4, 8}; // of the six capabilities
    const auto [a, b] = kel::probePlatform();
    for (int k = 0; k < 6; ++k) {
        record->Flags[2 * k] = a >> bits[k] & 1;
        record->Flags[2 * k + 1] = b >> bits[k] & 1;
    }
    return 0;
}

OrvErrorType OrvGetTechnoInfo(OrvTechnoInfo* record) {
    if (!record) return static_cast<OrvErrorType>(kel::parameter1Invalid); // the word itself, untranslated
    return kel::fromLegacyWord(ZEB_GetTechnoInfo(record));
}
