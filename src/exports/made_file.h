#pragma once

#include <functional>
#include <string>

namespace sondrix {

// Lets something of GDAL make a file at a path. Some of its drivers don't notice that a disk is full, and
// others say so in words of their own: where the file takes no more bytes then, that is the Fault. What make
// throws.
void MakeFile(const std::string& path, const std::function<void()>& make);

}  // namespace sondrix
