// Everything that the command-line library sees: options, help, examples. It is slow to compile, so no other file
// includes it.
#include "command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <memory>

#include "commands.h"
#include "errors.h"
#include "frames/names.h"
#include "orvella/version.h"

namespace tool {

namespace {

// Help that shows the usage line given, and of an option no more than its argument.
class Help : public CLI::Formatter {
public:
    explicit Help(std::string usage) : usage_(std::move(usage)) { column_width(32); }

    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override {
        std::string help = CLI::Formatter::make_help(app, std::move(name), mode);
        for (std::size_t at; (at = help.find("\n\n\n")) != std::string::npos;) help.erase(at, 1);
        return help;
    }
    std::string make_usage(const CLI::App*, std::string) const override { return "\n" + usage_ + "\n"; }
    std::string make_option_opts(const CLI::Option* option) const override {
        const std::string& argument = option->get_option_text();
        return argument.empty() ? "" : " " + argument;
    }

private:
    std::string usage_;
};

CLI::App& addCommand(CLI::App& program, const std::string& name, const std::string& does, const std::string& usage) {
    CLI::App& command = *program.add_subcommand(name, does);
    command.formatter(std::make_shared<Help>(usage));
    return command;
}

// An empty value may come from a script's variable that is not set.
std::string requireValue(const std::string& value) { return value.empty() ? "is empty" : ""; }

// An option with a value, which is called `argument` in the help.
template <class T>
CLI::Option* add(CLI::App& command, const std::string& names, T& value, const std::string& argument,
                 const std::string& help) {
    return command.add_option(names, value, help)->check(requireValue)->option_text(argument);
}

// A file's name is UTF-8 here, whatever the system's own are.
std::filesystem::path pathOf(const std::string& name) { return std::u8string(name.begin(), name.end()); }

CLI::Option* add(CLI::App& command, const std::string& names, std::filesystem::path& value, const std::string& help) {
    return command.add_option_function<std::string>(
        names, [&value](const std::string& name) { value = pathOf(name); }, help);
}

CLI::Option* add(CLI::App& command, const std::string& names, std::filesystem::path& value, const std::string& argument,
                 const std::string& help) {
    return add(command, names, value, help)->check(requireValue)->option_text(argument);
}

void addFrameOptions(CLI::App& command, FrameOptions& frame, bool required) {
    const std::string samples = "16-bit samples";
    add(command, "-f,--format,--from", frame.format, "NAME",
        "Pixel format, like BayerRG8 ('orvella formats' lists them)")
        ->required(required);
    add(command, "-s,--size", frame.size, "WxH", "Width and height in pixels, like 2448x2048")->required(required);
    add(command, "--bits-used", frame.bitsUsed, "N", "Significant bits of a sample, if not the format's own")
        ->check(CLI::Range(1, 16))
        ->group(samples);
    command.add_flag("--msb-aligned", frame.msbAligned, "The significant bits are the high ones, not the low ones")
        ->group(samples);
    command.add_flag("--big-endian", frame.bigEndian, "The high byte comes first")->group(samples);
}

// ---- convert

constexpr auto convertExamples =
    "What the options leave open is taken from the file: from its name, if that is like x_BayerRG12p_2448x2048.raw,\n"
    "or from the header of a PGM, PPM, PAM, TIFF, PNG or .npy file, whose grey pixels may be a mosaic (-f BayerRG8).\n"
    "Pages of a TIFF file are frames. A directory stands for all its files but PNGs. 'orvella guess' proposes formats\n"
    "and sizes for a file that says nothing.\n"
    "\n"
    "File types: png, tif and tiff hold every output but YUV422; pgm holds grey, ppm RGB, pnm both; raw holds\n"
    "the plain bytes of any output, 16-bit samples little-endian; y4m is video of any number of frames, as raw on\n"
    "standard output. Standard output and directories get png.\n"
    "\n"
    "Planes are several files: '-t planes frame.raw frame.png' writes frame.r.png, frame.g.png and frame.b.png,\n"
    "'-t planes-y' frame.y.png, too. All of them are written, or none. Several frames of a file are numbered:\n"
    "frame-0001.png.\n"
    "\n"
    "Without -t, colour and mosaic sources become RGB24 (deep mosaics with --matrix: BGR48; Rgb12, Rgb16:\n"
    "RGB48), 8-bit grey ones Mono8, deeper grey ones Mono16.\n"
    "\n"
    "Examples:\n"
    "  orvella convert -f BayerRG8 -s 2448x2048 frame.raw frame.png\n"
    "      A mosaic becomes a colour picture.\n"
    "  orvella convert --auto flower_BayerGR12p_768x512.raw frame.png\n"
    "      As linear samples come out dark and green: black level, white balance, brightness and gamma by themselves.\n"
    "  orvella convert -f BayerGR16 --bits-used 14 -s 768x512 --black 600 --white-balance 2,1,1.5 --gamma srgb f.raw "
    "f.png\n"
    "      The same by hand, of 14-bit samples in the low bits of 16-bit words.\n"
    "  orvella convert -f Mono12p -s 640x480 -t Mono8 frame.raw frame.tif\n"
    "      Packed 12-bit grey, shown with 8 bits.\n"
    "  orvella convert -f BayerRG8 -s 2448x2048 --debayer lcaav --matrix 1.6,-.4,-.2,-.3,1.5,-.2,0,-.6,1.6 frame.raw "
    "frame.png\n"
    "      A mosaic whose fine lines would show false colours, with the sensor's colours corrected.\n"
    "  orvella convert -f Mono8 -s 768x576 --deinterlace --flip 180 frame.raw frame.png\n"
    "      Two fields of a camera that hangs upside down.\n"
    "  orvella grab -f BayerRG8 -s 640x480 -n 250 - | orvella convert -f BayerRG8 -s 640x480 --frame all --type y4m -j "
    "2 - - | ffmpeg -i - "
    "-pix_fmt yuv420p video.mp4\n"
    "      A camera's frames become a video.\n"
    "  orvella convert -f BayerRG8 -s 640x480 -j 4 recording/ --output-directory pictures --type png\n"
    "      Every frame of a directory.";

void addInputOptions(CLI::App& command, ConvertOptions& options) {
    const std::string files = "Files with more than a frame";
    const CLI::Range bytes(std::uint64_t{0}, std::uint64_t{1} << 40);
    add(command, "--skip", options.skip, "BYTES", "What stands before the first frame")->check(bytes)->group(files);
    add(command, "--stride", options.stride, "BYTES", "From row to row, if rows are padded")
        ->check(bytes)
        ->group(files);
    add(command, "--frame", options.frames, "N|A-B|all", "Which frames of a file that holds several, from 1")
        ->group(files);
}

void addAdjustments(CLI::App& command, AdjustmentOptions& adjustments) {
    const std::string looks =
        "Looks (in this order, on linear samples of 16 bits; the matrix comes after white balance)";
    add(command, "--black", adjustments.black, "N|auto", "The sample's value that is dark")->group(looks);
    add(command, "--white-balance", adjustments.whiteBalance, "R,G,B|auto", "Factors of the colours")->group(looks);
    add(command, "--exposure", adjustments.exposure, "F", "A factor of all")
        ->check(CLI::Range(0.f, 1e6f))
        ->group(looks);
    add(command, "--stretch", adjustments.stretch, "LOW,HIGH",
        "Percentages of the samples that may become black and white, like 0.5,99.5")
        ->group(looks);
    add(command, "--gamma", adjustments.gamma, "G|srgb", "The curve of the display, like 2.2")->group(looks);
    command
        .add_flag("--auto", adjustments.automatic,
                  "--black auto --white-balance auto --stretch 0,99.5 --gamma srgb; of RGB and YUV, --stretch alone")
        ->group(looks);
}

void addConvert(CLI::App& program) {
    CLI::App& command =
        addCommand(program, "convert", "Turn raw frames into pictures",
                   "Usage: orvella convert [-f NAME] [-s WxH] [OPTIONS] INPUT OUTPUT\n"
                   "       orvella convert [-f NAME] [-s WxH] [OPTIONS] INPUT... --output-directory DIRECTORY");
    const auto options = std::make_shared<ConvertOptions>();
    command.footer(convertExamples);
    addFrameOptions(command, options->frame, false);
    add(command, "-t,--to", options->output, "NAME", "Output, like RGB24 or Mono8 ('orvella formats' lists them)");
    add(command, "--debayer", options->debayer, "MODE",
        "How a mosaic becomes colour: 2x2 (default), 3x3, lcaa, lcaav, yuv422");
    add(command, "--matrix", options->matrix, "M0,...,M8",
        "Colour correction: nine numbers, R' G' B' from R G B, or identity, swap-red-blue, grey");
    add(command, "--flip", options->flip, "HOW",
        "Mirror or turn the picture: h left to right, v upside down, 180 both; 90 clockwise, 270");
    command.add_flag("--half", options->half, "A preview of half the width and height: means of 2x2 pixels");
    command.add_flag("--deinterlace", options->deinterlace,
                     "The frame is two fields, first its odd lines, then its even ones: weave them");
    CLI::Option* const type = add(command, "--type", options->type, "TYPE",
                                  "File type, if the name of the output does not say it by its ending");
    command.add_flag("--raw", options->raw, "Write plain bytes, like --type raw")->excludes(type);
    add(command, "--compression", options->encoding.compression, "N",
        "Of PNG (1 by default) and TIFF (0): 0 none, 1 quick to 9 small")
        ->check(CLI::Range(0, 9));
    add(command, "--fps", options->encoding.framesPerSecond, "N", "Frames a second of Y4M, by default 25")
        ->check(CLI::Range(1, 10000));
    add(command, "-j,--jobs", options->jobs, "N", "How many frames to convert at once, by default 1")
        ->check(CLI::Range(1, 1024));
    addInputOptions(command, *options);
    addAdjustments(command, options->adjustments);
    add(command, "--output-directory", options->directory, "DIRECTORY",
        "Where any number of inputs go; made if it is missing");
    const auto addFiles = [options](const std::vector<std::string>& names) {
        std::ranges::transform(names, std::back_inserter(options->files), pathOf);
    };
    command
        .add_option_function<std::vector<std::string>>("FILES", addFiles,
                                                       "Raw frames and the picture; - is standard input or output")
        ->required();
    command.callback([options] { convertCommand(*options); });
}

void addGuess(CLI::App& program) {
    CLI::App& command = addCommand(program, "guess", "Propose formats and sizes for a dump that says nothing",
                                   "Usage: orvella guess [OPTIONS] FILE");
    const auto options = std::make_shared<GuessOptions>();
    command.footer("The best guess comes first. Nothing in a dump tells red from blue: both are named.\n"
                   "\n"
                   "Example:\n"
                   "  orvella guess --sheet candidates.png dump.bin");
    add(command, "--sheet", options->sheet, "PICTURE", "Show them, side by side, numbered as in the list");
    add(command, "--skip", options->skip, "BYTES", "What stands before the frame");
    add(command, "-n,--count", options->count, "N", "How many, by default 6")->check(CLI::Range(1, 99));
    add(command, "FILE", options->file, "The dump, of one frame or several; - is standard input")->required();
    command.callback([options] { guessCommand(*options); });
}

// ---- Frames that are made or taken

void addChart(CLI::App& program) {
    CLI::App& command = addCommand(program, "chart", "Make a raw test frame: a colour chart in any pixel format",
                                   "Usage: orvella chart -f NAME -s WxH [OPTIONS] OUTPUT");
    const auto options = std::make_shared<ChartOptions>();
    command.footer(
        "The chart has patches of plain colours, a grey ramp, 16 steps of grey, and fine lines. Grey formats\n"
        "show its luma, 0.299 R + 0.587 G + 0.114 B.\n"
        "\n"
        "Examples:\n"
        "  orvella chart -f BayerRG12p -s 640x480 frame.raw\n"
        "  orvella chart -f Mono16 --bits-used 14 --big-endian -s 640x480 frame.raw --truth truth.png\n"
        "  orvella chart -f BayerGB8 -s 640x480 - | orvella convert -f BayerGB8 -s 640x480 - chart.png");
    addFrameOptions(command, options->frame, true);
    add(command, "--truth", options->truth, "PICTURE",
        "Write the chart itself, too: the picture that a perfect conversion makes");
    add(command, "OUTPUT", options->output, "The raw frame; - is standard output")->required();
    command.callback([options] { chartCommand(*options); });
}

void addGrab(CLI::App& program) {
    CLI::App& command = addCommand(program, "grab", "Take frames from a camera, real or simulated",
                                   "Usage: orvella grab [OPTIONS] OUTPUT");
    const auto options = std::make_shared<GrabOptions>();
    command.footer(
        "Writes raw frames if OUTPUT is a directory or - or ends with .raw, else pictures, and says what they are.\n"
        "In a directory they are named after the camera, the pixel format and the size. Several frames are\n"
        "numbered: frame-0001.png, and of raw frames the name says the format, too. On standard output they\n"
        "follow each other.\n"
        "\n"
        "Examples:\n"
        "  orvella grab -f BayerRG8 -s 640x480 frame.raw\n"
        "  orvella grab -n 20 --set ExposureTimeAbs=5000 --set GainRaw=3 frames/\n"
        "  orvella grab -f BayerRG8 -n 10 frame.png");
    add(command, "-c,--camera", options->camera, "NAME",
        "A name that 'orvella cameras' shows; otherwise the first camera that is not simulated, if any");
    add(command, "-f,--format", options->format, "NAME", "Pixel format, like BayerRG8; otherwise the camera's choice");
    add(command, "-s,--size", options->size, "WxH", "Width and height, like 640x480; otherwise the camera's choice");
    add(command, "--set", options->features, "FEATURE=VALUE", "Set a feature of the camera; may be repeated")
        ->allow_extra_args(false);
    add(command, "-n,--frames", options->frames, "N", "How many frames, by default 1")->check(CLI::Range(1, 1000000));
    add(command, "OUTPUT", options->output, "The raw frame, the picture or the directory; - is standard output")
        ->required();
    command.callback([options] { grabCommand(*options); });
}

// ---- Listings

void addListings(CLI::App& program) {
    addCommand(program, "cameras", "List the cameras that can be reached", "Usage: orvella cameras")
        .callback(camerasCommand);
    CLI::App& formats =
        addCommand(program, "formats", "List pixel formats, outputs and conversions", "Usage: orvella formats");
    formats.footer("The library itself is asked about every pair, by converting a tiny frame.");
    formats.callback(formatsCommand);
    addCommand(program, "info", "Show versions and what this build can do", "Usage: orvella info")
        .callback(infoCommand);
}

// The parser would only say that a command is missing.
void requireCommand(const CLI::App& program, const std::string& first) {
    std::vector<std::string> names;
    for (const CLI::App* command : program.get_subcommands({})) names.push_back(command->get_name());
    const bool option = first.starts_with('-');
    if (first.empty() || first == "-h" || first == "--help" || first == "--version") return;
    if (std::ranges::count(names, first) > 0) return;
    if (option || first.find('.') != std::string::npos || first.find('/') != std::string::npos) {
        throw UsageError("'" + first + "' is no command; did you mean 'orvella convert " + first +
                         " ...'? 'orvella --help' lists the commands");
    }
    const std::vector<std::string_view> known(names.begin(), names.end());
    throw UsageError("unknown command '" + first + "'; " + suggestion(first, known) + "'orvella --help' lists them");
}

} // namespace

int runCommandLine(std::vector<std::string> arguments) {
    CLI::App program("Turns the raw frames of industrial cameras into pictures.", "orvella");
    program.formatter(std::make_shared<Help>("Usage: orvella COMMAND [OPTIONS] ..."));
    program.set_version_flag("--version", "orvella " ORVELLA_VERSION_STRING, "Print the version and exit");
    program.require_subcommand(1);
    program.allow_windows_style_options(false); // /x is a file, here as elsewhere
    addConvert(program);
    addGuess(program);
    addChart(program);
    addGrab(program);
    addListings(program);
    program.footer("A first picture, without a camera:\n"
                   "  orvella chart   -f BayerRG8 -s 640x480 frame.raw\n"
                   "  orvella convert -f BayerRG8 -s 640x480 frame.raw frame.png\n"
                   "\n"
                   "'orvella COMMAND --help' explains a command and shows examples.\n"
                   "Exit code: 0 done, 1 failed, 2 the command line makes no sense.");

    if (arguments.size() == 1 && (arguments[0] == "help" || arguments[0] == "version"))
        arguments[0] = "--" + arguments[0];
    requireCommand(program, arguments.empty() ? "" : arguments[0]);
    std::ranges::reverse(arguments); // as the parser wants them
    try {
        program.parse(arguments);
    } catch (const CLI::ParseError& result) {
        if (result.get_exit_code() == 0) return program.exit(result); // --help, --version
        throw UsageError(std::string(result.what()) + " (--help explains)");
    }
    return 0;
}

} // namespace tool
