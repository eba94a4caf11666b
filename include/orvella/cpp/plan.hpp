// A conversion that has passed all checks, and its work on any band of lines.
//
// The library converts dense images as a whole. A plan calls it on as much as it can take at once:
//
//     direct     dense to dense: the caller's memory on both sides. A mosaic's pixel needs lines of its neighbours, so the
//                lines next to an inner edge of a band are made in scratch memory from a window of lines around the edge
//     by line    runs of pixels from or to lines with padding: a call for each line
//     gathered   everything else: strips that fit a cache, copied to dense scratch memory and from it
//     stream     LCAA, LCAAV, YUV422: one call, from a copy of the frame, which the library overwrites
//
// Edges of bands and strips are multiples of eight lines (the last band takes what is left): there bit-packed lines begin
// on whole bytes and mosaics on their first phase.
#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>

#include "orvella/cpp/formats.hpp"
#include "orvella/cpp/frame.hpp"
#include "orvella/cpp/lines.hpp"
#include "orvella/cpp/result.hpp"

namespace orvella::detail {

class Plan {
public:
    static constexpr std::int64_t unit = 8; // lines

    static Result make(const Frame& frame, Picture& picture, const Options& options, Plan& plan) {
        if (Result refusal = detail::place(frame, plan.source_); !refusal) return refusal;
        if (Result refusal = picture.place(plan.target_); !refusal) return refusal;
        const FormatInfo& info = infoOf(frame.format());
        if (Result refusal = checkOptions(info, picture.output(), options); !refusal) return refusal;
        if (Result refusal = checkSizes(info, frame.size(), picture, options); !refusal) return refusal;
        if (plan.overlap())
            return Result::refused(OrvErrorBadParameter, "the picture's memory overlaps that of the frame");
        plan.choose(info, frame, picture, options);
        return {};
    }

    bool isStream() const { return rule_ == Rule::Stream; }

    // Bands worth a thread each, and where they begin.
    std::size_t bands() const {
        const std::uint64_t megabytes =
            times(static_cast<std::uint64_t>(height_), source_.length + target_.length) >> 20;
        const auto units = static_cast<std::uint64_t>(std::max<std::int64_t>(height_ / unit, 1));
        return static_cast<std::size_t>(std::clamp<std::uint64_t>(megabytes, 1, std::min<std::uint64_t>(units, 32)));
    }
    std::int64_t edge(std::size_t band, std::size_t count) const {
        if (band == count) return height_;
        return height_ / unit * static_cast<std::int64_t>(band) / static_cast<std::int64_t>(count) * unit;
    }

    // Bytes of scratch memory that a band needs.
    std::uint64_t scratch() const { return plus(sourceScratch(), targetScratch()); }

    OrvErrorType convert(std::int64_t from, std::int64_t to, std::byte* scratch) const {
        if (isStream()) return stream(scratch);
        OrvErrorType result = OrvErrorSuccess;
        const std::int64_t step = stripLines();
        for (std::int64_t y = from; y < to && result == OrvErrorSuccess;) {
            const std::int64_t end = to - y >= 2 * step ? y + step : to;
            result = way_ == Way::Direct   ? direct(y, end, scratch)
                     : way_ == Way::ByLine ? byLine(y, end)
                                           : gathered(y, end, scratch);
            if (swapsChannels_) swapChannels(y, end);
            y = end;
        }
        return result;
    }

private:
    enum class Rule { Run, Mosaic2x2, Mosaic3x3, Stream };
    enum class Way { Direct, ByLine, Gathered };

    static int length(std::string_view text) { return static_cast<int>(text.size()); }

    static Result checkOptions(const FormatInfo& info, Output output, const Options& options) {
        if (options.debayer > Debayer::YUV422 || options.alignment > Alignment::Low ||
            options.byteOrder > ByteOrder::Big)
            return Result::refused(OrvErrorBadParameter, "an unknown demosaic method, alignment or byte order");
        const bool tellsWords =
            options.bitsUsed || options.alignment != Alignment::Low || options.byteOrder != ByteOrder::Little;
        if (tellsWords && !info.hasWords())
            return Result::refused(OrvErrorBadParameter,
                                   "bits used, alignment and byte order are for samples in 16-bit words, %.*s has none",
                                   length(info.name), info.name.data());
        const unsigned used = options.bitsUsed.value_or(info.bitsUsed);
        const unsigned shift = options.alignment == Alignment::Low ? 16 - used : 0;
        if (info.hasWords() && (used < 1 || used > 16 || shift == 5 || shift > 6))
            return Result::refused(
                OrvErrorBadParameter,
                "%u bits used: 10, 12 to 16 are known in the low bits of a word, 1 to 16 in the high", used);
        if (info.isMosaic() && options.matrix && options.debayer != Debayer::Mode2x2)
            return Result::refused(OrvErrorNotImplemented,
                                   "mosaics are corrected by a matrix with the method 2x2 only");
        if (contains(outputsOf(info, options), output)) return {};
        return notOffered(info, output, options);
    }

