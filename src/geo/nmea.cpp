#include "geo/nmea.h"

#include "core/fault.h"
#include "core/number_text.h"
#include "core/rounding.h"

namespace sondrix {

double Nmea2Deg(std::string_view text) {
  std::size_t degreeDigits = 0;
  if (text.size() == 9) {
    degreeDigits = 2;
  } else if (text.size() == 10) {
    degreeDigits = 3;
  } else {
    return 0;
  }
  const std::size_t period = text.find('.');
  if (period == std::string_view::npos || period < 2) throw Fault(FaultNumber::InvalidCall);
  const auto degrees = static_cast<float>(ValOf(text.substr(0, degreeDigits)));
  const auto minutes = static_cast<float>(ValOf(text.substr(period - 2)) / 60);
  return Finite(static_cast<double>(degrees) + static_cast<double>(minutes));
}

}  // namespace sondrix
