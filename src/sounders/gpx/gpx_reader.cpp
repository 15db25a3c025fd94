#include "sounders/gpx/gpx_reader.h"

#include "core/fault.h"
#include "core/files.h"
#include "core/text.h"
#include "sounders/gpx/gpx_points.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace sondrix {

namespace {

constexpr std::size_t BlockSize = 64 * 1024;
constexpr std::int64_t LongestTag = 4096;  // bytes; a longer rest at the end isn't one that was cut
constexpr int MostDamages = 1000;          // more make no sense of the points between them

// The blocks of a source in order, from wherever reading goes on.
class Blocks {
 public:
  Blocks(std::string_view path, const ReadWatch& watch)
      : file_(path, watch.isToEnd), watch_(watch), buffer_(BlockSize) {}

  // The bytes from an offset on; none behind the end. Faults as those of LineReader.
  std::string_view At(std::int64_t offset) {
    const auto wanted = static_cast<std::size_t>(
        std::min<std::int64_t>(static_cast<std::int64_t>(buffer_.size()), file_.Length() - offset));
    if (wanted == 0) return {};
    if (file_.ReadAt(offset, std::span(buffer_.data(), wanted)) < wanted) throw Fault(FaultNumber::PastEnd);
    const std::int64_t end = offset + static_cast<std::int64_t>(wanted);
    watch_.Add(std::max<std::int64_t>(0, end - seen_));
    seen_ = std::max(seen_, end);
    return {reinterpret_cast<const char*>(buffer_.data()), wanted};
  }
  std::int64_t Length() const { return file_.Length(); }
  bool HasChanged() const { return file_.HasChanged(); }

 private:
  InputFile file_;
  const ReadWatch& watch_;
  std::vector<std::uint8_t> buffer_;
  std::int64_t seen_ = 0;  // up to where bytes were counted
};

// Where the next point begins from an offset on, the length of the source where none does. The longest tag
// is found across two blocks too.
std::int64_t NextPoint(Blocks& blocks, std::int64_t offset) {
  static constexpr std::string_view tags[] = {"<trkpt", "<rtept", "<wpt"};
  constexpr std::int64_t overlap = 8;
  while (offset < blocks.Length()) {
    const std::string_view text = blocks.At(offset);
    std::size_t first = std::string_view::npos;
    for (const std::string_view tag : tags) first = std::min(first, text.find(tag));
    if (first != std::string_view::npos) return offset + static_cast<std::int64_t>(first);
    const auto length = static_cast<std::int64_t>(text.size());
    offset += length > overlap && offset + length < blocks.Length() ? length - overlap : length;
  }
  return blocks.Length();
}

// Reads from an offset, 0 or that of a point, to the end or the next damage.
std::optional<GpxDamage> ParseFrom(Blocks& blocks, std::int64_t begin, GpxPoints& points) {
  GpxParser parser(points, begin > 0);
  std::int64_t offset = begin;
  for (;;) {
    const std::string_view block = blocks.At(offset);
    offset += static_cast<std::int64_t>(block.size());
    const bool isLast = offset >= blocks.Length();
    if (std::optional<GpxDamage> damage = parser.Parse(block, isLast); damage || isLast) return damage;
  }
}

}  // namespace

bool IsGpx(const SourceHead& head) {
  // Letters of UTF-16 have a zero beside them.
  std::string text;
  for (const char c : head.Text()) {
    if (c != '\0') text += Lower(c);
  }
  const std::size_t first = text.find_first_not_of(" \t\r\n\xEF\xBB\xBF\xFF\xFE");
  if (first == std::string::npos || text[first] != '<') return false;
  for (std::size_t at = text.find("gpx", first); at != std::string::npos; at = text.find("gpx", at + 1)) {
    // "<gpx" or "<x:gpx", the element's name at its end.
    const std::size_t open = text.find_last_of("<> \t\r\n", at);
    const bool isTag = open != std::string::npos && text[open] == '<' &&
                       (open + 1 == at || text[at - 1] == ':') && text[open + 1] != '/';
    const std::size_t behind = at + 3;
    if (isTag &&
        (behind == text.size() || std::string_view(" \t\r\n>/").find(text[behind]) != std::string::npos))
      return true;
  }
  return false;
}

void ReadGpx(std::string_view path, const ReadOptions& options, const ReadWatch& watch, Reading& reading) {
  TripReading& trip = reading.trips.emplace_back();
  Blocks blocks(path, watch);
  GpxPoints points(options, trip.soundings, reading);
  std::string firstDamage;
  std::int64_t begin = 0;
  for (int damages = 0; begin < blocks.Length() || damages == 0; ++damages) {
    const std::optional<GpxDamage> damage = ParseFrom(blocks, begin, points);
    if (!damage) break;
    points.Drop();
    if (damages == 0) firstDamage = "line " + std::to_string(damage->line) + ": " + damage->text;
    const std::int64_t from = begin + damage->offset;
    if (damage->isAtEnd && blocks.Length() - from < LongestTag) {
      reading.PassOver(PassedOver::CutEnd);
      break;
    }
    const std::int64_t next =
        damages == MostDamages ? blocks.Length() : NextPoint(blocks, std::max(from, begin + 1));
    // Where reading goes on in the middle the tags don't fit together at the end, which is no damage.
    if (damages == 0 || !damage->isStructure)
      reading.PassOver(PassedOver::DamagedBytes, static_cast<std::uint64_t>(next - from));
    begin = next;
  }
  if (blocks.HasChanged()) throw ChangedMeanwhile();
  trip.soundings.Finish();
  points.Finish(firstDamage);
}

}  // namespace sondrix
