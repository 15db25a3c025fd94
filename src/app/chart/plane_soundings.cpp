#include "app/chart/plane_soundings.h"

#include "chart/utm_zone.h"
#include "core/files.h"
#include "core/parallel.h"
#include "survey/far_places.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace sondrix {
namespace {

// A block of a trip's soundings and where those that are taken go.
struct Piece {
  std::span<const Sounding> soundings;
  bool beginsTrip = false;
  std::size_t begin = 0;  // of what is made of them
};

bool IsTaken(const Sounding& sounding, const FarPlaces& far) {
  return sounding.fate == Fate::Used && sounding.HasPosition() && !far.Hold(sounding);
}

std::vector<Piece> PiecesOf(const Survey& survey) {
  std::vector<Piece> pieces;
  for (const Trip& trip : survey.trips) {
    for (std::size_t b = 0; b < trip.soundings.BlockCount(); ++b) {
      pieces.push_back({trip.soundings.Block(b), b == 0});
    }
  }
  return pieces;
}

// A line that begins where nothing is taken begins at the next that is, also in a later piece: of all pieces
// each tells how it ends, and the next one that has any takes that over.
struct PieceEnd {
  std::size_t count = 0;
  bool leavesBegin = false;  // behind its last one
};

PieceEnd CountTaken(const Piece& piece, const FarPlaces& far) {
  PieceEnd end;
  for (const Sounding& sounding : piece.soundings) {
    end.leavesBegin = end.leavesBegin || sounding.beginsLine;
    if (!IsTaken(sounding, far)) continue;
    ++end.count;
    end.leavesBegin = false;
  }
  return end;
}

void PutPiece(const Piece& piece, bool begins, const FarPlaces& far, const Transform& toPlane,
              PlaneSounding* to) {
  for (const Sounding& sounding : piece.soundings) {
    begins = begins || sounding.beginsLine;
    if (!IsTaken(sounding, far)) continue;
    *to = {.depth = sounding.depth, .beginsLine = begins};
    if (!toPlane(sounding.longitude, sounding.latitude, to->x, to->y)) to->x = Unknown;
    ++to;
    begins = false;
  }
}

// Without those that have no place in the projection.
void Tidy(std::vector<PlaneSounding>& soundings) {
  bool begins = false;
  auto kept = soundings.begin();
  for (const PlaneSounding& sounding : soundings) {
    begins = begins || sounding.beginsLine;
    if (std::isnan(sounding.x)) continue;
    *kept = sounding;
    kept->beginsLine = begins;
    begins = false;
    ++kept;
  }
  soundings.erase(kept, soundings.end());
}

}  // namespace

std::string ZoneOfMost(const Survey& survey, const FarPlaces& far) {
  UtmZoneCount zones;
  for (const Piece& piece : PiecesOf(survey)) {
    for (const Sounding& sounding : piece.soundings) {
      if (IsTaken(sounding, far)) zones.Add(sounding.longitude, sounding.latitude);
    }
  }
  return zones.Crs();
}

std::vector<PlaneSounding> PlaneSoundingsOf(const Survey& survey, const FarPlaces& far,
                                            const PlaneOptions& options) {
  std::vector<Piece> pieces = PiecesOf(survey);
  std::vector<bool> begins(pieces.size());
  std::size_t count = 0;
  bool isToBegin = false;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    isToBegin = isToBegin || pieces[i].beginsTrip;
    begins[i] = isToBegin;
    const PieceEnd end = CountTaken(pieces[i], far);
    pieces[i].begin = count;
    count += end.count;
    isToBegin = end.leavesBegin || (isToBegin && end.count == 0);
  }
  std::vector<PlaneSounding> soundings(count);
  InParallel(pieces.size(), options.threads, [&] {
    return [&, toPlane = options.makeToPlane()](std::size_t index) {
      if (options.isToEnd && options.isToEnd()) throw EndAsked();
      PutPiece(pieces[index], begins[index], far, toPlane, soundings.data() + pieces[index].begin);
      if (options.done != nullptr) *options.done += static_cast<std::int64_t>(pieces[index].soundings.size());
    };
  });
  Tidy(soundings);
  return soundings;
}

}  // namespace sondrix
