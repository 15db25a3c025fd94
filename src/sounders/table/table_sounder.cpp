#include "sounders/table/table_sounder.h"

#include "core/files.h"
#include "sounders/table/table_cells.h"
#include "sounders/table/table_channel.h"
#include "sounders/table/table_clock.h"
#include "sounders/table/table_layout.h"
#include "sounders/table/table_names.h"
#include "sounders/table/table_places.h"
#include "sounders/table/table_rows.h"
#include "sounders/table/table_shape.h"
#include "sounders/table/table_taker.h"

#include <algorithm>

namespace sondrix {
namespace {

// A start of which fewer lines than these are whole is too short to tell the shape of a table.
constexpr std::ptrdiff_t FewLines = 4;
constexpr std::size_t LongStart = std::size_t{2} << 20;

// What a text is that no table begins with: markup, maps, waypoints and tracks of the map program, the head
// of an ocean archive's table.
constexpr std::string_view OtherStarts[] = {"<",    "{",    "[",    "OziExplorer",
                                            "%PDF", "GIF8", "RIFF", "PK\x03\x04"};
constexpr std::string_view Archive = "/begin_header";

std::string_view WithoutBlanks(std::string_view text) {
  text.remove_prefix(EncodingOf(text).markBytes);
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
  return text;
}

// Bytes that no text has, in a share that no slip explains.
bool IsBinary(std::string_view text) {
  std::size_t zeros = 0, controls = 0;
  for (const char c : text) {
    if (c == '\0') ++zeros;
    if (static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r') ++controls;
  }
  return zeros * 200 > text.size() || controls * 20 > text.size();
}

// A sentence, "$" or "!", an address of three or more capitals or digits, and a comma, anywhere in a line.
bool HasSentence(std::string_view line) {
  for (std::size_t at = line.find_first_of("$!"); at != std::string_view::npos;
       at = line.find_first_of("$!", at + 1)) {
    std::size_t end = at + 1;
    while (end < line.size() &&
           ((line[end] >= 'A' && line[end] <= 'Z') || (line[end] >= '0' && line[end] <= '9')))
      ++end;
    if (end - at > 4 && end < line.size() && line[end] == ',') return true;
  }
  return false;
}

bool IsMapOrLog(std::string_view text) {
  std::size_t lines = 0, sentences = 0;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = TrimmedCell(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.empty()) continue;
    if (line.front() == '[' && line.back() == ']') return true;
    ++lines;
    if (HasSentence(line)) ++sentences;
  }
  return sentences * 2 > lines;
}

std::string StartOf(std::string_view path, bool& isWhole) {
  InputFile file(path);
  std::string start;
  const auto read = [&](std::size_t most) {
    const auto length =
        static_cast<std::size_t>(std::min<std::int64_t>(file.Length(), static_cast<std::int64_t>(most)));
    start.resize(length);
    start.resize(file.ReadAt(0, std::span(reinterpret_cast<std::uint8_t*>(start.data()), length)));
    isWhole = static_cast<std::int64_t>(start.size()) >= file.Length();
  };
  read(SourceHead::MaxBytes);
  const auto isEnd = [](char c) { return c == '\n' || c == '\r'; };
  if (!isWhole && std::count_if(start.begin(), start.end(), isEnd) < FewLines) read(LongStart);
  return start;
}

}  // namespace

bool IsTable(const SourceHead& head) {
  const std::string_view text = head.Text();
  const std::string_view start = WithoutBlanks(text);
  if (start.empty()) return false;
  if (start.starts_with(Archive)) return true;
  for (const std::string_view other : OtherStarts)
    if (start.starts_with(other)) return false;
  const bool isWide = EncodingOf(text).encoding != TableEncoding::Bytes;
  if (!isWide && (IsBinary(text) || IsMapOrLog(text))) return false;
  const bool isWhole = static_cast<std::int64_t>(head.bytes.size()) >= head.length;
  const TableShape shape = ShapeOf(text, isWhole);
  if (shape.fitting == 0) {  // a head alone, which a line of words isn't
    return shape.head.size() >= 3 &&
           std::count_if(shape.head.begin(), shape.head.end(), [](const std::string& name) {
             return ColumnNameOf(name).meaning != Meaning::Unknown;
           }) >= 2;
  }
  // Other lines may stand in front of a table and in it.
  return shape.fitting * 2 >= shape.lines || (!shape.head.empty() && shape.fitting >= 2);
}

void ReadTable(std::string_view path, const ReadOptions& options, const ReadWatch& watch, Reading& reading) {
  bool isWhole = false;
  const std::string start = StartOf(path, isWhole);
  if (WithoutBlanks(start).starts_with(Archive))
    throw CantRead("a table of an ocean archive, with fields named in a head of its own, isn't read");
  const TableShape shape = ShapeOf(start, isWhole);
  if (shape.fitting == 0 && !shape.head.empty() && isWhole) throw CantRead("a head without rows");
  TableLayout layout = LayoutOf(shape, options);
  const std::optional<std::uint8_t> channel = ChooseChannel(path, shape, layout, options, watch);

  TableRows rows(path, shape, layout, watch);
  TableTaker taker(layout, options, channel, reading);
  TableRow row;
  while (rows.Next(row)) taker.Take(row);
  reading.PassOver(PassedOver::BadRows, rows.BadRows());
  reading.PassOver(PassedOver::CutEnd, rows.CutRows());
  reading.PassOver(PassedOver::LongLines, rows.LongLines());
  taker.Finish();
}

}  // namespace sondrix
