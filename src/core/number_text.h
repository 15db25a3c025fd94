#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace sondrix {

// Text of a number for files: period, no zero before it (.5), no trailing zeros, correctly rounded to 15
// significant digits (64-bit) or 7 (32-bit). Exponent form, as in 1E+15 or 1.5E-17, when more than 15 (7)
// digits before the point or decimals behind it would be needed. Fault 6 for a NaN or an infinity.
std::string NumText(double value);
std::string NumText(float value);

// The same, at the end of a buffer and without an allocation of its own.
void AppendNumText(std::string& out, double value);
void AppendNumText(std::string& out, float value);

// As NumText, with a zero before the period (0.5).
std::string LocText(double value);
std::string LocText(float value);

// A plain whole number at the end of a buffer.
void AppendWhole(std::string& out, std::int64_t value);

// The longest numeric prefix of text with a period as decimal mark, blanks skipped; 0 if there is none. Never
// fails: a number above the range of a 64-bit float is an infinity, one below it 0.
double ValOf(std::string_view text);

// A number text with a comma or a period as decimal mark; blanks around it and between its digits (also the
// no-break space) are skipped. Fault 13 on anything else, the empty text included; fault 6 where the value
// doesn't fit a 64-bit float.
double LocParse(std::string_view text);

// The text of a field, or "0" for a blank one, which counts as 0.
std::string_view Nz(std::string_view text);

// Whether LocParse takes the text.
bool IsNumeric(std::string_view text);

// The text with ".0" added if it has no period, then "0" until it has width decimals.
std::string PadDecimals(std::string_view text, int width);

}  // namespace sondrix
