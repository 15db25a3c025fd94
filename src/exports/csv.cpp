#include "exports/csv.h"

#include "core/files.h"

#include <string>
#include <string_view>

namespace sondrix {
namespace {

constexpr std::string_view Head = "latitude,longitude,depth,time,trip,recorded,fate\n";

// A field between its commas.
std::string Field(std::string_view text) {
  const bool isPlain = text.find_first_of(",\"\r\n") == std::string_view::npos &&
                       (text.empty() || (text.front() != ' ' && text.back() != ' '));
  if (isPlain) return "," + std::string(text) + ",";
  std::string field = ",\"";
  for (const char c : text) field.append(c == '"' ? 2 : 1, c);
  return field += "\",";
}

constexpr std::size_t RowRoom = 5 * (NumberRoom + 1) + 16;  // all but the name

void PutRow(const Sounding& sounding, std::string_view name, RowText& rows) {
  char* to = rows.Room(RowRoom + name.size());
  to = PutDegrees(to, sounding.latitude);
  *to++ = ',';
  to = PutDegrees(to, sounding.longitude);
  *to++ = ',';
  to = PutMetres(to, sounding.depth);
  *to++ = ',';
  to = PutSeconds(to, sounding.time);
  to = PutChars(to, name);
  to = PutMetres(to, sounding.recorded);
  *to++ = ',';
  to = PutChars(to, NameOf(sounding.fate));
  *to++ = '\n';
  rows.EndAt(to);
}

}  // namespace

void WriteCsv(const Survey& survey, const ExportRun& run, OutputFile& file) {
  file.Write(Head);
  const auto makeFormat = [&survey]() -> FormatPiece {
    return [&survey](const SurveyPiece& piece, std::span<const Sounding> soundings, RowText& rows) {
      const std::string name = Field(survey.trips[piece.trip].name);
      for (const Sounding& sounding : soundings) PutRow(sounding, name, rows);
    };
  };
  WritePieces(survey, run, makeFormat, file);
}

}  // namespace sondrix
