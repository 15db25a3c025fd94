#include "app/batch/transcript.h"

#include "platform/platform.h"

#include <utility>

namespace sondrix {

namespace {

// On a screen both streams are one.
void Put(std::FILE* stream, const std::string& text) {
  if (stream == stderr) std::fflush(stdout);
  PutText(stream, text);
}

}  // namespace

void Transcript::Print(std::FILE* stream, std::string text) {
  if (isHeld_) {
    pieces_.push_back({stream, std::move(text)});
  } else {
    Put(stream, text);
  }
}

void Transcript::Release() {
  for (const Piece& piece : pieces_) Put(piece.stream, piece.text);
  pieces_.clear();
}

}  // namespace sondrix
