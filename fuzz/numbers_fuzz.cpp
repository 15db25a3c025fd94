#include "core/fault.h"
#include "core/number_text.h"
#include "fuzz/fuzz_run.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace {

using namespace sondrix;

void CheckText(std::string_view text) {
  const double value = ValOf(text);
  Require(!std::isnan(value), "a number is read", text);
  PadDecimals(text, 3);
  const std::string_view nz = Nz(text);
  Require(!nz.empty(), "a field counts as something", text);
  bool parses = true;
  try {
    const double parsed = LocParse(text);
    Require(std::isfinite(parsed), "a parsed number is finite", text);
  } catch (const Fault& fault) {
    Require(fault.Number() == 13 || fault.Number() == 6, "the fault of a number", text);
    parses = false;
  }
  Require(IsNumeric(text) == parses, "IsNumeric says what LocParse does", text);
}

// digits: how many the text holds at most. Half a unit of the last one is lost in the text, half a unit of
// the 64-bit float in reading it.
void CheckValue(double value, int digits, const std::string& text, const std::string& padded) {
  const double back = ValOf(text);
  Require(std::fabs(back - value) <= std::fabs(value) * 5.5 * std::pow(10, -digits) ||
              std::fabs(value) < 1e-290 || !std::isfinite(back),
          "a number comes back within its digits", text);
  Require(LocParse(padded) == back, "both forms say the same", padded);
  Require(NumText(back).size() <= 24, "a text is short", text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CheckText(TextOf({data, size}));
  if (size < sizeof(double)) return 0;
  double value = 0;
  std::memcpy(&value, data, sizeof value);
  float small = 0;
  std::memcpy(&small, data, sizeof small);
  if (std::isfinite(value)) {
    const std::string text = NumText(value);
    if (std::fabs(value) < 1.7976931348623e308) CheckValue(value, 15, text, LocText(value));
  }
  if (std::isfinite(small)) {
    CheckValue(static_cast<double>(small), 7, NumText(small), LocText(small));
    Require(NumText(static_cast<float>(ValOf(NumText(small)))) == NumText(small), "a text stays",
            NumText(small));
  }
  return 0;
}
