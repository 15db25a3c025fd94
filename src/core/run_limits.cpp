#include "core/run_limits.h"

#include "core/number_text.h"

namespace sondrix {

double NumberOf(std::string_view text) { return IsNumeric(text) ? LocParse(text) : 0; }

}  // namespace sondrix