    static Result notOffered(const FormatInfo& info, Output output, const Options& options) {
        char list[160] = "";
        std::size_t used = 0;
        for (unsigned other = 0; other <= OrvOutputRgb48; ++other) {
            if (!contains(outputsOf(info, options), Output{other})) continue;
            const std::string_view name = nameOf(Output{other});
            used += static_cast<std::size_t>(std::snprintf(list + used, sizeof list - used, "%s%.*s",
                                                           used > 0 ? ", " : "", length(name), name.data()));
        }
        const std::string_view method = info.isMosaic() ? nameOf(options.debayer) : "";
        return Result::refused(OrvErrorNotImplemented, "%.*s%s%.*s%s does not become %.*s: %s%s", length(info.name),
                               info.name.data(), info.isMosaic() ? " by " : "", length(method), method.data(),
                               options.matrix ? " and a matrix" : "", length(nameOf(output)), nameOf(output).data(),
                               "it becomes ", used > 0 ? list : "nothing");
    }

    static Result checkSizes(const FormatInfo& info, Size size, const Picture& picture, const Options& options) {
        const auto refused = [&](const char* rule) {
            return Result::refused(OrvErrorBadParameter, "%.*s of %lldx%lld to %.*s: %s", length(info.name),
                                   info.name.data(), static_cast<long long>(size.width),
                                   static_cast<long long>(size.height), length(nameOf(picture.output())),
                                   nameOf(picture.output()).data(), rule);
        };
        const bool isEven = size.width % 2 == 0 && size.height % 2 == 0;
        if (picture.size() != size) return refused("the picture is of another size");
        if (info.isMosaic() && !options.matrix && !isEven) return refused("a mosaic needs an even width and height");
        if (info.isMosaic() && (size.width < 2 || size.height < 2))
            return refused("a mosaic needs two lines and columns");
        if (info.isMosaic() && options.debayer == Debayer::Mode3x3 && (size.width < 4 || size.height < 4))
            return refused("the method 3x3 needs four lines and columns");
        if (picture.output() == Output::Yuv422 && size.width % 2 != 0) return refused("the width must be even");
        if (info.layout == OrvPixelLayoutYuv411 && size.width % 4 != 0)
            return refused("the width must be a multiple of 4");
        if (info.layout == OrvPixelLayoutYuv422 && size.width % 2 != 0) return refused("the width must be even");
        const bool hasPairs = info.bits() == 12 && info.group() == 2;
        if (hasPairs && size.width % 2 != 0 && size.height % 2 != 0)
            return refused("the number of pixels must be even");
        if (options.matrix && size.width > 0x3FFFFFFF) return refused("lines are too long for a matrix");
        return {};
    }

    bool overlap() const {
        const std::less<const std::byte*> isBefore;
        return isBefore(source_.begin, target_.end) && isBefore(target_.begin, source_.end);
    }

    void choose(const FormatInfo& info, const Frame& frame, const Picture& picture, const Options& options) {
        info_ = &info;
        width_ = frame.size().width;
        height_ = frame.size().height;
        phase_ = info.isMosaic() ? phaseOf(info.bayer) : 0;
        isMirrored_ = frame.isMirrored();
        if (!contains(directOutputs(info, options), picture.output()))
            sampleBytes_ = takesTopBits(info.format, picture.output(), options) ? 1 : 2;
        isOverwritable_ = frame.isOverwritable() && source_.areDense && !isMirrored_ && sampleBytes_ == 0;
        hasMatrix_ = options.matrix.has_value();
        swapsChannels_ = picture.output() == Output::Rgb48;
        hasFourth_ = bitsPerPixel(picture.output()) == 32;
        if (hasFourth_) alpha_ = options.alpha;
        describe(picture, options);

        rule_ = !info.isMosaic()                      ? Rule::Run
                : options.debayer == Debayer::Mode2x2 ? Rule::Mosaic2x2
                : options.debayer == Debayer::Mode3x3 ? Rule::Mosaic3x3
                                                      : Rule::Stream;
        // Little-endian words of 16 bits become colour with the byte behind each, the next pixel's.
        const std::uint32_t output = static_cast<std::uint32_t>(picture.output());
        readsBeyond_ = info.layout == OrvPixelLayoutMono && info.bits() == 16 &&
                       from_.ImageInfo.PixelInfo.BitsUsed == 16 && options.byteOrder == ByteOrder::Little &&
                       output >= OrvOutputBgr24 && output <= OrvOutputRgba32;
        const bool hasWholeLines = static_cast<std::uint64_t>(width_) * info.bits() % 8 == 0;
        way_ = sampleBytes_ > 0                                                       ? Way::Gathered
               : source_.areDense && target_.areDense && !isMirrored_                 ? Way::Direct
               : rule_ == Rule::Run && hasWholeLines && !isMirrored_ && !readsBeyond_ ? Way::ByLine
                                                                                      : Way::Gathered;
    }

