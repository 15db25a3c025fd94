#include "jobs/text_summary.h"

#include "core/channel.h"
#include "core/files.h"
#include "core/look_plan.h"
#include "core/number_text.h"
#include "core/rounding.h"
#include "core/text.h"
#include "jobs/job_log.h"
#include "jobs/job_mp.h"
#include "jobs/job_table.h"
#include "jobs/text_source.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace sondrix {
namespace {

constexpr std::size_t ColChannel = 0, ColFeet = 5, ExportColumns = 14;
constexpr std::size_t ColMetres = 2, PlainColumns = 3;
constexpr std::size_t DbtFeet = 1;

struct TextLook {
  TextSummary summary;
  void (*takeLine)(TextLook& look, std::string_view line) = nullptr;
  Columns columns;
  std::array<ChannelCount, Channels.size()> counts;  // of an export, in the order of Channels
  std::int64_t seen = 0, lines = 0;                  // bytes and whole lines that were looked at
  bool endsInCr = false;                             // the piece before did, whose LF may follow
};

void TakeDepth(TextLook& look, double metres) {
  ++look.summary.soundings;
  if (!(metres > 0) || !std::isfinite(metres)) return;
  TextSummary& summary = look.summary;
  summary.leastDepth = std::min(metres, summary.leastDepth.value_or(metres));
  summary.greatestDepth = std::max(metres, summary.greatestDepth.value_or(metres));
}

void TakeRow(TextLook& look, std::string_view line) {
  const auto separator = SeparatorOf(line);
  if (!separator) return;
  look.columns.Split(line, *separator, ExportColumns);
  if (look.columns.Count() == PlainColumns) {
    const std::string_view depth = look.columns.At(ColMetres);
    if (!IsNumeric(depth)) return;
    look.summary.kind = TextKind::ThreeColumns;
    return TakeDepth(look, LocParse(depth));
  }
  if (look.columns.Count() <= ColFeet) return;
  for (std::size_t i = 0; i < Channels.size(); ++i) {
    if (!Channels[i].isInTables || look.columns.At(ColChannel) != Channels[i].name) continue;
    const double feet = ValOf(look.columns.At(ColFeet));
    ++look.counts[i].frames;
    if (feet > 0) ++look.counts[i].withDepth;
    TakeDepth(look, feet * MetresPerFoot);
  }
}

void TakeSentence(TextLook& look, std::string_view line) {
  if (!line.starts_with("$SDDBT,")) return;
  look.columns.Split(line, ',', DbtFeet + 1);
  TakeDepth(look, ValOf(look.columns.At(DbtFeet)) * MetresPerFoot);
}

void TakeMapLine(TextLook& look, std::string_view line) {
  constexpr std::string_view key = "label=";
  const bool isLabel =
      line.size() > key.size() && std::ranges::equal(line.substr(0, key.size()), key, {}, Lower);
  if (isLabel && IsNumeric(line.substr(key.size()))) TakeDepth(look, LocParse(line.substr(key.size())));
}

// The whole lines of a piece of the file; returns the bytes that they take. A line that outgrows the piece is
// cut there.
std::size_t TakeLines(TextLook& look, std::string_view text, bool isLast) {
  std::size_t taken = look.endsInCr && text.starts_with('\n') ? 1 : 0;
  while (taken < text.size()) {
    const std::size_t end = text.find_first_of("\r\n", taken);
    if (end == std::string_view::npos && !isLast && taken > 0) break;
    const std::string_view line = text.substr(taken, end - taken);
    if (!line.empty()) look.takeLine(look, line);
    taken = end == std::string_view::npos ? text.size() : end + 1;
    if (taken < text.size() && text[taken - 1] == '\r' && text[taken] == '\n') ++taken;
    ++look.lines;
  }
  look.endsInCr = taken > 0 && text[taken - 1] == '\r';
  look.seen += static_cast<std::int64_t>(taken);
  return taken;
}

}  // namespace

TextSummary LookAtText(std::string_view path, std::chrono::milliseconds time) {
  const LookPlan plan(time);
  InputFile file(path);
  TextLook look;
  const auto run = JobOf(path).run;
  look.summary.kind = run == JobLog ? TextKind::Log : run == JobMp ? TextKind::Map : TextKind::Export;
  look.takeLine = run == JobLog ? TakeSentence : run == JobMp ? TakeMapLine : TakeRow;
  const std::int64_t length = look.summary.bytes = file.Length();
  std::string buffer(static_cast<std::size_t>(LookPlan::PieceLength), '\0');
  const auto read = [&](std::int64_t place) {
    const std::size_t count =
        file.ReadAt(place, {reinterpret_cast<std::uint8_t*>(buffer.data()), buffer.size()});
    return std::string_view(buffer).substr(0, count);
  };
  std::int64_t position = 0;
  while (position < length && (position == 0 || plan.MayStart())) {
    const std::string_view text = read(position);
    if (text.empty()) break;
    const bool isLast = position + static_cast<std::int64_t>(text.size()) >= length;
    position += static_cast<std::int64_t>(TakeLines(look, text, isLast));
  }
  look.summary.isWhole = position >= length;
  if (!look.summary.isWhole) {
    plan.VisitPlaces(position, length, [&](std::int64_t place) {
      std::string_view text = read(place);
      const std::size_t first = std::min(text.find_first_of("\r\n"), text.size());
      text.remove_prefix(first);
      TakeLines(look, text, false);
    });
  }
  for (std::size_t i = 0; i < Channels.size(); ++i) {
    look.counts[i].channel = ChannelByte(Channels[i].channel);
    if (look.counts[i].frames > 0) look.summary.channels.push_back(look.counts[i]);
  }
  look.summary.lines = look.lines;
  if (!look.summary.isWhole && look.seen > 0) {
    look.summary.lines = static_cast<std::int64_t>(
        static_cast<double>(look.lines) * static_cast<double>(length) / static_cast<double>(look.seen));
  }
  return look.summary;
}

}  // namespace sondrix
