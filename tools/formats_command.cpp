#include <cstdio>

#include "commands.h"
#include "offers.h"

namespace tool {

namespace {

void printOutput(const Output& output, const std::string& number) {
    std::string names(output.names[0]);
    for (std::size_t i = 1; i < output.names.size() && !output.names[i].empty(); ++i)
        names.append(", ").append(output.names[i]);
    std::printf("  %2s  %-24s %s\n", number.c_str(), names.c_str(), std::string(output.description).c_str());
}

void printOutputs() {
    std::puts("Outputs (-t), with their other names:");
    for (const Output& output : outputs()) printOutput(output, std::to_string(output.code));
    for (const Output& output : planeOutputs()) printOutput(output, "");
}

std::string marks(const PixelFormat& pixels, const Processing& processing) {
    std::string marks;
    for (const Output& output : outputs()) marks += isOffered({pixels, {}}, output, processing) ? "  x" : "  .";
    return marks;
}

std::string sizeRule(const PixelFormat& pixels, const Processing& processing) {
    for (const Output& output : outputs()) {
        if (isOffered({pixels, {}}, output, processing)) return sizeRule({pixels, {}}, output, processing);
    }
    return isDeepColour(pixels) ? "any size; in two steps, to all but 6" : "not converted";
}

void printRow(const PixelFormat& pixels, const Processing& processing) {
    char code[11] = "-";
    if (pixels.code != 0) std::snprintf(code, sizeof code, "0x%08X", pixels.code);
    std::printf("  %-20s %-10s %s  %s\n", std::string(pixels.name).c_str(), code, marks(pixels, processing).c_str(),
                sizeRule(pixels, processing).c_str());
}

void printFormats() {
    std::puts("\nPixel formats (-f) and what they convert to (x), by the numbers above:");
    std::printf("  %-20s %-10s ", "", "PFNC code");
    for (const Output& output : outputs()) std::printf("%3u", output.code);
    std::puts("  sizes");
    for (const PixelFormat& format : pixelFormats()) printRow(format, {});
    printRow(cygm8(), {});
    std::puts("Cygm8 is two fields of complementary colours: first the odd lines, Gr Mg and Mg Gr in turn, then the\n"
              "even ones, Cy Ye.");
}

void printRow(const DebayerMode& mode) {
    const bool isDefault = mode.code == debayerModes().front().code;
    std::printf("  %-7s %-23s %s  %s\n", std::string(mode.name).c_str(), std::string(mode.description).c_str(),
                marks(*findPixelFormat("BayerRG8"), {mode}).c_str(),
                isDefault ? "every mosaic; the default" : names(offeredSources({mode})).c_str());
}

void printDebayerModes() {
    std::puts("\nDebayer modes (--debayer), what BayerRG8 converts to with them (x), and which formats have them:");
    for (const DebayerMode& mode : debayerModes()) printRow(mode);
}

void printCorrections() {
    std::puts("\nWhat they convert to with colour correction (--matrix):");
    const Processing correction{.matrix = parseMatrix("identity")};
    for (const PixelFormat* const pixels : offeredSources(correction)) printRow(*pixels, correction);
    std::puts("Mosaics in every phase.");
}

} // namespace

void formatsCommand() {
    printOutputs();
    printFormats();
    printDebayerModes();
    printCorrections();
    std::puts(
        "\nUpper and lower case are alike. The prefix 'PixelFormat', PFNC codes (0x01080009), the names of PFNC and\n"
        "GigE Vision (YUV422_8_UYVY, RGB8Packed) and other depths in 16-bit words (BayerRG14) are accepted, too.\n"
        "YUV422 needs an even width.");
}

} // namespace tool
