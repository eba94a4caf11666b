#include <algorithm>
#include <condition_variable>
#include <cstdio>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>

#include "commands.h"
#include "conversion.h"
#include "errors.h"
#include "input.h"
#include "progress.h"
#include "tasks.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

struct Entry {
    Task task;
    Input input;
    Recipe recipe;
};

// Frames of several inputs, converted by several threads, written in order.
class Conversion {
public:
    Conversion(std::deque<Entry> entries, const ConvertOptions& options, bool sequence)
        : entries_(std::move(entries)), encoding_(options.encoding), sequence_(sequence), progress_(countFrames()) {}

    void run(unsigned threads) {
        std::vector<std::thread> workers;
        for (unsigned i = 1; i < threads; ++i) workers.emplace_back([this] { work(); });
        work();
        for (std::thread& worker : workers) worker.join();
        progress_.clear();
        if (failure_) std::rethrow_exception(failure_);
        if (stream_) stream_->finish();
        if (failed_ > 0)
            throw Error(std::to_string(failed_) + " of " + std::to_string(done_) + " inputs were not converted");
    }

private:
    struct Frame {
        std::size_t ticket;
        Entry* entry;
        unsigned number;
        Bytes bytes;
        std::exception_ptr error; // instead of the bytes
    };
    struct Pictures {
        std::vector<Bytes> contents;
        Bytes header; // of a sequence
        std::string warning;
    };

    std::size_t countFrames() const {
        std::size_t count = 0;
        for (const Entry& entry : entries_) count += entry.input.count().value_or(1);
        return count;
    }

    void work() {
        while (std::optional<Frame> frame = next()) {
            Pictures pictures;
            try {
                if (!frame->error) pictures = convertFrame(*frame);
            } catch (...) {
                frame->error = std::current_exception();
            }
            std::unique_lock lock(mutex_);
            turn_.wait(lock, [&] { return turnOf_ == frame->ticket; });
            if (!failure_) finish(*frame, pictures);
            ++turnOf_;
            turn_.notify_all();
        }
    }

    std::optional<Frame> next() {
        const std::lock_guard lock(reading_);
        for (; current_ < entries_.size(); ++current_) {
            if (hasFailed()) return {};
            Entry& entry = entries_[current_];
            try {
                if (auto bytes = entry.input.next())
                    return Frame{tickets_++, &entry, entry.input.number(), std::move(*bytes), {}};
            } catch (...) {
                ++current_;
                return Frame{tickets_++, &entry, 0, {}, std::current_exception()};
            }
        }
        return {};
    }

    Pictures convertFrame(Frame& frame) const {
        const FrameFormat& format = frame.entry->input.frame();
        const Recipe& recipe = frame.entry->recipe;
        Pictures pictures;
        pictures.warning = excess(format, frame.bytes);
        for (Image& image : follow(recipe, format, std::move(frame.bytes))) {
            if (recipe.type == FileType::y4m) pictures.header = y4mHeader(image, encoding_);
            pictures.contents.push_back(encode(std::move(image), recipe.type, encoding_));
        }
        return pictures;
    }

    // In order, one at a time.
    void finish(const Frame& frame, const Pictures& pictures) {
        const Entry& entry = *frame.entry;
        progress_.show(done_++, entry.task.input.string());
        try {
            if (frame.error) std::rethrow_exception(frame.error);
            write(frame, pictures);
            if (!pictures.warning.empty()) complain(inputName(entry.task.input) + ": " + pictures.warning);
        } catch (const Refusal&) {
            failure_ = std::current_exception();
        } catch (const Error& error) { // the next file may be better
            if (entries_.size() == 1) {
                failure_ = std::current_exception();
                return;
            }
            complain(error.what());
            ++failed_;
        } catch (...) {
            failure_ = std::current_exception();
        }
    }

    void write(const Frame& frame, const Pictures& pictures) {
        const Entry& entry = *frame.entry;
        if (sequence_) return append(entry.task.outputs.front(), pictures);
        std::vector<File> files;
        for (const fs::path& path : entry.task.outputs) {
            files.push_back(
                {entry.input.hasSeveral() ? numbered(path, frame.number) : path, pictures.contents[files.size()]});
        }
        writeFiles(files);
    }

    void append(const fs::path& path, const Pictures& pictures) {
        if (!stream_ || path != streamPath_) {
            if (stream_) stream_->finish();
            stream_ = std::make_unique<OutputFile>(path);
            streamPath_ = path;
            streamHeader_ = pictures.header;
            stream_->append(pictures.header);
        }
        if (pictures.header != streamHeader_) throw Error("frames of other sizes cannot follow in a Y4M file");
        stream_->append(pictures.contents.front());
    }

