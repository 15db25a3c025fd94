#pragma once

#include "sounders/reading.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace sondrix {

// What a source is recognised by: its content, never its name.
struct SourceHead {
  std::span<const std::uint8_t> bytes;  // from the start, all of a short file
  std::int64_t length = 0;              // of the whole source, bytes
  static constexpr std::size_t MaxBytes = 64 * 1024;

  std::string_view Text() const { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }
};

// A kind of source. The first of the table that recognises a head reads it.
struct SounderFormat {
  std::string_view name;  // as the report has it
  bool (*recognises)(const SourceHead& head);
  // Faults as of the operating system; CantRead where nothing of use is in it; EndAsked.
  void (*read)(std::string_view path, const ReadOptions& options, const ReadWatch& watch, Reading& reading);
  bool isGuess = false;  // other texts look like it too: that it can't be read need not mean a damage
};
std::span<const SounderFormat> SounderFormats();

// The format of a source, none where no reader knows it. Faults as of the operating system.
const SounderFormat* Recognise(std::string_view path);

}  // namespace sondrix
