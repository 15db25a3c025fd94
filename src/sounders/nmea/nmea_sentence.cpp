#include "sounders/nmea/nmea_sentence.h"

#include "core/text.h"

#include <charconv>
#include <cstring>

namespace sondrix {

namespace {

constexpr std::size_t StandardAddress = 5;
constexpr std::size_t MostDigits = 15;
constexpr double MostValue = 1e15;  // no field holds more
constexpr double PowersOfTen[MostDigits + 1] = {1,   1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

constexpr unsigned Code(std::string_view three) {
  return static_cast<unsigned>(Lower(three[0])) << 16U | static_cast<unsigned>(Lower(three[1])) << 8U |
         static_cast<unsigned>(Lower(three[2]));
}

SentenceKind KindOf(std::string_view address) {
  if (address.size() != StandardAddress || Lower(address[0]) == 'p')
    return KeyOf(address) == KeyOf("PSKPDPT") ? SentenceKind::Dpt : SentenceKind::Other;
  switch (Code(address.substr(2))) {
    case Code("GGA"):
      return SentenceKind::Gga;
    case Code("RMC"):
      return SentenceKind::Rmc;
    case Code("GNS"):
      return SentenceKind::Gns;
    case Code("GLL"):
      return SentenceKind::Gll;
    case Code("ZDA"):
      return SentenceKind::Zda;
    case Code("ODC"):
      return SentenceKind::Odc;
    case Code("DPT"):
      return SentenceKind::Dpt;
    case Code("DBS"):
      return SentenceKind::Dbs;
    case Code("DBT"):
      return SentenceKind::Dbt;
    case Code("DBK"):
      return SentenceKind::Dbk;
    default:
      return SentenceKind::Other;
  }
}

std::optional<unsigned> HexDigit(char c) {
  const char lower = Lower(c);
  if (lower >= '0' && lower <= '9') return static_cast<unsigned>(lower - '0');
  if (lower >= 'a' && lower <= 'f') return static_cast<unsigned>(lower - 'a' + 10);
  return std::nullopt;
}

// The checksum at a "*"; none where no two digits stand behind it.
std::optional<unsigned> SumAt(std::string_view text, std::size_t star) {
  if (star + 2 >= text.size()) return std::nullopt;
  const std::optional<unsigned> high = HexDigit(text[star + 1]), low = HexDigit(text[star + 2]);
  if (!high || !low) return std::nullopt;
  return *high << 4U | *low;
}

// The exclusive or of all bytes, eight at a time.
unsigned SumOf(std::string_view text) {
  std::uint64_t sum = 0, word = 0;
  std::size_t at = 0;
  for (; at + sizeof word <= text.size(); at += sizeof word) {
    std::memcpy(&word, text.data() + at, sizeof word);
    sum ^= word;
  }
  word = 0;
  std::memcpy(&word, text.data() + at, text.size() - at);
  sum ^= word;
  sum ^= sum >> 32U;
  sum ^= sum >> 16U;
  sum ^= sum >> 8U;
  return static_cast<unsigned>(sum & 0xFFU);
}

// A log that lost its capitals keeps the checksums of what the instruments sent. Each letter that was turned
// changes this bit of the sum.
bool IsSumOfCapitals(std::string_view text, unsigned told) {
  constexpr unsigned caseBit = 'a' - 'A';
  if (text.size() < StandardAddress || text[StandardAddress - 1] < 'a') return false;
  return (SumOf(text) | caseBit) == (told | caseBit);
}

NmeaSentence Split(std::string_view text, Checksum checksum) {
  const std::size_t comma = text.find(',');
  NmeaSentence sentence;
  sentence.address = text.substr(0, comma);
  if (comma != std::string_view::npos) sentence.fields = text.substr(comma + 1);
  sentence.checksum = checksum;
  sentence.kind = KindOf(sentence.address);
  return sentence;
}

std::size_t StartIn(std::string_view text) {
  const std::size_t dollar = text.find('$');
  const std::size_t mark = text.substr(0, dollar).find('!');
  return mark != std::string_view::npos ? mark : dollar;
}

}  // namespace

bool IsFix(SentenceKind kind) { return kind >= SentenceKind::Gga && kind <= SentenceKind::Zda; }
bool IsDepth(SentenceKind kind) { return kind >= SentenceKind::Odc; }

std::optional<NmeaSentence> SentenceScan::Next() {
  const std::size_t start = StartIn(line_);
  if (start == std::string_view::npos) return std::nullopt;
  line_.remove_prefix(start + 1);
  const std::size_t star = line_.find('*');
  const std::string_view text = line_.substr(0, star);
  const std::optional<unsigned> told = star == std::string_view::npos ? std::nullopt : SumAt(line_, star);
  // Sentences with a "$" inside occur, and their checksum is right.
  if (told && (SumOf(text) == *told || IsSumOfCapitals(text, *told))) {
    line_.remove_prefix(star + 3);
    return Split(text, Checksum::Right);
  }
  if (const std::size_t next = StartIn(text); next != std::string_view::npos) {
    line_.remove_prefix(next);
    return Split(text.substr(0, next), Checksum::Missing);
  }
  if (star == std::string_view::npos) {
    line_ = {};
    return Split(Trimmed(text, " \t\""), Checksum::Missing);
  }
  line_.remove_prefix(star + 1);
  return Split(text, Checksum::Wrong);
}

NmeaFields::NmeaFields(std::string_view text) {
  std::size_t begin = 0;
  for (std::size_t i = 0; count_ < Most; ++i) {
    if (i < text.size() && text[i] != ',') continue;
    std::size_t end = i;
    while (begin < end && text[begin] == ' ') ++begin;
    while (begin < end && text[end - 1] == ' ') --end;
    fields_[count_++] = text.substr(begin, end - begin);
    if (i == text.size()) return;
    begin = i + 1;
  }
}

// Up to fifteen digits and the power of ten are 64-bit floats, and their quotient is the nearest to the
// number.
std::optional<FieldNumber> NumberOf(std::string_view field) {
  const bool isNegative = !field.empty() && field[0] == '-';
  if (!field.empty() && (isNegative || field[0] == '+')) field.remove_prefix(1);
  std::int64_t digits = 0;
  std::size_t count = 0;
  std::size_t point = field.size();
  for (std::size_t i = 0; i < field.size(); ++i) {
    if (field[i] == '.' && point == field.size()) {
      point = i;
      continue;
    }
    if (field[i] < '0' || field[i] > '9') return std::nullopt;
    if (count < MostDigits) digits = digits * 10 + (field[i] - '0');
    ++count;
  }
  if (count == 0) return std::nullopt;
  FieldNumber number;
  if (point < field.size()) number.decimals = static_cast<int>(field.size() - point - 1);
  if (count <= MostDigits) {
    number.value = static_cast<double>(digits) / PowersOfTen[static_cast<std::size_t>(number.decimals)];
  } else {
    const auto result =
        std::from_chars(field.data(), field.data() + field.size(), number.value, std::chars_format::fixed);
    if (result.ec != std::errc() || number.value > MostValue) return std::nullopt;
  }
  if (isNegative) number.value = -number.value;
  return number;
}

AddressKey KeyOf(std::string_view address) {
  AddressKey key = 0;
  for (std::size_t i = 0; i < address.size() && i < sizeof key; ++i)
    key |= static_cast<AddressKey>(static_cast<unsigned char>(Lower(address[i]))) << (8 * i);
  return key;
}

std::string AddressOf(AddressKey key) {
  std::string address;
  for (; key != 0; key >>= 8U) {
    const char c = static_cast<char>(key & 0xFFU);
    address += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  }
  return address;
}

}  // namespace sondrix
