#include "exports/xyz.h"

#include <atomic>

namespace sondrix {

std::uint64_t WriteXyz(const Survey& survey, const ExportRun& run,
                       const std::function<Transform()>& makeToPlane, OutputFile& file) {
  std::atomic<std::uint64_t> leftOut = 0;
  const auto makeFormat = [&]() -> FormatPiece {
    return [&leftOut, toPlane = makeToPlane()](const SurveyPiece&, std::span<const Sounding> soundings,
                                               RowText& rows) {
      for (const Sounding& sounding : soundings) {
        if (sounding.fate != Fate::Used || !sounding.HasPosition()) continue;
        double easting = 0, northing = 0;
        if (!toPlane(sounding.longitude, sounding.latitude, easting, northing)) {
          ++leftOut;
          continue;
        }
        char* to = rows.Room(3 * (NumberRoom + 1));
        to = PutNumber(to, easting, 2, false);
        *to++ = ' ';
        to = PutNumber(to, northing, 2, false);
        *to++ = ' ';
        to = PutNumber(to, static_cast<double>(sounding.depth), 3, false);
        *to++ = '\n';
        rows.EndAt(to);
      }
    };
  };
  WritePieces(survey, run, makeFormat, file);
  return leftOut;
}

}  // namespace sondrix