    // The library's records, but for the size and the data of each call.
    void describe(const Picture& picture, const Options& options) {
        from_.Size = to_.Size = sizeof(OrvImage);
        const std::uint32_t output =
            swapsChannels_ ? std::uint32_t{OrvOutputBgr48} : static_cast<std::uint32_t>(picture.output());
        OrvSetImageInfoFromPixelFormat(static_cast<std::uint32_t>(info_->format), 1, 1, &from_);
        OrvSetImageInfoOutput(output, 1, 1, &to_);
        if (info_->hasWords()) {
            from_.ImageInfo.PixelInfo.BitsUsed = options.bitsUsed.value_or(info_->bitsUsed);
            from_.ImageInfo.PixelInfo.Alignment = static_cast<std::uint32_t>(options.alignment);
            from_.ImageInfo.PixelInfo.Endianness = static_cast<std::uint32_t>(options.byteOrder);
        }
        if (sampleBytes_ > 0) {
            // The samples without their mosaic become Mono8 or Mono16 first.
            samples_ = from_;
            OrvPixelInfo& pixel = samples_.ImageInfo.PixelInfo;
            pixel.BayerPattern = OrvBayerPatternNone;
            pixel.PixelLayout = info_->layout == OrvPixelLayoutRaw         ? OrvPixelLayoutMono
                                : info_->layout == OrvPixelLayoutRawPacked ? OrvPixelLayoutMonoPacked
                                                                           : OrvPixelLayoutMonoP;
            OrvSetImageInfoFromPixelFormat(static_cast<std::uint32_t>(mosaicOf(8 * sampleBytes_, *info_).format), 1, 1,
                                           &from_);
        }
        if (options.matrix)
            OrvSetColorCorrectionMatrix3x3(options.matrix->data(), &option_);
        else
            OrvSetDebayerMode(static_cast<std::uint32_t>(options.debayer), &option_);
    }

    OrvErrorType call(std::byte* target, const std::byte* source, std::int64_t y, std::int64_t width,
                      std::int64_t count) const {
        OrvImage from = from_, to = to_;
        from.ImageInfo.Width = to.ImageInfo.Width = static_cast<std::uint32_t>(width);
        from.ImageInfo.Height = to.ImageInfo.Height = static_cast<std::uint32_t>(count);
        from.Data = const_cast<std::byte*>(source); // which only the stream overwrites, and has the leave to
        to.Data = target;
        if (info_->isMosaic()) {
            // With a matrix the library takes the codes 1 and 2 the other way round: as phases are counted here.
            const unsigned phase = phase_ ^ movedBy(0, y);
            from.ImageInfo.PixelInfo.BayerPattern = hasMatrix_ ? phase : phaseOf(phase);
        }
        return OrvImageTransform(&from, &to, &option_, 1);
    }

    // Lines [from, to) in place; the lines at inner edges from windows around these.
    OrvErrorType direct(std::int64_t from, std::int64_t to, std::byte* scratch) const {
        setAlpha(from, to);
        if (rule_ == Rule::Run) return directRun(from, to);
        const Window top{from - 2, 2, 4},
            bottom = rule_ == Rule::Mosaic3x3 ? Window{to - 2, 1, 4} : Window{to - 1, 0, 2};
        const bool hasTop = rule_ == Rule::Mosaic3x3 && from > 0, hasBottom = to < height_;
        std::byte* const topLines = scratch;
        std::byte* const bottomLines = scratch + 4 * target_.length;
        if (hasTop) keep(top, topLines);
        if (hasBottom) keep(bottom, bottomLines);
        OrvErrorType result = call(target_.at(from), sourceAt(from), from, width_, to - from);
        if (hasTop && result == OrvErrorSuccess) result = convertWindow(top, topLines);
        if (hasBottom && result == OrvErrorSuccess) result = convertWindow(bottom, bottomLines);
        return result;
    }

