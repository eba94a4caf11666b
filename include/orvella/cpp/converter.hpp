// The conversions themselves.
#pragma once
#include <atomic>
#include <concepts>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

#include "orvella/cpp/plan.hpp"

namespace orvella {

// One band of a conversion: job(i) converts the i-th of n bands, on any thread.
class Job {
public:
    Job(const detail::Plan& plan, std::size_t bands, std::byte* scratch)
        : plan_(&plan), bands_(bands), scratch_(scratch) {}

    void operator()(std::size_t band) const noexcept {
        if (band >= bands_) return;
        const OrvErrorType result = plan_->convert(plan_->edge(band, bands_), plan_->edge(band + 1, bands_),
                                                   scratch_ + band * plan_->scratch());
        if (result != OrvErrorSuccess) result_ = result;
        ++done_;
    }

    Result result() const {
        if (result_ != OrvErrorSuccess) return Result(result_);
        if (done_ < bands_)
            return Result::refused(OrvErrorOther, "run() has run %zu of %zu jobs", done_.load(), bands_);
        return {};
    }

private:
    const detail::Plan* plan_;
    std::size_t bands_;
    std::byte* scratch_;
    mutable std::atomic<OrvErrorType> result_{OrvErrorSuccess};
    mutable std::atomic<std::size_t> done_{0};
};

// The caller's threads: run(n, job) calls job(0) to job(n - 1), in any order and on any threads, and returns when all are
// done.
template <class Run>
concept Runner = std::invocable<Run&, std::size_t, const Job&>;

// Converts frames and keeps its scratch memory: from the second frame of a kind on, it allocates none. (LCAA, LCAAV and
// YUV422 allocate a few lines inside the library.) One per thread.
class Converter {
public:
    // The non-throwing form. Nothing has been written if it refuses.
    Result tryConvert(const Frame& frame, Picture& picture, const Options& options = {}) noexcept {
        detail::Plan plan;
        if (Result refusal = detail::Plan::make(frame, picture, options, plan); !refusal) return refusal;
        if (!reserve(plan.scratch())) return Result(OrvErrorResources);
        return Result(plan.convert(0, picture.size().height, scratch_.get()));
    }

    // Bands of lines on the caller's threads. LCAA, LCAAV and YUV422 filter an image as one stream and are refused.
    // Throws only what run throws.
    template <Runner Run> Result tryConvert(const Frame& frame, Picture& picture, const Options& options, Run&& run) {
        detail::Plan plan;
        if (Result refusal = detail::Plan::make(frame, picture, options, plan); !refusal) return refusal;
        if (plan.isStream())
            return Result::refused(OrvErrorNotImplemented,
                                   "LCAA, LCAAV and YUV422 filter a frame as one stream: convert frames side by side, "
                                   "not bands of one");
        const std::size_t bands = plan.bands();
        if (!reserve(detail::times(bands, plan.scratch()))) return Result(OrvErrorResources);
        const Job job(plan, bands, scratch_.get());
        run(bands, job);
        return job.result();
    }

    void convert(const Frame& frame, Picture& picture, const Options& options = {}) {
        detail::orThrow(tryConvert(frame, picture, options));
    }
    template <Runner Run> void convert(const Frame& frame, Picture& picture, const Options& options, Run&& run) {
        detail::orThrow(tryConvert(frame, picture, options, std::forward<Run>(run)));
    }

    // Into new memory, which costs more than the conversion: pass a picture again where frames follow each other.
    Picture convert(const Frame& frame, Output output, const Options& options = {}) {
        Picture picture(output, frame.size());
        convert(frame, picture, options);
        return picture;
    }

private:
    bool reserve(std::uint64_t bytes) {
        if (bytes <= capacity_) return true;
        if (bytes > static_cast<std::uint64_t>(std::numeric_limits<std::ptrdiff_t>::max())) return false;
        std::unique_ptr<std::byte[]> more(new (std::nothrow) std::byte[static_cast<std::size_t>(bytes)]);
        if (!more) return false;
        scratch_ = std::move(more);
        capacity_ = static_cast<std::size_t>(bytes);
        return true;
    }

    std::unique_ptr<std::byte[]> scratch_;
    std::size_t capacity_ = 0;
};

// The same with scratch memory of their own.
[[nodiscard]] inline Result tryConvert(const Frame& frame, Picture& picture, const Options& options = {}) noexcept {
    return Converter().tryConvert(frame, picture, options);
}
inline void convert(const Frame& frame, Picture& picture, const Options& options = {}) {
    Converter().convert(frame, picture, options);
}
template <Runner Run> void convert(const Frame& frame, Picture& picture, const Options& options, Run&& run) {
    Converter().convert(frame, picture, options, std::forward<Run>(run));
}
inline void convert(const Frame& frame, Picture&& picture, const Options& options = {}) {
    Converter().convert(frame, picture, options);
}
inline Picture convert(const Frame& frame, Output output, const Options& options = {}) {
    return Converter().convert(frame, output, options);
}

} // namespace orvella
