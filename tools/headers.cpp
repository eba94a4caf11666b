#include "headers.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <map>
#include <vector>

#include "errors.h"
#include "frames/names.h"

namespace tool {

namespace {

// Of the digits at its beginning; 0 if there are none.
unsigned number(std::string_view text) {
    unsigned value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

// The words of a PNM header, without the comments between them.
class PnmWords {
public:
    explicit PnmWords(std::string_view text) : text_(text) {}
    std::string_view next() { // empty at the end
        for (;;) {
            at_ = std::min(text_.find_first_not_of(blanks, at_), text_.size());
            if (!text_.substr(at_).starts_with('#')) break;
            at_ = std::min(text_.find('\n', at_), text_.size());
        }
        const std::size_t start = at_;
        at_ = std::min(text_.find_first_of(blanks, at_), text_.size());
        return text_.substr(start, at_ - start);
    }
    std::size_t position() const { return at_; }

private:
    static constexpr std::string_view blanks = " \t\n\v\f\r";
    std::string_view text_;
    std::size_t at_ = 0;
};

FileHeader pnmHeader(const std::string& name, std::string_view beginning) {
    PnmWords words(beginning);
    const std::string_view magic = words.next();
    std::map<std::string_view, unsigned> fields{{"DEPTH", magic == "P6" ? 3 : 1}};
    if (magic == "P5" || magic == "P6") {
        for (const char* const field : {"WIDTH", "HEIGHT", "MAXVAL"}) fields[field] = number(words.next());
    } else if (magic == "P7") {
        for (std::string_view field; !(field = words.next()).empty() && field != "ENDHDR";) {
            if (const std::string_view value = words.next(); field != "TUPLTYPE") fields[field] = number(value);
        }
    }
    const std::size_t offset = words.position() + 1; // one blank ends the header
    if (offset > beginning.size() || fields["MAXVAL"] == 0) throw Error(name + " has no binary PNM or PAM header");
    return {plainFrame(name, {fields["WIDTH"], fields["HEIGHT"]}, fields["DEPTH"],
                       static_cast<unsigned>(std::bit_width(fields["MAXVAL"])), true),
            offset};
}

// NumPy's header is a dictionary: {'descr': '<u2', 'fortran_order': False, 'shape': (480, 640), }.
FileHeader npyHeader(const std::string& name, std::string_view beginning) {
    const auto byte = [&](std::size_t i) { return std::uint64_t{static_cast<unsigned char>(beginning[i])}; };
    const auto after = [&](const std::string& key) { // what stands behind it, without blanks
        const std::size_t at = beginning.find("'" + key + "':");
        const std::size_t value =
            at == beginning.npos ? beginning.npos : beginning.find_first_not_of(' ', at + key.size() + 3);
        return value == beginning.npos ? std::string_view() : beginning.substr(value);
    };
    const std::string_view type = after("descr").substr(0, 5);
    std::string_view shape = after("shape");
    const bool known =
        beginning.size() > 12 && beginning.starts_with("\x93NUMPY") && !after("fortran_order").starts_with("T");
    if (!known || (type != "'|u1'" && type != "'<u2'" && type != "'>u2'") || !shape.starts_with('('))
        throw Error(name + " is no .npy file of rows of unsigned 8- or 16-bit integers");
    shape = shape.substr(0, shape.find(')'));
    std::vector<unsigned> sides;
    for (std::size_t at = 0; (at = shape.find_first_of("0123456789", at)) != shape.npos;) {
        sides.push_back(number(shape.substr(at)));
        at = std::min(shape.find_first_not_of("0123456789", at), shape.size());
    }
    const bool colour = sides.size() >= 3 && (sides.back() == 3 || sides.back() == 4);
    const unsigned channels = colour ? sides.back() : 1;
    if (colour) sides.pop_back();
    if (sides.size() < 2) throw Error(name + " has no rows and columns");
    const Size size{sides[sides.size() - 1], sides[sides.size() - 2]}; // before them: frames
    const std::uint64_t offset = byte(6) == 1 ? 10 + (byte(8) | byte(9) << 8) : 12 + (byte(8) | byte(9) << 8);
    return {plainFrame(name, size, channels, type == "'|u1'" ? 8 : 16, type[1] == '>'), offset};
}

} // namespace

FrameFormat plainFrame(const std::string& name, Size size, unsigned channels, unsigned bits, bool bigEndian) {
    const bool deep = bits > 8;
    const char* const format = channels == 1            ? (deep ? "Mono16" : "Mono8")
                               : channels == 3          ? (deep ? "Rgb16" : "Rgb8")
                               : channels == 4 && !deep ? "Rgba8"
                                                        : nullptr;
    if (!format || bits > 16 || !parseSize(text(size))) {
        throw Error(name + " holds " + std::to_string(channels) + " channels of " + std::to_string(bits) + " bits at " +
                    text(size) + ", which are no camera's frame");
    }
    FrameFormat frame{*findPixelFormat(format), size, false, deep && bigEndian};
    if (deep) frame.pixels.bits = bits == 9 ? 10 : bits == 11 ? 12 : bits; // what the library takes
    return frame;
}

bool endsWith(const std::string& name, std::initializer_list<std::string_view> endings) {
    const std::size_t dot = name.rfind('.');
    const std::string_view ending = dot == name.npos ? std::string_view() : std::string_view(name).substr(dot);
    return std::any_of(endings.begin(), endings.end(), [&](std::string_view known) { return sameName(ending, known); });
}

std::optional<FileHeader> plainHeader(const std::string& name, std::string_view beginning) {
    if (endsWith(name, {".pgm", ".ppm", ".pnm", ".pam"})) return pnmHeader(name, beginning);
    if (endsWith(name, {".npy"})) return npyHeader(name, beginning);
    return {};
}

} // namespace tool