    struct Window {
        std::int64_t first, wanted, count; // the wanted line is counted from the first
    };
    void keep(const Window& window, std::byte* lines) const {
        const auto at = static_cast<std::size_t>(window.wanted) * target_.length;
        if (hasFourth_) std::memcpy(lines + at, target_.at(window.first + window.wanted), target_.length);
    }
    OrvErrorType convertWindow(const Window& window, std::byte* lines) const {
        const OrvErrorType result = call(lines, sourceAt(window.first), window.first, width_, window.count);
        const auto at = static_cast<std::size_t>(window.wanted) * target_.length;
        std::memcpy(target_.at(window.first + window.wanted), lines + at, target_.length);
        return result;
    }

    OrvErrorType directRun(std::int64_t from, std::int64_t to) const {
        std::byte* const target = target_.at(from);
        if (!readsBeyond_ || to < height_) return call(target, sourceAt(from), from, width_, to - from);
        // Behind the last pixel of all stands a zero, whatever the memory holds there.
        const std::byte* const line = source_.at(to - 1);
        std::byte* const end = target_.at(to - 1);
        const std::byte last[3] = {line[source_.length - 2], line[source_.length - 1], std::byte{0}};
        OrvErrorType result = OrvErrorSuccess;
        if (to - from > 1) result = call(target, sourceAt(from), from, width_, to - from - 1);
        if (width_ > 1 && result == OrvErrorSuccess) result = call(end, line, from, width_ - 1, 1);
        const std::size_t pixel = target_.length / static_cast<std::size_t>(width_);
        return result == OrvErrorSuccess ? call(end + target_.length - pixel, last, from, 1, 1) : result;
    }

    OrvErrorType byLine(std::int64_t from, std::int64_t to) const {
        OrvErrorType result = OrvErrorSuccess;
        for (std::int64_t y = from; y < to && result == OrvErrorSuccess; ++y) {
            setAlpha(y, y + 1);
            result = call(target_.at(y), source_.at(y), y, width_, 1);
        }
        return result;
    }

    OrvErrorType gathered(std::int64_t from, std::int64_t to, std::byte* scratch) const {
        const std::int64_t first = rule_ == Rule::Mosaic3x3 ? std::max<std::int64_t>(from - 2, 0) : from;
        const std::int64_t end = rule_ == Rule::Run ? to : std::min(to + 2, height_);
        const std::byte* const source = gather(first, end, scratch);
        std::byte* const lines = scratch + sourceScratch();
        fillScratch(first, from, to, end, lines);
        const OrvErrorType result = call(lines, source, first, width_, end - first);
        scatter(lines + static_cast<std::size_t>(from - first) * target_.length, from, to);
        return result;
    }

    OrvErrorType stream(std::byte* scratch) const {
        const std::byte* const source = isOverwritable_ ? source_.first : gather(0, height_, scratch);
        if (target_.areDense) {
            setAlpha(0, height_);
            return call(target_.first, source, 0, width_, height_);
        }
        std::byte* const lines = scratch + sourceScratch();
        fillScratch(0, 0, height_, height_, lines);
        const OrvErrorType result = call(lines, source, 0, width_, height_);
        scatter(lines, 0, height_);
        return result;
    }

    // Lines in dense memory: where they are, or copied; or made into another mosaic.
    const std::byte* gather(std::int64_t from, std::int64_t to, std::byte* scratch) const {
        const std::byte* const lines = isCopied() ? copy(from, to, scratch) : sourceAt(from);
        if (sampleBytes_ == 0) return lines;
        std::byte* const mosaic = scratch + copyScratch();
        OrvImage samples = samples_, grey{};
        grey.Size = sizeof grey;
        const auto count = static_cast<std::uint32_t>(to - from);
        OrvSetImageInfoOutput(sampleBytes_ == 1 ? OrvOutputMono8 : OrvOutputMono16, static_cast<std::uint32_t>(width_),
                              count, &grey);
        samples.ImageInfo.Width = grey.ImageInfo.Width;
        samples.ImageInfo.Height = count;
        samples.Data = const_cast<std::byte*>(lines);
        grey.Data = mosaic;
        OrvImageTransform(&samples, &grey, nullptr, 0); // which takes all sizes that mosaics may have
        return mosaic;
    }

    std::byte* copy(std::int64_t from, std::int64_t to, std::byte* scratch) const {
        for (std::int64_t y = from; y < to; ++y) {
            std::byte* const line = scratch + static_cast<std::size_t>(y - from) * source_.length;
            if (isMirrored_)
                mirror(line, source_.at(y), static_cast<std::size_t>(width_), *info_);
            else
                std::memcpy(line, source_.at(y), source_.length);
        }
        if (readsBeyond_) {
            std::byte& beyond = scratch[static_cast<std::size_t>(to - from) * source_.length];
            const std::size_t next = isMirrored_ ? source_.length - 2 : 0;
            beyond = to < height_ ? source_.at(to)[next] : std::byte{0};
        }
        return scratch;
    }

