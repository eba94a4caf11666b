// One description of a call, run through both faces: what it takes, what it refuses, in which order. The legacy words carry
// the refused argument's position, so that they show more than the current face's answers.
#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "orvella/zeb.h"
#include "support/fill.h"

namespace faces {

using Values = std::vector<std::intptr_t>; // of any argument

constexpr std::uint32_t success = 0, fault = 0x88000001, notOffered = 0x88000012, noMemory = 0x8800001A;
constexpr std::uint32_t argument(unsigned position) { return 0x88000001 + position; } // counted from 1

constexpr OrvErrorType currentAnswer(std::uint32_t word) {
    switch (word) {
    case success: return OrvErrorSuccess;
    case fault: return OrvErrorInternalFault;
    case notOffered: return OrvErrorNotImplemented;
    case noMemory: return OrvErrorResources;
    default: return OrvErrorBadParameter;
    }
}

// What an argument may be and may not be.
struct Rule {
    unsigned position;
    Values refused;
    std::uint32_t legacy;                         // what the legacy face answers
    OrvErrorType current = currentAnswer(legacy); // and the current face, where it is another answer
    Values taken = {}, empty = {};                // values that are good, and good but there is nothing to do
};

inline Rule refuses(unsigned position, Values values, Values taken = {}, Values empty = {}) {
    return {position, std::move(values), argument(position), OrvErrorBadParameter, std::move(taken), std::move(empty)};
}
inline Rule null(unsigned position) { return refuses(position, {0}); }
inline Rule offers(unsigned position, const Values& outputs) {
    Values others;
    for (const std::intptr_t output : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 256, -1})
        if (std::ranges::find(outputs, output) == outputs.end()) others.push_back(output);
    return {position, others, notOffered, OrvErrorNotImplemented, outputs};
}
template <class Record> std::intptr_t at(const Record& record) { return reinterpret_cast<std::intptr_t>(&record); }

// All buffers of a call lie in one piece of memory, so that everything it writes can be seen.
inline const support::Bytes& contents() {
    static const support::Bytes bytes = [] {
        support::Random random(7);
        return support::filled(1 << 14, support::Contents::noise, random);
    }();
    return bytes;
}
inline support::Bytes memory = contents();
inline void* const to = memory.data();
inline void* const from = memory.data() + memory.size() / 2;
inline void* plane(std::size_t k) { return memory.data() + 1024 * k; }

template <class... Args> class BothFaces {
public:
    using Arguments = std::tuple<Args...>;

    BothFaces(const char* name, OrvErrorType (*orv)(Args...), std::uint32_t (*zeb)(Args...), Arguments good,
              std::vector<Rule> rules, std::uint32_t goodAnswer)
        : name_(name), orv_(orv), zeb_(zeb), good_(std::move(good)), rules_(std::move(rules)), answer_(goodAnswer) {}

    // The rules stand in the order of the checks: of two bad arguments the first one's is the answer.
    void check() const {
        SCOPED_TRACE(name_);
        expectTaken(good_, true);
        for (const Rule& rule : rules_) {
            for (const std::intptr_t value : rule.taken) expectTaken(with(good_, rule, value), true);
            for (const std::intptr_t value : rule.empty) expectTaken(with(good_, rule, value), false);
            for (const std::intptr_t value : rule.refused) expectRefused(with(good_, rule, value), rule, nullptr);
        }
        for (std::size_t i = 0; i < rules_.size(); ++i)
            for (std::size_t j = i + 1; j < rules_.size(); ++j)
                if (rules_[i].position != rules_[j].position) checkOrder(rules_[i], rules_[j]);
    }

private:
    template <class T> static void assign(T& argument, std::intptr_t value) {
        if constexpr (std::is_pointer_v<T>)
            argument = reinterpret_cast<T>(value);
        else
            argument = static_cast<T>(value);
    }
    static Arguments with(Arguments arguments, const Rule& rule, std::intptr_t value) {
        [&]<std::size_t... i>(std::index_sequence<i...>) {
            ((i + 1 == rule.position ? assign(std::get<i>(arguments), value) : void()), ...);
        }
        (std::index_sequence_for<Args...>());
        return arguments;
    }

    void checkOrder(const Rule& first, const Rule& second) const {
        for (const std::intptr_t value : first.refused)
            for (const std::intptr_t other : second.refused)
                expectRefused(with(with(good_, first, value), second, other), first, &second);
    }

    template <class Function> static auto call(Function function, const Arguments& arguments) {
        memory = contents();
        return std::apply(function, arguments);
    }
    static std::string describe(const Arguments& arguments) {
        std::ostringstream text;
        std::apply([&](const auto&... each) { ((text << each << ' '), ...); }, arguments);
        return text.str();
    }

    void expectTaken(const Arguments& arguments, bool writes) const {
        SCOPED_TRACE(describe(arguments));
        EXPECT_EQ(call(orv_, arguments), static_cast<OrvErrorType>(answer_));
        const support::Bytes written = memory;
        EXPECT_EQ(call(zeb_, arguments), answer_);
        EXPECT_TRUE(memory == written) << "the faces write different bytes";
        EXPECT_EQ(written != contents(), writes) << "bytes written";
    }
    void expectRefused(const Arguments& arguments, const Rule& first, const Rule* second) const {
        SCOPED_TRACE(describe(arguments));
        const auto current = first.current == OrvErrorSuccess && second ? second->current : first.current;
        const auto legacy = first.legacy == success && second ? second->legacy : first.legacy;
        EXPECT_EQ(call(orv_, arguments), current);
        EXPECT_TRUE(current == OrvErrorSuccess || memory == contents());
        EXPECT_EQ(call(zeb_, arguments), legacy);
        EXPECT_TRUE(legacy == success || memory == contents());
    }

    const char* name_;
    OrvErrorType (*orv_)(Args...);
    std::uint32_t (*zeb_)(Args...);
    Arguments good_;
    std::vector<Rule> rules_;
    std::uint32_t answer_; // to a good call
};

template <class... Args>
void checkFaces(const char* name, OrvErrorType (*orv)(Args...), std::uint32_t (*zeb)(Args...),
                std::type_identity_t<std::tuple<Args...>> good, std::vector<Rule> rules,
                std::uint32_t goodAnswer = success) {
    BothFaces<Args...>(name, orv, zeb, std::move(good), std::move(rules), goodAnswer).check();
}

} // namespace faces

// FACES(name, {good arguments}, {rules}): of Orv<name> and ZEB_<name>.
#define FACES(name, ...) faces::checkFaces(#name, Orv##name, ZEB_##name, __VA_ARGS__)
