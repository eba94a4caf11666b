#pragma once
#include "transform.h"

namespace tool {

// Small pictures side by side, three in a row, with numbers.
class ContactSheet {
public:
    explicit ContactSheet(std::size_t pictures);

    void add(const Image& picture); // RGB24
    void addEmpty() { ++count_; }
    Image image() const { return sheet_; }

private:
    void set(std::size_t x, std::size_t y, const std::uint8_t* rgb);
    void writeNumber(std::size_t left, std::size_t top, std::size_t number);

    Image sheet_;
    std::size_t count_ = 0;
};

} // namespace tool
