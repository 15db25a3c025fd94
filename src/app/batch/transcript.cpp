#include "app/batch/transcript.h"

#include "platform/platform.h"

#include <utility>

namespace sondrix {

void Transcript::Print(std::FILE* stream, std::string text) {
  if (isHeld_) {
    pieces_.push_back({stream, std::move(text)});
  } else {
    PutText(stream, text);
  }
}

void Transcript::Release() {
  for (const Piece& piece : pieces_) PutText(piece.stream, piece.text);
  pieces_.clear();
}

}  // namespace sondrix
