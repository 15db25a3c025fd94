#pragma once

#include "sounders/common/reading.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace sondrix {

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
