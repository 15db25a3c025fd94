#pragma once

#include "core/files.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace sondrix {

class Outputs;
struct Settings;
struct SlFormat;
struct SlFrame;

// The bytes of a frame in its source.
struct CutSource {
  std::span<const std::uint8_t> frame;    // FrameSize bytes
  std::span<const std::uint8_t> body;     // up to the end of the body fields
  std::span<const std::uint8_t> samples;  // SampleCount bytes
};

// The cropped echogram of a run: an SL2 file of the selected channel's frames, whatever the source's layout.
// It is built in memory and written once, at the closing.
class SlCut {
 public:
  // Replaces the file at path by an empty one. sourceLength bounds the cropped file, as does MaxLength.
  void Open(Outputs& outputs, std::string_view path, std::int64_t sourceLength);
  bool IsOpen() const { return file_.IsOpen(); }

  // Adds a frame; UseRad and HideCut are obeyed. Fault 9 for a frame that doesn't fit, which leaves those
  // before it whole.
  void Add(const CutSource& source, const SlFrame& frame, const SlFormat& format, const Settings& settings);

  // Writes all but the last frame, each taken as frameLength bytes long, and closes the file.
  void Close(Outputs& outputs, std::int64_t frameLength);

  static constexpr std::int64_t MaxLength = 200'000'000;

 private:
  struct Free {
    void operator()(std::uint8_t* bytes) const { std::free(bytes); }
  };
  void Put(std::int64_t at, std::span<const std::uint8_t> bytes);
  void Put16(std::int64_t at, std::uint32_t value);
  void Put32(std::int64_t at, std::uint32_t value);
  void MoveToSl2(std::int64_t at, const CutSource& source, const SlFrame& frame);

  std::string path_;
  OutputFile file_;
  std::unique_ptr<std::uint8_t[], Free> buffer_;  // zeros where nothing was put
  std::int64_t size_ = 0;
  std::int64_t count_ = 0;  // frames so far
};

}  // namespace sondrix
