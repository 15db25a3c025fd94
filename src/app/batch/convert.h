#pragma once

#include <string>
#include <vector>

namespace sondrix {

struct BatchOptions;
struct Session;

// Converts the sources, each with a copy of the settled session, as many at a time as the options say, and
// prints what there is to say of each in their order. One whose outputs clash with another's is refused.
// Ctrl-C ends the runs in order and begins no other. False unless every source ended well.
bool ConvertAll(const Session& settled, const BatchOptions& options, const std::vector<std::string>& sources);

}  // namespace sondrix
