#pragma once

#include "core/files.h"
#include "core/run_result.h"

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

class Window;

// "ошибка WriteF: " + number + ". " + description, the report of an output that couldn't be written.
std::string LostLine(const Fault& fault);

// What runs write. Each output is looked at before its first byte, so that none takes the place of the run's
// own source, and each is recorded. A copy keeps the guard and has a record of its own.
class Outputs {
 public:
  // A run of this source begins: the record starts anew, and a source that is chosen later changes nothing.
  void Begin(std::string_view source);

  // Fault 55 for a path that leads to the source, whatever the way there, or to what has its name by now.
  void Guard(std::string_view path) const;

  // An output that a job writes piece by piece, in its place from the start or only at its end. It counts as
  // lost until SetWhole.
  OutputFile Open(std::string_view path);
  GrowingFile Grow(std::string_view path);
  void SetWhole(std::string_view path);
  // It is gone again.
  void Forget(std::string_view path);

  // An output that is written at once, from 8-bit bytes. After a fault none stays that ends too early.
  void Write(std::string_view path, std::span<const std::string_view> pieces);

  // The same with CR LF behind it, but a fault is recorded and reported in the log line, and the caller goes
  // on.
  void WriteBytesF(std::string_view path, std::span<const std::string_view> pieces, Window& window);
  // The same for UTF-8, which goes out in the 8-bit code page.
  void WriteF(std::string_view path, std::string_view text, Window& window);

  // Moves what has been recorded since the run began into its result.
  void TakeInto(RunResult& result);

 private:
  RunOutput& RecordOf(std::string_view path);
  void Expect(std::string_view path);
  void Lose(std::string_view path, const Fault& fault, Window& window);

  std::string sourcePath_;
  std::optional<FileId> source_;  // of the run's beginning
  std::vector<RunOutput> record_;
  std::map<std::string, std::size_t, std::less<>> places_;  // in the record, by path
  std::vector<Fault> lost_;
};

}  // namespace sondrix
