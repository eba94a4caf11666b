// Error texts, version and library information of both faces.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "orvella/orv.h"
#include "orvella/zeb.h"

namespace {

constexpr char untouched = '#';
constexpr const char* notFound = "return code not found";

std::string current(std::int64_t code) {
    std::array<char, 200> buffer{};
    EXPECT_EQ(OrvGetErrorInfo(static_cast<OrvErrorType>(code), buffer.data(), buffer.size()), OrvErrorSuccess);
    return buffer.data();
}

std::string legacy(std::int64_t code) {
    std::array<char, 200> buffer{};
    EXPECT_EQ(ZEB_GetErrorInfo(code, buffer.data(), buffer.size()), 0u);
    return buffer.data();
}

// All known codes of a range with their texts, one per line, to the number of rows and an FNV-1a sum of the letters.
struct Texts {
    unsigned rows = 0;
    std::uint64_t sum = 0xCBF29CE484222325;

    void add(std::string (*textOf)(std::int64_t), std::int64_t first, std::int64_t last) {
        for (std::int64_t code = first; code <= last; ++code) {
            const std::string text = textOf(code);
            if (text == notFound) continue;
            ++rows;
            for (const char c : std::to_string(code) + " " + text + "\n")
                sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001B3;
        }
    }
};

// The texts are a promise: who changes a letter changes the sum knowingly.
TEST(ErrorTexts, OfTheCurrentFaceAreLetterForLetter) {
    Texts texts;
    for (std::int64_t code = 300; code >= -300; --code) texts.add(current, code, code);
    EXPECT_EQ(texts.rows, 19u);
    EXPECT_EQ(texts.sum, 0xC2E1BB555361E31C);
    EXPECT_EQ(current(0), "No error");
    EXPECT_EQ(current(-7), "One of the parameters was invalid (usually an illegal pointer)");
    EXPECT_EQ(current(-18), "API feature is not supported");
}

TEST(ErrorTexts, OfTheLegacyFaceAreLetterForLetter) {
    Texts texts;
    texts.add(legacy, -100, 1000);
    texts.add(legacy, 0x88000000 - 100, 0x88000000 + 5000);
    texts.add(legacy, 0x8A000000 - 100, 0x8A000000 + 5000);
    texts.add(legacy, 0xCCCCCCCC - 100, 0xCCCCCCCC + 100);
    EXPECT_EQ(texts.rows, 79u);
    EXPECT_EQ(texts.sum, 0xD11B197B28F70F3D);
    EXPECT_EQ(legacy(0x88000011), "KEL camera not found");
    EXPECT_EQ(legacy(0x8A0003FE), "A pararmeter had to be adjusted");
    EXPECT_EQ(legacy(0xCCCCCCCC), "No description for this error available");
}

TEST(ErrorTexts, LegacyWordsAreUnsigned) {
    EXPECT_EQ(legacy(static_cast<std::int32_t>(0x88000011)), notFound);
    EXPECT_EQ(legacy(0x188000011), notFound);
}

// What a call wrote into a buffer of '#', up to the last byte it changed; NULs as '0'.
std::string written(const std::function<void(char*)>& call) {
    std::string buffer(100, untouched);
    call(buffer.data());
    buffer.erase(buffer.find_last_not_of(untouched) + 1);
    std::ranges::replace(buffer, '\0', '0');
    return buffer;
}

TEST(ErrorTexts, AreCutWithoutTerminator) {
    struct Row {
        OrvErrorType code;
        std::uint32_t size;
        const char* written;
        OrvErrorType expected;
    };
    for (const Row& row : std::vector<Row>{{-13, 100, "Other error0", OrvErrorSuccess},
                                           {-13, 12, "Other error0", OrvErrorSuccess},
                                           {-13, 11, "Other error", OrvErrorMoreData},
                                           {-13, 1, "O", OrvErrorMoreData},
                                           {-7, 10, "One of the", OrvErrorMoreData},
                                           {5, 100, "return code not found0", OrvErrorSuccess},
                                           {5, 22, "return code not found0", OrvErrorSuccess},
                                           {5, 21, "return code not found", OrvErrorSuccess},
                                           {5, 8, "return c", OrvErrorSuccess}}) {
        SCOPED_TRACE(std::to_string(row.code) + " into " + std::to_string(row.size));
        const auto call = [&](char* b) { EXPECT_EQ(OrvGetErrorInfo(row.code, b, row.size), row.expected); };
        EXPECT_EQ(written(call), row.written);
    }
    // The legacy face never tells.
    EXPECT_EQ(written([](char* b) { EXPECT_EQ(ZEB_GetErrorInfo(0x88000017, b, 7), 0u); }), "The cam");
    EXPECT_EQ(written([](char* b) { EXPECT_EQ(ZEB_GetErrorInfo(0x88000017, b, 19), 0u); }), "The camera is busy0");
    EXPECT_EQ(written([](char* b) { EXPECT_EQ(ZEB_GetErrorInfo(0x88000020, b, 3), 0u); }), "ret");
}

TEST(ErrorTexts, RefuseNoBuffer) {
    char byte = untouched;
    EXPECT_EQ(OrvGetErrorInfo(0, nullptr, 10), OrvErrorBadParameter);
    EXPECT_EQ(OrvGetErrorInfo(0, &byte, 0), OrvErrorBadParameter);
    EXPECT_EQ(ZEB_GetErrorInfo(0, nullptr, 0), 0x88000003);
    EXPECT_EQ(ZEB_GetErrorInfo(0, &byte, 0), 0x88000004);
    EXPECT_EQ(byte, untouched);
}

TEST(Information, VersionIsFourBytesInAWord) {
    std::uint32_t version = 0, legacyVersion = 1;
    EXPECT_EQ(OrvGetVersion(&version), OrvErrorSuccess);
    EXPECT_EQ(ZEB_GetVersion(&legacyVersion), 0u);
    EXPECT_EQ(version, legacyVersion);
    const std::string text = std::to_string(version >> 24) + "." + std::to_string(version >> 16 & 0xFF) + "." +
                             std::to_string(version >> 8 & 0xFF) + "." + std::to_string(version & 0xFF);
    EXPECT_EQ(text, ORVELLA_VERSION_STRING);
    EXPECT_EQ(OrvGetVersion(nullptr), OrvErrorBadParameter);
    EXPECT_EQ(ZEB_GetVersion(nullptr), 0x88000002);
}

TEST(Information, ApiInfoIsCutWithTerminator) {
    struct Row {
        std::uint32_t type, size;
        const char* written;
    };
    for (const Row& row : std::vector<Row>{{0, 100, "Release X860"},
                                           {0, 12, "Release X860"},
                                           {0, 11, "Release X80"},
                                           {0, 4, "Rel0"},
                                           {0, 1, "0"},
                                           {0, 0, ""},
                                           {1, 100, "X860"},
                                           {2, 100, "Release0"},
                                           {3, 100, "0"},
                                           {0xFFFFFFFF, 1, "0"}}) {
        SCOPED_TRACE(std::to_string(row.type) + " into " + std::to_string(row.size));
        EXPECT_EQ(written([&](char* b) { EXPECT_EQ(OrvGetApiInfoString(row.type, b, row.size), OrvErrorSuccess); }),
                  row.written);
        EXPECT_EQ(written([&](char* b) { EXPECT_EQ(ZEB_GetApiInfoString(row.type, b, row.size), 0u); }), row.written);
    }
    EXPECT_EQ(OrvGetApiInfoString(0, nullptr, 0), OrvErrorBadParameter);
    EXPECT_EQ(ZEB_GetApiInfoString(0, nullptr, 0), 0x88000002);
}

TEST(Information, NoCapabilityIsFound) {
    const std::array<std::uint8_t, 14> expected{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}; // 12 bytes, not more
    std::array<std::uint8_t, 14> bytes;
    bytes.fill(1);
    EXPECT_EQ(OrvGetTechnoInfo(reinterpret_cast<OrvTechnoInfo*>(&bytes[1])), OrvErrorSuccess);
    EXPECT_EQ(bytes, expected);
    bytes.fill(1);
    EXPECT_EQ(ZEB_GetTechnoInfo(reinterpret_cast<OrvTechnoInfo*>(&bytes[1])), 0u);
    EXPECT_EQ(bytes, expected);
    EXPECT_EQ(static_cast<std::uint32_t>(OrvGetTechnoInfo(nullptr)), 0x88000002); // the word itself
    EXPECT_EQ(ZEB_GetTechnoInfo(nullptr), 0x88000002);
}

} // namespace
