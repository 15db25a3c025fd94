#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <ios>
#include <sstream>
#include <string>
#include <string_view>

namespace sondrix {

// FNV-1a (Fowler, Noll, Vo), 64 bits.
constexpr std::uint64_t DigestOf(std::string_view bytes) {
  std::uint64_t sum = 0xCBF29CE484222325;
  for (const char c : bytes) sum = (sum ^ static_cast<std::uint8_t>(c)) * 0x100000001B3;
  return sum;
}

// Whether a long text is the one that it was. If it isn't, the text is left in a file, to be compared with
// the one that an earlier version leaves there when the row's digest is spoilt; the new digest goes into the
// row if the difference is meant.
inline testing::AssertionResult HasDigest(std::string_view text, std::uint64_t expected) {
  const std::uint64_t digest = DigestOf(text);
  if (digest == expected) return testing::AssertionSuccess();
  std::ostringstream number;
  number << "0x" << std::hex << std::uppercase << digest;
  const auto path = std::filesystem::temp_directory_path() / ("sondrix." + number.str() + ".txt");
  std::ofstream(path, std::ios::binary) << text;
  return testing::AssertionFailure() << "has the digest " << number.str() << " and is left in " << path;
}

}  // namespace sondrix
