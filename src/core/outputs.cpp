#include "core/outputs.h"

#include "core/code_page.h"
#include "core/window.h"

#include <utility>

namespace sondrix {

std::string LostLine(const Fault& fault) {
  return "ошибка WriteF: " + std::to_string(fault.Number()) + ". " + std::string(fault.Description());
}

void Outputs::Begin(std::string_view source) {
  sourcePath_ = source;
  source_ = KnownIdOf(source);
  record_.clear();
  places_.clear();
  lost_.clear();
}

void Outputs::Guard(std::string_view path) const {
  const std::optional<FileId> id = KnownIdOf(path);
  if (id && (id == source_ || id == KnownIdOf(sourcePath_))) {
    throw Fault(FaultNumber::FileAlreadyOpen, std::string(path));
  }
}

RunOutput& Outputs::RecordOf(std::string_view path) {
  const auto [place, isNew] = places_.emplace(path, record_.size());
  if (isNew) record_.push_back({std::string(path), false});
  return record_[place->second];
}

void Outputs::Expect(std::string_view path) {
  RecordOf(path).isWhole = false;
  Guard(path);
}

OutputFile Outputs::Open(std::string_view path) {
  Expect(path);
  return OutputFile(path);
}

GrowingFile Outputs::Grow(std::string_view path) {
  Expect(path);
  Guard(GrowingName(path));
  return GrowingFile(path);
}

void Outputs::SetWhole(std::string_view path) { RecordOf(path).isWhole = true; }

void Outputs::Forget(std::string_view path) {
  const auto found = places_.find(path);
  if (found == places_.end()) return;
  record_[found->second].path.clear();
  places_.erase(found);
}

void Outputs::Write(std::string_view path, std::span<const std::string_view> pieces) {
  Open(path).Complete(pieces);
  SetWhole(path);
}

void Outputs::Lose(std::string_view path, const Fault& fault, Window& window) {
  lost_.emplace_back(static_cast<FaultNumber>(fault.Number()), std::string(path));
  window.SetAtt(LostLine(fault), LineKind::Fault);
}

void Outputs::WriteBytesF(std::string_view path, std::span<const std::string_view> pieces, Window& window) {
  try {
    std::vector<std::string_view> all(pieces.begin(), pieces.end());
    all.emplace_back("\r\n");
    Write(path, all);
  } catch (...) {
    Lose(path, CaughtFault(), window);
  }
}

void Outputs::WriteF(std::string_view path, std::string_view text, Window& window) {
  try {
    const std::string bytes = ToCodePage(text);
    const std::string_view piece = bytes;
    WriteBytesF(path, std::span(&piece, 1), window);
  } catch (...) {
    Lose(path, CaughtFault(), window);
  }
}

void Outputs::TakeInto(RunResult& result) {
  result.outputs = std::exchange(record_, {});
  std::erase_if(result.outputs, [](const RunOutput& output) { return output.path.empty(); });
  result.lost = std::exchange(lost_, {});
  places_.clear();
}

}  // namespace sondrix
