#pragma once

#include <string>

namespace sondrix {

struct Settings;
class Window;

// Ft2Mt with the user's UseDcm. On a fault the log line becomes "ошибка Ft2Mt " + number + ": " +
// description, and the text is empty.
std::string Ft2MtOrReport(float feet, float addMetres, int digits, const Settings& settings, Window& window);

}  // namespace sondrix
