#pragma once

#include "exports/export_run.h"
#include "exports/row_text.h"

#include <cstddef>
#include <functional>

namespace sondrix {

// Puts the text of an item behind what rows holds.
using FormatItem = std::function<void(std::size_t item, RowText& rows)>;

// Items 0 to count - 1 that become text.
struct TextItems {
  std::size_t count = 0;
  std::function<std::size_t(std::size_t item)> sizeOf;  // rows or points: small items go out together
  std::function<FormatItem()> makeFormat;               // each thread makes itself one
};

// Writes all in their order, whatever the number of threads. Faults as of the operating system, what a format
// throws, EndAsked.
void WriteInOrder(const TextItems& items, const ExportRun& run, OutputFile& file);

}  // namespace sondrix
