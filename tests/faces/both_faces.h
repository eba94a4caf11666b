// One description of a call, run through both faces: what it takes, what it refuses, in which order. The legacy words carry
// the refused argument's position, so that they show more than the current face's answers.
#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

#include "orvella/zeb.h"
#include "support/call.h"
#include "support/fill.h"

namespace faces {

using support::Call, support::callOf, support::Values;

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

class BothFaces {
public:
    BothFaces(Call current, Call legacy, Values good, std::vector<Rule> rules, std::uint32_t goodAnswer)
        : current_(std::move(current)), legacy_(std::move(legacy)), good_(std::move(good)), rules_(std::move(rules)),
          answer_(goodAnswer) {}

    // The rules stand in the order of the checks: of two bad arguments the first one's is the answer.
    void check() const {
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
    static Values with(Values values, const Rule& rule, std::intptr_t value) {
        values.at(rule.position - 1) = value;
        return values;
    }
    void checkOrder(const Rule& first, const Rule& second) const {
        for (const std::intptr_t value : first.refused)
            for (const std::intptr_t other : second.refused)
                expectRefused(with(with(good_, first, value), second, other), first, &second);
    }

    static std::uint32_t call(const Call& function, const Values& values) {
        memory = contents();
        return function(values);
    }
    void expectTaken(const Values& values, bool writes) const {
        SCOPED_TRACE(::testing::PrintToString(values));
        EXPECT_EQ(call(current_, values), answer_);
        const support::Bytes written = memory;
        EXPECT_EQ(call(legacy_, values), answer_);
        EXPECT_TRUE(memory == written) << "the faces write different bytes";
        EXPECT_EQ(written != contents(), writes) << "bytes written";
    }
    void expectRefused(const Values& values, const Rule& first, const Rule* second) const {
        SCOPED_TRACE(::testing::PrintToString(values));
        const OrvErrorType current = first.current == OrvErrorSuccess && second ? second->current : first.current;
        const std::uint32_t legacy = first.legacy == success && second ? second->legacy : first.legacy;
        EXPECT_EQ(static_cast<OrvErrorType>(call(current_, values)), current);
        EXPECT_TRUE(current == OrvErrorSuccess || memory == contents());
        EXPECT_EQ(call(legacy_, values), legacy);
        EXPECT_TRUE(legacy == success || memory == contents());
    }

    Call current_, legacy_;
    Values good_;
    std::vector<Rule> rules_;
    std::uint32_t answer_; // to a good call
};

// A number or a pointer.
struct Value {
    std::intptr_t value;

    Value(const void* pointer) : value(reinterpret_cast<std::intptr_t>(pointer)) {}
    Value(int number) : value(number) {}
};

template <class... Args>
void checkFaces(const char* name, OrvErrorType (*orv)(Args...), std::uint32_t (*zeb)(Args...),
                std::initializer_list<Value> good, std::vector<Rule> rules, std::uint32_t goodAnswer = success) {
    SCOPED_TRACE(name);
    ASSERT_EQ(good.size(), sizeof...(Args));
    Values values;
    for (const Value& argument : good) values.push_back(argument.value);
    BothFaces(callOf(orv), callOf(zeb), std::move(values), std::move(rules), goodAnswer).check();
}

} // namespace faces

// FACES(name, {good arguments}, {rules}): of Orv<name> and ZEB_<name>.
#define FACES(name, ...) faces::checkFaces(#name, Orv##name, ZEB_##name, __VA_ARGS__)
