// A function of any signature, called with values for all its arguments.
#pragma once
#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <type_traits>
#include <utility>
#include <vector>

namespace support {

using Values = std::vector<std::intptr_t>; // of any arguments; floats by their bits
using Call = std::function<std::uint32_t(const Values&)>;

template <class Answer, class... Args> Call callOf(Answer (*function)(Args...)) {
    return [function](const Values& values) {
        const auto argument = []<class T>(std::type_identity<T>, std::intptr_t value) {
            if constexpr (std::is_pointer_v<T>)
                return reinterpret_cast<T>(value);
            else if constexpr (std::is_floating_point_v<T>)
                return std::bit_cast<T>(static_cast<std::uint32_t>(value));
            else
                return static_cast<T>(value);
        };
        return [&]<std::size_t... i>(std::index_sequence<i...>) {
            return static_cast<std::uint32_t>(function(argument(std::type_identity<Args>(), values.at(i))...));
        }
        (std::index_sequence_for<Args...>());
    };
}

} // namespace support