    // What scratch lines hold before a call that leaves fourth bytes alone.
    void fillScratch(std::int64_t first, std::int64_t from, std::int64_t to, std::int64_t end, std::byte* lines) const {
        if (!hasFourth_) return;
        std::memset(lines, alpha_.value_or(0), static_cast<std::size_t>(end - first) * target_.length);
        if (alpha_) return;
        for (std::int64_t y = from; y < to; ++y)
            std::memcpy(lines + static_cast<std::size_t>(y - first) * target_.length, target_.at(y), target_.length);
    }

    void scatter(const std::byte* lines, std::int64_t from, std::int64_t to) const {
        for (std::int64_t y = from; y < to; ++y)
            std::memcpy(target_.at(y), lines + static_cast<std::size_t>(y - from) * target_.length, target_.length);
    }

    void setAlpha(std::int64_t from, std::int64_t to) const {
        if (!alpha_) return;
        for (std::int64_t y = from; y < to; ++y) std::memset(target_.at(y), *alpha_, target_.length);
    }

    void swapChannels(std::int64_t from, std::int64_t to) const {
        for (std::int64_t y = from; y < to; ++y) {
            std::byte* const line = target_.at(y);
            for (std::size_t i = 0; i < target_.length; i += 6) std::swap_ranges(line + i, line + i + 2, line + i + 4);
        }
    }

    // Dense bit-packed lines may begin within a byte, but not at the edges of bands.
    const std::byte* sourceAt(std::int64_t y) const {
        return source_.first +
               bytesOf(static_cast<std::uint64_t>(y) * static_cast<std::uint64_t>(width_), info_->bits());
    }

    // Lines that are worked on together: all of them where nothing has to be done twice while it is in the cache.
    std::int64_t stripLines() const {
        constexpr std::size_t cache = 256 << 10;
        const auto line = static_cast<std::int64_t>(source_.length + target_.length);
        std::int64_t strip = std::max<std::int64_t>(std::int64_t{cache} / line / unit * unit, unit);
        if (way_ != Way::Gathered && !alpha_ && !swapsChannels_) strip = height_;
        // The library counts the pixels that it corrects in 31 bits.
        const std::int64_t most = std::max<std::int64_t>(std::int64_t{0x3FFFFFFF} / width_, 1);
        return hasMatrix_ && rule_ == Rule::Run ? std::min(strip, most) : strip;
    }
    std::uint64_t scratchLines() const {
        const std::int64_t lines = isStream() ? height_ : std::min(2 * stripLines() + 4, height_);
        return static_cast<std::uint64_t>(lines);
    }
    bool isCopied() const {
        if (isStream() && sampleBytes_ == 0) return !isOverwritable_;
        return (isStream() || way_ == Way::Gathered) && (!source_.areDense || isMirrored_ || readsBeyond_);
    }
    std::uint64_t copyScratch() const {
        return isCopied() ? padded(plus(times(scratchLines(), source_.length), 1)) : 0;
    }
    std::uint64_t sourceScratch() const {
        const std::uint64_t mosaic = times(scratchLines(), static_cast<std::uint64_t>(width_) * sampleBytes_);
        return plus(copyScratch(), padded(mosaic));
    }
    std::uint64_t targetScratch() const {
        if (isStream()) return target_.areDense ? 0 : padded(times(scratchLines(), target_.length));
        if (way_ == Way::Gathered) return padded(times(scratchLines(), target_.length));
        return way_ == Way::Direct && rule_ != Rule::Run ? padded(times(8, target_.length)) : 0;
    }
    static std::uint64_t padded(std::uint64_t bytes) { return plus(bytes, 63) / 64 * 64; }

    Lines<const std::byte> source_;
    Lines<std::byte> target_;
    const FormatInfo* info_ = nullptr;
    std::int64_t width_ = 0, height_ = 0;
    unsigned phase_ = 0;
    Rule rule_ = Rule::Run;
    Way way_ = Way::Direct;
    bool isMirrored_ = false, isOverwritable_ = false, hasMatrix_ = false, swapsChannels_ = false, hasFourth_ = false,
         readsBeyond_ = false;
    unsigned sampleBytes_ = 0; // of the mosaic that is made first, if one is
    std::optional<std::uint8_t> alpha_;
    OrvImage from_{}, to_{}, samples_{};
    OrvTransformInfo option_{};
};

} // namespace orvella::detail
