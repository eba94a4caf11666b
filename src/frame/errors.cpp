#include <algorithm>
#include <cstring>
#include <span>

#include "frame/error_texts.h"
#include "legacy/words.h"
#include "orvella/orv.h"
#include "orvella/zeb.h"

namespace kel {

namespace {

constexpr std::string_view unknownCode = "return code not found";

// Where a code stands twice the first row counts.
const ErrorText* find(std::span<const ErrorText> texts, i64 code) {
    for (const ErrorText& row : texts)
        if (row.code == code) return &row;
    return nullptr;
}

// The text with its NUL, cut to `size`; false if it was cut.
bool copyText(std::string_view text, char* buffer, u32 size) {
    std::memcpy(buffer, text.data(), std::min<size_t>(text.size(), size));
    if (text.size() < size) buffer[text.size()] = '\0';
    return text.size() < size;
}

} // namespace

} // namespace kel

OrvErrorType OrvGetErrorInfo(OrvErrorType code, char* buffer, uint32_t size) {
    if (!buffer || size == 0) return OrvErrorBadParameter;
    if (const kel::ErrorText* row = kel::find(kel::errorTexts, code))
        return kel::copyText(row->text, buffer, size) ? OrvErrorSuccess : OrvErrorMoreData;
    kel::copyText(kel::unknownCode, buffer, size);
    return OrvErrorSuccess;
}

uint32_t ZEB_GetErrorInfo(int64_t code, char* buffer, uint32_t size) {
    if (!buffer) return kel::legacyParameter(2);
    if (size == 0) return kel::legacyParameter(3);
    const kel::ErrorText* row = kel::find(kel::legacyErrorTexts, code);
    kel::copyText(row ? row->text : kel::unknownCode, buffer, size);
    return kel::legacySuccess;
}
