#pragma once

#include "core/run.h"
#include "jobs/big_buffer.h"

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

// Writes head and body under the target's name with that suffix; a failure is reported in the log line. Fault
// 55 where the file is the run's own source.
void WriteBody(Run& run, std::string_view suffix, std::string_view head, const TextBody& body);

}  // namespace sondrix
