#pragma once

#include <cstdio>
#include <gtest/gtest.h>
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

namespace sondrix {

// What a program of the command line left behind.
struct Called {
  int status;
  std::string out, err;
};

// Calls run with the words of a line, which a shell would divide in the same way where they stand in quotes.
template <class Run>
Called CallWith(const std::string& line, const Run& run) {
  std::istringstream words(line);
  std::vector<std::string> arguments;
  for (std::string word; words >> std::quoted(word);) arguments.push_back(word);
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  const int status = run(arguments);
  std::fflush(stdout);
  const std::string out = testing::internal::GetCapturedStdout();
  return {status, out, testing::internal::GetCapturedStderr()};
}

}  // namespace sondrix
