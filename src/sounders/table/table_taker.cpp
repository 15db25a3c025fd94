#include "sounders/table/table_taker.h"

#include "geo/mercator.h"
#include "sounders/common/calendar.h"
#include "sounders/table/table_angle.h"
#include "sounders/table/table_cells.h"
#include "sounders/table/table_guess.h"
#include "sounders/table/table_places.h"
#include "sounders/table/table_stats.h"

#include <algorithm>
#include <cmath>

namespace sondrix {
namespace {

constexpr double LargestDepth = 1e9;         // metres, in a table of our own, which keeps what was read
constexpr double SounderReach = 20'037'508;  // metres from the equator and the zero meridian
constexpr int KeptDigits = 8;
constexpr std::size_t OpenTrips = 16;

bool IsMarker(double value) { return std::fabs(value) == 9999 || value == -999 || std::fabs(value) == 99999; }

}  // namespace

TableTaker::TableTaker(const TableLayout& layout, const ReadOptions& options,
                       std::optional<std::uint8_t> channel, Reading& reading)
    : layout_(layout), options_(options), channel_(channel), reading_(reading), clock_(layout, options) {
  if (!layout_.isOwn) reading_.trips.emplace_back();
}

// A place, or none where none is stored; false for numbers that are no place.
bool TableTaker::TakeDegrees(double latitude, double longitude, Sounding& sounding) {
  const double north = std::fabs(latitude);
  double east = std::fabs(longitude);
  if (east > 180 && east <= 360 && north <= 90) {
    longitude -= std::copysign(360, longitude);
    east = std::fabs(longitude);
  }
  if (north > 90 || east > 180) {
    if (north > 180 || east > 90) return false;
    ++exchanged_;
  } else if (east > 90) {
    ++sure_;
  }
  ++placed_;
  sounding.latitude = KeptDegrees(latitude);
  sounding.longitude = KeptDegrees(longitude);
  return true;
}

bool TableTaker::TakePlace(const TableRow& row, Sounding& sounding) {
  double first = row.Number(Slot::First), second = row.Number(Slot::Second);
  // Without a fix sounders write zeros.
  if (std::isnan(first) || std::isnan(second) || (first == 0 && second == 0)) return true;
  switch (layout_.place) {
    case PlaceForm::Degrees:
      break;
    case PlaceForm::Minutes: {
      const std::optional<double> latitude = DegreesOfNmea(first), longitude = DegreesOfNmea(second);
      if (!latitude || !longitude) return false;
      first = *latitude;
      second = *longitude;
      break;
    }
    case PlaceForm::DegreesE7:
      first /= 1e7;
      second /= 1e7;
      break;
    case PlaceForm::SounderMetres:
      if (std::fabs(first) > SounderReach || std::fabs(second) > SounderReach) return false;
      sounding.latitude = KeptDegrees(MercY2Lat(first, KeptDigits));
      sounding.longitude = KeptDegrees(MercX2Lon(second, KeptDigits));
      ++placed_;
      return true;
    case PlaceForm::Given: {
      double longitude = 0, latitude = 0;
      if (!options_.toDegrees(second, first, longitude, latitude)) {
        ++outside_;
        return true;
      }
      sounding.latitude = KeptDegrees(latitude);
      sounding.longitude = KeptDegrees(longitude);
      ++placed_;
      return true;
    }
  }
  if (layout_.Has(Slot::NorthSouth)) first *= SignOfLetter(row.Text(Slot::NorthSouth)).value_or(1);
  if (layout_.Has(Slot::EastWest)) second *= SignOfLetter(row.Text(Slot::EastWest)).value_or(1);
  return TakeDegrees(first, second, sounding);
}

void TableTaker::TakeDepth(const TableRow& row, Sounding& sounding) {
  double depth = row.Number(Slot::Depth);
  if (!layout_.isOwn) {
    if (IsMarker(depth)) depth = Unknown;
    depth *= layout_.metres;
    if (std::fabs(depth) > DeepestWater) depth = Unknown;
    if (layout_.isHeight && depth != 0) depth = -depth;
  }
  if (std::fabs(depth) > LargestDepth) depth = Unknown;
  if (depth < 0) ++negative_;
  if (depth > 0) ++positive_;
  sounding.recorded = sounding.depth = KeptMetres(depth);
}

SoundingList& TableTaker::ListOf(std::string_view trip) {
  if (!layout_.isOwn) return reading_.trips[0].soundings;
  if (reading_.trips.empty() || trip != tripText_) {
    tripText_ = trip;
    const auto [at, isNew] = trips_.try_emplace(tripText_, reading_.trips.size());
    if (isNew) reading_.trips.push_back({Unquoted(trip), {}});
    trip_ = at->second;
    // Trips stand one behind the other as a rule; the room of those that are done is given back.
    std::erase(open_, trip_);
    open_.push_back(trip_);
    if (open_.size() > OpenTrips) {
      reading_.trips[open_.front()].soundings.Finish();
      open_.pop_front();
    }
  }
  return reading_.trips[trip_].soundings;
}

void TableTaker::Take(const TableRow& row) {
  Sounding sounding;
  if (layout_.Has(Slot::Channel)) {
    const std::optional<std::uint8_t> channel = ChannelOfCell(row.Text(Slot::Channel));
    if (channel_ && channel != channel_) return;
    if (channel) sounding.channel = *channel;
  }
  if (!TakePlace(row, sounding)) {
    reading_.PassOver(PassedOver::BadRows);
    return;
  }
  TakeDepth(row, sounding);
  sounding.time = clock_.SecondsOf(row);
  ListOf(row.Text(Slot::Trip)).Add(sounding);
}

void TableTaker::Remark(std::uint64_t count, std::string_view text) {
  if (count > 0) reading_.remarks.push_back(std::to_string(count) + std::string(text));
}

void TableTaker::FinishPlaces() {
  if (exchanged_ > 0) {
    // A few are slips; where nearly all say so the columns are.
    const bool isSwapped = sure_ == 0 && exchanged_ * 10 > placed_;
    std::uint64_t without = 0;
    for (TripReading& trip : reading_.trips) {
      if (isSwapped) SwapPlaces(trip.soundings);
      for (std::size_t i = 0; i < trip.soundings.size(); ++i) {
        Sounding& sounding = trip.soundings[i];
        if (!(std::fabs(sounding.latitude) > 90)) continue;
        sounding.latitude = sounding.longitude = Unknown;
        ++without;
      }
    }
    if (isSwapped)
      reading_.takenFor.emplace_back(
          "latitude and longitude the other way round: no other order is possible");
    Remark(without, " rows with a latitude beyond 90 have no position");
  }
  if (layout_.isOrderOpen && sure_ == 0 && exchanged_ == 0) {
    reading_.isOrderOpen = positive_ == 0;
    if (reading_.isOrderOpen) {
      reading_.takenFor.emplace_back(
          "longitude first, as it is where all depths are below 0; --columns tells otherwise");
    } else {
      for (TripReading& trip : reading_.trips) SwapPlaces(trip.soundings);
      reading_.takenFor.emplace_back("latitude first, as not all depths are below 0");
    }
  }
  if (layout_.isOwn) return;
  for (TripReading& trip : reading_.trips)
    Remark(PlaceByTime(trip.soundings), " soundings between two fixes have their place by time");
}

void TableTaker::FinishDepths() {
  if (layout_.isOwn) return;
  if (layout_.mayBeDepth && negative_ > 0 && positive_ == 0) {
    for (TripReading& trip : reading_.trips) TurnDepths(trip.soundings);
    reading_.takenFor.emplace_back("no depth is below 0: taken as depths, downwards");
  } else if (layout_.isHeight) {
    reading_.takenFor.emplace_back("depths are heights, upwards");
  } else if (negative_ > 0 && positive_ == 0) {
    for (TripReading& trip : reading_.trips) TurnDepths(trip.soundings);
    reading_.takenFor.emplace_back("depths are below 0 in all rows: taken as heights");
  } else {
    Remark(negative_, " depths are below 0");
  }
}

void TableTaker::Finish() {
  reading_.takenFor.insert(reading_.takenFor.end(), layout_.takenFor.begin(), layout_.takenFor.end());
  reading_.remarks.insert(reading_.remarks.end(), layout_.remarks.begin(), layout_.remarks.end());
  FinishPlaces();
  FinishDepths();
  if (clock_.HasLocal())
    reading_.takenFor.push_back("times without a zone are " +
                                (options_.toUtc ? "of " + options_.zoneName : std::string("UTC")));
  Remark(clock_.BadTimes(), " times can't be understood");
  Remark(clock_.WithoutDate(), " times stand without a date and are left out");
  Remark(clock_.UnsetTimes(), BeforeFirstDate);
  Remark(outside_, " positions lie outside what --source-crs reaches");
  for (TripReading& trip : reading_.trips) trip.soundings.Finish();
}

}  // namespace sondrix
