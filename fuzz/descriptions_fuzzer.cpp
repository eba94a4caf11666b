// Names, texts, pixel formats and records: the functions of both faces that take no pixels.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/functions.h"
#include "orvella/zeb.h"

namespace {

using fuzz::Choices;

void require(bool holds, const char* what) {
    if (holds) return;
    std::fputs(what, stderr);
    std::abort();
}

// Texts go to memory that ends with them.
void getTexts(Choices& choices) {
    const std::uint32_t size = choices.below(60), kind = choices.code(4);
    const std::int64_t code = choices.once(2) ? choices.ConsumeIntegral<std::int64_t>()
                                              : (choices.ConsumeBool() ? 0x88000000 : 0) + choices.below(40) - 20;
    const bool given = !choices.once(16);
    const auto text = [&](auto get) {
        const std::unique_ptr<char[]> buffer(new char[size]());
        get(given ? buffer.get() : nullptr);
        return std::string(buffer.get(), size);
    };
    const auto nothing = std::string(size, '\0');
    require(given ||
                text([&](char* buffer) { OrvGetErrorInfo(static_cast<OrvErrorType>(code), buffer, size); }) == nothing,
            "a text of nothing");
    text([&](char* buffer) { OrvGetErrorInfo(static_cast<OrvErrorType>(code), buffer, size); });
    text([&](char* buffer) { ZEB_GetErrorInfo(code, buffer, size); });
    require(text([&](char* buffer) { OrvGetApiInfoString(kind, buffer, size); }) ==
                text([&](char* buffer) { ZEB_GetApiInfoString(kind, buffer, size); }),
            "the faces tell different texts");
}

// Names in memory that ends with their NUL.
void nameImages(Choices& choices) {
    const std::uint32_t width = choices.size(), height = choices.size(), length = choices.code(30);
    OrvImage image{choices.once(16) ? choices.size() : std::uint32_t{sizeof image}, nullptr, {}};
    const std::string text = choices.ConsumeRandomLengthString(80);
    const std::unique_ptr<char[]> name(new char[text.size() + 1]);
    std::memcpy(name.get(), text.c_str(), text.size() + 1);
    const OrvImage before = image;
    const OrvErrorType answer = OrvSetImageInfoFromString(choices.once(32) ? nullptr : name.get(), length, width,
                                                          height, choices.once(32) ? nullptr : &image);
    require(answer == OrvErrorSuccess || std::memcmp(&before, &image, sizeof image) == 0, "an unknown name was taken");
}

void askForFormats(Choices& choices) {
    const std::uint32_t format = fuzz::knownFormat(choices), index = choices.code(150);
    std::uint32_t words[6] = {}, other = 0;
    std::uint8_t flags[2] = {};
    OrvBitsPerPixel(choices.once(16) ? nullptr : &words[0], format);
    OrvBitsPerPixelUsed(choices.once(16) ? nullptr : &words[1], format);
    OrvGetBayerPattern(choices.once(16) ? nullptr : &words[2], format);
    OrvHasBayerPattern(choices.once(16) ? nullptr : &flags[0], format);
    OrvIsColor(choices.once(16) ? nullptr : &flags[1], format);
    OrvGetPixelLayout(&words[3], format);
    OrvGetColorSpace(&words[4], format);
    OrvGetBitsPerPixel(index, &words[5]);
    ZEB_GetBitsPerPixel(index, &other);
    require(words[5] == other && flags[0] <= 1 && flags[1] <= 1, "the faces' formats differ, or a flag is none");

    OrvImage image{sizeof image, nullptr, {}};
    const std::uint32_t width = choices.size(), height = choices.size();
    if (OrvSetImageInfoFromPixelFormat(format, width, height, &image) == OrvErrorSuccess)
        require(image.ImageInfo.PixelInfo.BitsPerPixel == words[0] || words[0] == 0, "two depths of a format");
    OrvSetImageInfoOutput(choices.code(11), width, height, choices.once(16) ? nullptr : &image);
}

void askForNumbers(Choices& choices) {
    std::uint32_t version[2] = {}, lengths[2] = {};
    OrvGetVersion(&version[0]);
    ZEB_GetVersion(&version[1]);
    OrvTechnoInfo records[2];
    OrvGetTechnoInfo(&records[0]);
    ZEB_GetTechnoInfo(&records[1]);
    const auto length = static_cast<std::int32_t>(choices.size());
    const float a = choices.coefficient(), b = choices.coefficient();
    OrvGetResampledScanlineLength(&lengths[0], length, a, b);
    ZEB_GetResampledScanlineLength(&lengths[1], length, a, b);
    require(version[0] == version[1] && lengths[0] == lengths[1] &&
                std::memcmp(&records[0], &records[1], sizeof *records) == 0,
            "the faces tell different numbers");
}

// Objects, destroyed in any order, some twice, some never. Their memory stays until the process ends.
void makeObjects(Choices& choices) {
    static unsigned made = 0;
    if (made > 10000) return;
    std::vector<ColorCorrectionHandle> objects{nullptr, &objects};
    for (std::uint32_t count = choices.below(20); count > 0; --count) {
        float matrix[9];
        for (float& coefficient : matrix) coefficient = choices.coefficient();
        const float* const given = choices.once(16) ? nullptr : matrix;
        ColorCorrectionHandle handle = nullptr;
        ++made;
        switch (choices.below(6)) {
        case 0: OrvCreateColorCorrectionMatrix_Int8(given, &handle); break;
        case 1: OrvCreateColorCorrectionMatrix_Int16(given, &handle); break;
        case 2: ZEB_CreateColorCorrectionMatrix_Int8(given, &handle); break;
        case 3: ZEB_CreateColorCorrectionMatrix_Int16(given, &handle); break;
        case 4: OrvDestroyColorCorrection(objects[choices.below(static_cast<std::uint32_t>(objects.size()))]); break;
        default: ZEB_DestroyColorCorrection(objects[choices.below(static_cast<std::uint32_t>(objects.size()))]); break;
        }
        objects.push_back(handle);
    }
    for (const ColorCorrectionHandle object : objects) OrvDestroyColorCorrection(object);
}

} // namespace

extern "C" int __lsan_is_turned_off() { return 1; } // objects stay

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Choices choices(data, size);
    constexpr void (*calls[])(Choices&) = {nameImages, getTexts, askForFormats, askForNumbers, makeObjects};
    calls[choices.below(std::size(calls))](choices);
    return 0;
}
