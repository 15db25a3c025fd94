#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace sondrix {

// The text of many rows, in memory that is used again. Rows are put where Room points to.
class RowText {
 public:
  // Where at least that many bytes can be put behind what it holds.
  char* Room(std::size_t bytes);
  // What was put there ends here.
  void EndAt(const char* end) { size_ = static_cast<std::size_t>(end - bytes_.get()); }
  void Append(std::string_view text);
  void Clear() { size_ = 0; }
  std::string_view Text() const { return {bytes_.get(), size_}; }

 private:
  std::unique_ptr<char[]> bytes_;
  std::size_t size_ = 0, capacity_ = 0;
};

// Each of these puts a text from a place on and returns where it ends.

inline constexpr std::size_t NumberRoom = 24;  // bytes that a number takes at most

// A whole number of units of 10^-decimals. With isTrimmed there are no zeros at the end of the decimals, nor
// a period where none are left.
char* PutFixed(char* to, std::int64_t units, int decimals, bool isTrimmed);

// Nothing for what isn't a number or has too many digits. Degrees have 8 decimals; metres and seconds have up
// to 3.
char* PutNumber(char* to, double value, int decimals, bool isTrimmed);
char* PutDegrees(char* to, double degrees);
char* PutMetres(char* to, float metres);
char* PutSeconds(char* to, double seconds);

char* PutChars(char* to, std::string_view text);

}  // namespace sondrix
