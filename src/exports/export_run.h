#pragma once

#include "core/sounding.h"
#include "exports/row_text.h"
#include "survey/survey.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <stdexcept>

namespace sondrix {

class OutputFile;

// Why a file can't be made, in words for its line. What the operating system says is a Fault.
class CantExport : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What an export may use besides the survey.
struct ExportRun {
  int threads = 1;
  std::function<bool()> isToEnd = {};         // asked now and then; then EndAsked is thrown
  std::atomic<std::int64_t>* done = nullptr;  // soundings so far

  void Advance(std::size_t soundings) const {
    if (done != nullptr) done->fetch_add(static_cast<std::int64_t>(soundings), std::memory_order_relaxed);
  }
  void EndIfAsked() const;
};

// A block of a trip's soundings.
struct SurveyPiece {
  std::size_t trip = 0, block = 0;
};

// Puts the text of a piece behind what rows holds.
using FormatPiece =
    std::function<void(const SurveyPiece& piece, std::span<const Sounding> soundings, RowText& rows)>;

// Writes all pieces of a survey in their order, whatever the number of threads. Each thread makes itself a
// format. Faults as of the operating system, what a format throws, EndAsked.
void WritePieces(const Survey& survey, const ExportRun& run, const std::function<FormatPiece()>& makeFormat,
                 OutputFile& file);

}  // namespace sondrix
