#pragma once

#include "core/run.h"
#include "jobs/big_buffer.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

// An output that grows record by record, in 8-bit bytes. It is held in pieces, so that growing neither moves
// what stands nor takes twice the memory.
class TextBody {
 public:
  void Add(std::string_view record);
  bool IsEmpty() const { return pieces_.empty(); }
  // What has been added, in one or more parts.
  std::vector<std::string_view> Parts() const;

 private:
  struct Piece {
    BigBuffer bytes;
    std::size_t size = 0, capacity = 0;
  };
  std::vector<Piece> pieces_;
};

// A file of a text job: a suffix behind the target's name, and what stands in it.
struct BodyFile {
  std::string_view suffix;
  std::string head;  // in front of the body
  const TextBody& body;
  bool isOptional = false;  // an empty one isn't written
};

// Writes them in their order; a failure is reported in the log line. Fault 55, with nothing written, where
// one of them is the run's own source.
void WriteBodies(Run& run, std::initializer_list<BodyFile> files);

}  // namespace sondrix
