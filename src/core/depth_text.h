#pragma once

#include <string>

namespace sondrix {

struct Settings;
class Window;

// A depth in feet as metres in text: feet * MetresPerFoot + addMetres, rounded to digits decimals, or to one
// with UseDcm set; exactly 0 feet gives "0" without the addition. On a fault the log line becomes
// "ошибка Ft2Mt " + number + ": " + description, and the text is empty.
std::string Ft2Mt(float feet, float addMetres, int digits, const Settings& settings, Window& window);

}  // namespace sondrix
