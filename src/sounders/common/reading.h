#pragma once

#include "core/sounding_list.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

// What a source is recognised by: its content, never its name.
struct SourceHead {
  std::span<const std::uint8_t> bytes;  // from the start, all of a short file
  std::int64_t length = 0;              // of the whole source, bytes
  static constexpr std::size_t MaxBytes = 64 * 1024;

  std::string_view Text() const { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }
};

// What a reader may be told about its source. What isn't set is found out from the content.
struct ReadOptions {
  std::optional<std::uint8_t> channel;  // of recordings; none: the one whose frames carry depths
  std::vector<std::string> columns;     // of a table, by order
  // From the source's coordinates (easting and northing, or x and y as they stand) to longitude and latitude
  // in degrees; false where there is no such place. None: degrees, or what the source's head says.
  std::function<bool(double x, double y, double& longitude, double& latitude)> toDegrees;
  std::optional<bool> isFeet;                   // depths of a table
  bool isZUp = false;                           // depths of a table are heights
  std::function<double(double seconds)> toUtc;  // of a time without a zone; none: it is UTC
  std::string zoneName;                         // of toUtc, for the line that says what was assumed
};

// What a reader stepped over, counted.
enum class PassedOver : std::uint8_t {
  BadRows,         // rows or sentences that can't be understood
  WrongChecksums,  // sentences
  DamagedBytes,    // bytes between sound frames
  CutEnd,          // frames or rows that the end of the file cuts
  NoDepth,         // points without any depth
  LongLines,       // lines longer than any sounder writes
};
inline constexpr std::size_t PassedOverCount = 6;
struct PassedOverName {
  std::string_view key, text;  // of the report, and of lines: "3 bad rows"
};
const PassedOverName& NameOf(PassedOver what);

using PassedOverCounts = std::array<std::uint64_t, PassedOverCount>;

// The soundings of one trip, in the order of the source. Their index of the trip isn't set yet.
struct TripReading {
  std::string name;  // empty: the source's own file name
  SoundingList soundings;
};

// What a source holds.
struct Reading {
  std::vector<TripReading> trips;
  std::vector<std::string> takenFor;  // what columns, units, signs and zone were taken for, a sentence each
  std::vector<std::string> remarks;   // what a user should know of it, a sentence each
  // Latitude and longitude may stand the other way round: nothing in the source tells, other sources may.
  bool isOrderOpen = false;
  PassedOverCounts passedOver{};

  void PassOver(PassedOver what, std::uint64_t count = 1) {
    passedOver[static_cast<std::size_t>(what)] += count;
  }
};

// Why a source gives no soundings, in words for its line. What the operating system says is a Fault.
class CantRead : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The file isn't any more what it was when it was opened.
class ChangedMeanwhile : public CantRead {
 public:
  ChangedMeanwhile() : CantRead("it was changed while it was read") {}
};

// What goes on while sources are read, in any thread.
struct ReadWatch {
  std::function<bool()> isToEnd;              // asked before each read; then EndAsked is thrown
  std::atomic<std::int64_t>* read = nullptr;  // bytes of all sources so far

  void Add(std::int64_t bytes) const {
    if (read != nullptr) read->fetch_add(bytes, std::memory_order_relaxed);
  }
};

}  // namespace sondrix
