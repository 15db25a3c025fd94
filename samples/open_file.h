#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace sondrix {

struct SampleCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using SampleFile = std::unique_ptr<std::FILE, SampleCloser>;

// A file that is written from its start, by its UTF-8 name; null when it can't be.
SampleFile OpenSample(const std::string& path);

}  // namespace sondrix
