#include <cstdio>

#include "commands.h"
#include "conversion.h"
#include "help.h"

namespace tool {

namespace {

void printOutputs() {
    std::puts("Outputs (-t), with their other names:");
    for (const Output& output : outputs()) {
        std::string names(output.names[0]);
        for (std::size_t i = 1; i < output.names.size() && !output.names[i].empty(); ++i)
            names.append(", ").append(output.names[i]);
        std::printf("  %2u  %-24s %s\n", output.code, names.c_str(), std::string(output.description).c_str());
    }
}

void printRow(const PixelFormat& pixels) {
    const FrameFormat frame{pixels, {4, 4}};
    std::string marks, rule;
    for (const Output& output : outputs()) {
        const bool offered = isOffered(frame, output);
        marks += offered ? "  x" : "  .";
        if (offered && rule.empty()) rule = sizeRule(frame, output);
    }
    std::printf("  %-20s 0x%08X %s  %s\n", std::string(pixels.name).c_str(), pixels.code, marks.c_str(),
                rule.empty() ? "not converted" : rule.c_str());
}

void run() {
    printOutputs();
    std::puts("\nPixel formats (-f) and what they convert to (x), by the numbers above:");
    std::printf("  %-20s %-10s ", "", "PFNC code");
    for (const Output& output : outputs()) std::printf("%3u", output.code);
    std::puts("  sizes");
    for (const PixelFormat& format : pixelFormats()) printRow(format);
    std::puts("\nUpper and lower case are alike. A prefix 'PixelFormat' is accepted. YUV422 needs an even width.");
}

} // namespace

void addFormatsCommand(CLI::App& program) {
    CLI::App& command = *program.add_subcommand("formats", "List pixel formats, outputs and conversions");
    command.footer("The library itself is asked about every pair, by converting a tiny frame.");
    setUsage(command, "Usage: orvella formats");
    command.callback(run);
}

} // namespace tool
