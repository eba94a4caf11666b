// The conversions by kind of source: each function adds its own.
#pragma once
#include "definition/definition.h"
#include "definition/outputs.h"

namespace definition {

class Table {
public:
    std::vector<Conversion> rows;

    void add(const std::string& source, const std::string& output, Function convert) {
        rows.push_back({source + " -> " + output, convert});
    }
    void add(const std::string& source, OrvOutputCode output, Function convert) {
        add(source, outputs[output].name, convert);
    }
};

void addMono(Table& table);
void addColour(Table& table);
void addMosaics(Table& table);
void addFilteredMosaics(Table& table);
void addCygm(Table& table);
void addGeometry(Table& table);

} // namespace definition
