#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace sondrix {

// What is printed of a source, on two streams in one order: at once, or held back until its turn comes.
class Transcript {
 public:
  explicit Transcript(bool isHeld) : isHeld_(isHeld) {}
  void Print(std::FILE* stream, std::string text);
  // Prints what was held.
  void Release();

 private:
  struct Piece {
    std::FILE* stream;
    std::string text;
  };
  bool isHeld_;
  std::vector<Piece> pieces_;
};

}  // namespace sondrix
