#pragma once

#include "sounders/common/reading.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace sondrix {

// The soundings of a GPX file, from its elements as they come. Names are told with or without the prefix of
// their name space, and compared without regard to case.
class GpxPoints {
 public:
  GpxPoints(const ReadOptions& options, SoundingList& soundings, Reading& reading)
      : options_(options), soundings_(soundings), reading_(reading) {}

  // attributes: names and values in turn, closed by a null.
  void Open(std::string_view name, const char* const* attributes);
  void Text(std::string_view text);
  void Close(std::string_view name);
  // What is open will never be closed.
  void Drop();

  // Behind the last element: turns depths round where all are heights, and tells what was found. damage: what
  // was wrong first, if anything. CantRead where no point has a depth.
  void Finish(const std::string& damage);

 private:
  void OpenPoint(const char* const* attributes, bool isAlone);
  void ClosePoint();
  void ReadTime();
  void ReadDepth();

  const ReadOptions& options_;
  SoundingList& soundings_;
  Reading& reading_;
  Sounding point_;
  std::string text_;  // of the element that is collected
  enum class Collects : std::uint8_t { Nothing, Time, Depth } collects_ = Collects::Nothing;
  std::size_t level_ = 0, pointLevel_ = 0;  // elements open; the point's own, 0 outside of one
  bool isBad_ = false, hasDepth_ = false;   // of the point
  bool begins_ = true, wasAlone_ = false, assumedZone_ = false;
  std::uint64_t points_ = 0, below_ = 0, above_ = 0;  // of all; depths below 0, and above
  std::uint64_t unsetTimes_ = 0;
};

// Why reading ended before the source did.
struct GpxDamage {
  std::string text;
  std::uint64_t line = 0;
  std::int64_t offset = 0;   // bytes from where the parser began
  bool isAtEnd = false;      // the source ends within an element
  bool isStructure = false;  // tags that don't fit together
};

struct GpxParserCloser {
  void operator()(void* parser) const;
};

// One pass of the XML parser over bytes that come in blocks.
class GpxParser {
 public:
  // isResumed: the bytes begin with a point in the middle of a source.
  GpxParser(GpxPoints& points, bool isResumed);
  GpxParser(const GpxParser&) = delete;
  GpxParser& operator=(const GpxParser&) = delete;

  std::optional<GpxDamage> Parse(std::string_view bytes, bool isLast);

  // What the handlers of the parser call.
  void Open(const char* name, const char* const* attributes);
  void Text(std::string_view text);
  void Close(const char* name);
  void Note();  // something ended
  void Stop(const char* reason);

 private:
  GpxDamage Damage() const;

  GpxPoints& points_;
  std::unique_ptr<void, GpxParserCloser> parser_;
  std::exception_ptr thrown_;
  const char* reason_ = nullptr;
  std::size_t level_ = 0;
  // Bytes: given so far, put in front of them, and where the last that was understood began.
  std::int64_t given_ = 0, before_ = 0, noted_ = 0;
};

}  // namespace sondrix
