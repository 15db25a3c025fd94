#pragma once

#include "sounders/table/table_layout.h"
#include "sounders/table/table_names.h"
#include "sounders/table/table_stats.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace sondrix {

// What columns without names are, by what stands in them.

// The position: two columns side by side, latitude first unless letters tell otherwise, that fit and that no
// name claims. Leaves the layout alone where there are none.
void GuessPlace(TableLayout& layout, const std::vector<ColumnName>& names,
                const std::vector<ColumnStats>& stats, const ReadOptions& options);

// Position, depth and time of a table without a head. CantRead for a fish-finder's raw echo.
void GuessColumns(TableLayout& layout, const TableShape& shape, const std::vector<ColumnStats>& stats,
                  const ReadOptions& options);

// The sonar's channel that a cell names: a small number, or "Primary", "Downscan" and the like.
std::optional<std::uint8_t> ChannelOfCell(std::string_view cell);

}  // namespace sondrix
