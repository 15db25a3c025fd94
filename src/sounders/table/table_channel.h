#pragma once

#include "sounders/common/reading.h"
#include "sounders/table/table_layout.h"
#include "sounders/table/table_shape.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace sondrix {

// The channel whose rows are read, of a table with a column for it: the one of the options, else the one with
// most rows that have a depth, the lowest number of several. Reads the table for it; none, and nothing is
// read, without such a column. Adds what was chosen to the layout's sentences. CantRead where the wanted one
// isn't in it.
std::optional<std::uint8_t> ChooseChannel(std::string_view path, const TableShape& shape, TableLayout& layout,
                                          const ReadOptions& options, const ReadWatch& watch);

}  // namespace sondrix
