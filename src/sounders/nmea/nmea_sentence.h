#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace sondrix {

// The sentences of NMEA 0183 that tell a position, a date or a depth. Odc is a survey sounder's own, with
// position and depth in one.
enum class SentenceKind : std::uint8_t { Other, Gga, Rmc, Gns, Gll, Zda, Odc, Dpt, Dbs, Dbt, Dbk };

bool IsFix(SentenceKind kind);    // of a GPS: with a position or a time
bool IsDepth(SentenceKind kind);  // Odc is one too

enum class Checksum : std::uint8_t { Right, Missing, Wrong };

// One sentence as it stands in a line.
struct NmeaSentence {
  std::string_view address;  // talker and kind, without the "$": "GPRMC", "05DBT", "PSKPDPT"
  std::string_view fields;   // behind the comma of the address, without the checksum
  SentenceKind kind = SentenceKind::Other;
  Checksum checksum = Checksum::Missing;
};

// The sentences of a line: each begins with "$" or "!" and ends with its checksum, where the next one begins,
// or with the line. What stands around them is passed over.
class SentenceScan {
 public:
  explicit SentenceScan(std::string_view line) : line_(line) {}
  std::optional<NmeaSentence> Next();

 private:
  std::string_view line_;
};

// The comma separated fields of a sentence without the blanks around them. Those that miss are empty.
class NmeaFields {
 public:
  static constexpr std::size_t Most = 16;
  explicit NmeaFields(std::string_view text);
  std::string_view operator[](std::size_t index) const {
    return index < Most ? fields_[index] : std::string_view();
  }
  std::size_t Count() const { return count_; }

 private:
  std::array<std::string_view, Most> fields_;
  std::size_t count_ = 0;
};

// A plain decimal number that fills a field: none for anything else, the empty field included.
struct FieldNumber {
  double value = 0;
  int decimals = 0;
};
std::optional<FieldNumber> NumberOf(std::string_view field);

// An address as a number to compare: up to eight characters, without regard to case.
using AddressKey = std::uint64_t;
AddressKey KeyOf(std::string_view address);
std::string AddressOf(AddressKey key);                                           // in capitals
inline AddressKey TalkerOf(AddressKey key) { return key & AddressKey{0xFFFF}; }  // its first two characters

}  // namespace sondrix