    void complain(const std::string& message) const {
        progress_.clear();
        std::fprintf(stderr, "orvella: %s\n", message.c_str());
    }

    bool hasFailed() {
        const std::lock_guard lock(mutex_);
        return failure_ != nullptr;
    }

    std::deque<Entry> entries_;
    const Encoding encoding_;
    const bool sequence_;

    std::mutex reading_; // guards the inputs, and
    std::size_t current_ = 0, tickets_ = 0;

    std::mutex mutex_; // guards all that follows
    std::condition_variable turn_;
    std::size_t turnOf_ = 0, done_ = 0, failed_ = 0;
    std::exception_ptr failure_;
    Progress progress_;
    std::unique_ptr<OutputFile> stream_;
    fs::path streamPath_;
    Bytes streamHeader_;
};

void makeDirectory(const fs::path& directory) {
    std::error_code error;
    fs::create_directories(directory, error);
    if (error) throw Error("cannot make the directory " + directory.string() + ": " + error.message());
}

// The file type that the options name; empty if the ending of the output's name does.
std::string fileTypeName(const ConvertOptions& options) {
    if (options.raw) return "raw";
    return options.type.empty() && !options.directory.empty() ? "png" : options.type;
}

FileType chosenType(const ConvertOptions& options) {
    if (const std::string name = fileTypeName(options); !name.empty()) return fileTypeNamed(name);
    const fs::path& path = options.files.back();
    if (fs::is_directory(path))
        throw UsageError("'" + path.string() + "' is a directory; give it with --output-directory");
    return fileTypeOf(path, "rename it or use --type");
}

// All frames go into one file, one after the other.
bool isSequence(FileType type, const ConvertOptions& options) {
    return type == FileType::y4m || (type == FileType::raw && options.directory.empty() && options.files.back() == "-");
}

void requireFiles(const ConvertOptions& options, bool sequence) {
    if (options.directory.empty() && options.files.size() != 2 && !(sequence && options.files.size() > 2))
        throw UsageError("give one input and one output, or any number of inputs and --output-directory");
    const fs::path& input = options.files.front();
    if (options.directory.empty() && !sequence && fs::is_directory(input))
        throw UsageError("'" + input.string() + "' is a directory; say with --output-directory where its pictures go");
}

void requireOneOutput(const Entry& entry, bool sequence) {
    if (sequence && entry.task.outputs.size() > 1) throw UsageError("planes cannot follow each other in one file");
    if (!sequence && entry.input.hasSeveral() && entry.task.outputs.front() == "-")
        throw UsageError("several frames follow each other on standard output with --type y4m and --raw only");
}

ConvertOptions withFilesOfDirectories(const ConvertOptions& options) {
    ConvertOptions result = options;
    std::vector<fs::path> inputs(options.files.begin(), options.files.end() - (options.directory.empty() ? 1 : 0));
    result.files = withoutDirectories(inputs);
    if (options.directory.empty()) result.files.push_back(options.files.back());
    return result;
}

} // namespace

void convertCommand(const ConvertOptions& given) {
    if (given.files.size() < 2 && given.directory.empty()) requireFiles(given, false);
    const FileType type = chosenType(given);
    const bool sequence = isSequence(type, given);
    requireFiles(given, sequence);
    const ConvertOptions options = withFilesOfDirectories(given);
    Layout layout{options.skip, options.stride, {}};
    if (!options.frames.empty()) layout.selection = parseFrameRange(options.frames);

    const std::string_view planes = options.output.empty() ? "" : outputNamed(options.output).planes;
    std::deque<Entry> entries;
    std::string said;
    for (Task& task : planTasks(options.files, options.directory, fileTypeName(options), planes, sequence)) {
        Input input(task.input, options.frame, layout);
        Recipe recipe = recipeFor(input.frame(), options, type);
        if (const std::string words = remark(recipe, input.frame()); !words.empty() && words != said) {
            std::fprintf(stderr, "orvella: %s: %s\n", inputName(task.input).c_str(), words.c_str());
            said = words;
        }
        entries.push_back({std::move(task), std::move(input), std::move(recipe)});
        requireOneOutput(entries.back(), sequence);
    }
    if (!options.directory.empty()) makeDirectory(options.directory);
    Conversion(std::move(entries), options, sequence).run(options.jobs);
}

} // namespace tool
