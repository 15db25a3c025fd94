#pragma once

#include <string>

namespace sondrix {

// A depth in feet as metres in text: feet * MetresPerFoot + addMetres, rounded to digits decimals, or to one
// where it is to be in decimetres; exactly 0 feet gives "0" without the addition. Faults of the rounding.
std::string Ft2Mt(float feet, float addMetres, int digits, bool toDecimetres);

}  // namespace sondrix
