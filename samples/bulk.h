#pragma once

#include <cstdint>
#include <string>

namespace sondrix {

// Writes an SL2 of whole frames, at most so many bytes long, that needs no more memory than a few megabytes.
// Dense: Primary and Downscan of 1920 samples, channel 1 of 2400 and Sidescan of 3072.
// Sparse: frames of 32608 samples on the same channels, of which the headers alone are written; the samples
// are holes that read as 0, so that a file of many gigabytes takes an eighth of its length on the disk; on
// Windows they are zeros, written by the file system. The clock of its frames is so many days late. Returns
// the length written, -1 when the file can't be written.
std::int64_t WriteBulk(const std::string& path, std::int64_t bytes, bool sparse, std::int32_t days = 0);

}  // namespace sondrix
