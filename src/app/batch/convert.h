#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

struct BatchOptions;
struct Session;

// A line on standard error in the program's name, as text to print.
std::string Complaint(std::string_view text);

// Converts the sources, each with a copy of the settled session, as many at a time as the options say, and
// prints what there is to say of each in their order. One whose outputs clash with another's is refused.
// Ctrl-C ends the runs in order and begins no other. False unless every source ended well.
bool ConvertAll(const Session& settled, const BatchOptions& options, const std::vector<std::string>& sources);

}  // namespace sondrix
