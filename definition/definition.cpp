#include "definition/definition.h"

#include <algorithm>

#include "definition/tables.h"

namespace definition {

const std::vector<Conversion>& conversions() {
    static const std::vector<Conversion> all = [] {
        Table table;
        for (const auto add : {addMono, addColour, addMosaics, addFilteredMosaics, addCygm, addGeometry}) add(table);
        return std::move(table.rows);
    }();
    return all;
}

Function find(const std::string& name) {
    const auto row = std::find_if(conversions().begin(), conversions().end(),
                                  [&](const Conversion& conversion) { return conversion.name == name; });
    return row == conversions().end() ? nullptr : row->convert;
}

} // namespace definition
