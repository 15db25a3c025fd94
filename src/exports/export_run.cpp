#include "exports/export_run.h"

#include "core/files.h"
#include "exports/ordered_text.h"

#include <vector>

namespace sondrix {

void ExportRun::EndIfAsked() const {
  if (isToEnd && isToEnd()) throw EndAsked();
}

void WritePieces(const Survey& survey, const ExportRun& run, const std::function<FormatPiece()>& makeFormat,
                 OutputFile& file) {
  std::vector<SurveyPiece> pieces;
  for (std::size_t t = 0; t < survey.trips.size(); ++t) {
    const std::size_t blocks = survey.trips[t].soundings.BlockCount();
    for (std::size_t b = 0; b < blocks; ++b) pieces.push_back({t, b});
  }
  const auto soundingsOf = [&](std::size_t item) {
    return survey.trips[pieces[item].trip].soundings.Block(pieces[item].block);
  };
  const auto makeItemFormat = [&]() -> FormatItem {
    return [&, format = makeFormat()](std::size_t item, RowText& rows) {
      const std::span<const Sounding> soundings = soundingsOf(item);
      format(pieces[item], soundings, rows);
      run.Advance(soundings.size());
    };
  };
  WriteInOrder({pieces.size(), [&](std::size_t item) { return soundingsOf(item).size(); }, makeItemFormat},
               run, file);
}

}  // namespace sondrix
