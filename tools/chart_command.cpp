#include <memory>

#include "commands.h"
#include "frame_options.h"
#include "help.h"
#include "pack.h"
#include "picture.h"

namespace tool {

namespace {

struct ChartOptions {
    FrameOptions frame;
    std::filesystem::path output, truth;
};

void run(const ChartOptions& options) {
    const FrameFormat frame = options.frame.frame();
    const Chart chart = makeChart(frame.size);
    Bytes packed = pack(chart, frame);
    if (!options.truth.empty()) {
        const FileType type = fileTypeOf(options.truth);
        Image truth = truthFor(frame, chart);
        requireHolds(type, truth.output);
        writeFile(options.truth, encode(std::move(truth), type));
    }
    writeFile(options.output, std::move(packed));
}

} // namespace

void addChartCommand(CLI::App& program) {
    CLI::App& command = *program.add_subcommand("chart", "Make a raw test frame: a colour chart in any pixel format");
    const auto options = std::make_shared<ChartOptions>();
    setUsage(command, "Usage: orvella chart -f NAME -s WxH [OPTIONS] OUTPUT");
    command.footer(
        "The chart has patches of plain colours, a grey ramp, 16 steps of grey, and fine lines. Grey formats\n"
        "show its luma, 0.299 R + 0.587 G + 0.114 B.\n"
        "\n"
        "Examples:\n"
        "  orvella chart -f BayerRG12p -s 640x480 frame.raw\n"
        "  orvella chart -f Mono16 --bits-used 14 --big-endian -s 640x480 frame.raw --truth truth.png\n"
        "  orvella chart -f BayerGB8 -s 640x480 - | orvella convert -f BayerGB8 -s 640x480 - chart.png");
    options->frame.addTo(command);
    command
        .add_option("--truth", options->truth,
                    "Write the chart itself, too: the picture that a perfect conversion makes")
        ->option_text("PICTURE");
    command.add_option("OUTPUT", options->output, "The raw frame; - is standard output")->required();
    command.callback([options] { run(*options); });
}

} // namespace tool
