#include "sounders/sl/sl_reader.h"

#include "core/channel.h"
#include "core/files.h"
#include "geo/mercator.h"
#include "sonar/layout/words.h"
#include "sounders/sl/sl_channel.h"
#include "sounders/sl/sl_frame_walk.h"
#include "sounders/sl/sl_name_date.h"
#include "sounders/sl/sl_track.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

namespace sondrix {
namespace {

constexpr std::uint16_t Sl2Word = 2;
constexpr double MetresPerFoot = 0.3048;

// The block sizes that stand in the heads of recordings.
constexpr std::array<std::uint16_t, 4> BlockSizes = {1200, 1970, 1973, 3200};
constexpr std::uint16_t LatestFamily = 2;

bool IsRecording(std::span<const std::uint8_t> head) {
  if (head.size() <= FileHeaderLength) return false;
  const std::uint16_t word = U16At(head.data());
  if (word == 0 || word > 0xFF) return false;
  const bool isKnown = (word == 2 || word == 3) && U16At(&head[2]) <= LatestFamily &&
                       std::ranges::count(BlockSizes, U16At(&head[4])) > 0 && U16At(&head[6]) <= 1;
  return isKnown || HoldsFrame(head, SlFormatOf(word));
}

std::string NameOfChannel(std::uint8_t number) {
  std::string name = std::to_string(number);
  if (const auto known = ChannelOf(number)) name.append(" (").append(RowOf(*known).name).append(")");
  return name;
}

std::string Counted(std::uint64_t count, std::string_view what) {
  return std::to_string(count).append(" ").append(what).append(count == 1 ? "" : "s");
}

// "channel 0 (Primary), 113 of 113 frames with a depth; 2 (Downscan): 0 of 113"
std::string ChoiceText(const SlChannels& channels, const SlChannel& chosen) {
  const auto depths = [&channels](const SlChannel& channel) {
    return std::to_string(channels.DepthsOf(channel)) + " of " + Counted(channel.frames, "frame");
  };
  std::string text = "channel " + NameOfChannel(chosen.number) + ": " + depths(chosen) + " with a depth";
  std::vector<const SlChannel*> others;
  for (const SlChannel& channel : channels.All()) {
    if (&channel != &chosen) others.push_back(&channel);
  }
  std::ranges::sort(others, {}, &SlChannel::number);
  constexpr std::size_t mostTold = 12;
  for (std::size_t i = 0; i < others.size() && i < mostTold; ++i) {
    text += "; " + NameOfChannel(others[i]->number) + ": " + depths(*others[i]);
  }
  if (others.size() > mostTold) text += "; and " + Counted(others.size() - mostTold, "channel") + " more";
  return text;
}

// All frames of a recording. The walk's counts go to the reading.
void Collect(std::string_view path, const ReadWatch& watch, SlChannels& channels, Reading& reading) {
  SlSource source(path);
  SlFrameWalk walk(source, watch);
  while (walk.Next()) channels.Add(walk.Frame());
  reading.PassOver(PassedOver::DamagedBytes, walk.DamagedBytes());
  reading.PassOver(PassedOver::CutEnd, walk.CutFrames());
}

SlChannel& Chosen(SlChannels& channels, const ReadOptions& options) {
  SlChannel* best = channels.Best();
  if (best == nullptr) throw CantRead("no sound frame in it");
  if (!options.channel) return *best;
  // cppcheck-suppress constVariable ; it is returned
  if (SlChannel* found = channels.Find(*options.channel)) return *found;
  std::string numbers;
  std::vector<std::uint8_t> known;
  for (const SlChannel& channel : channels.All()) known.push_back(channel.number);
  std::ranges::sort(known);
  for (const std::uint8_t number : known) {
    numbers.append(numbers.empty() ? "" : ", ").append(std::to_string(number));
  }
  throw CantRead("no frame of channel " + NameOfChannel(*options.channel) + "; it has " + numbers);
}

// Feet as metres; not a number where no depth is told.
float RecordedOf(const SlDepth& depth, bool areFlagged) {
  if (areFlagged && !depth.isFlagged) return std::numeric_limits<float>::quiet_NaN();
  if (depth.depth == 0) return 0;
  return IsDepth(depth.depth) ? KeptMetres(depth.depth * MetresPerFoot)
                              : std::numeric_limits<float>::quiet_NaN();
}

// How many of the soundings have a position.
struct PositionCounts {
  std::uint64_t known = 0, unknown = 0;
};

PositionCounts AddSoundings(const SlChannels& channels, SlChannel& channel, SlTrack& track,
                            std::optional<std::int64_t> start, SoundingList& soundings) {
  PositionCounts positions;
  const bool areFlagged = channels.AreDepthsFlagged();
  const auto count = static_cast<std::uint32_t>(channel.depths.size());
  for (std::uint32_t i = 0; i < count; ++i) {
    const SlPlace place = track.At(i);
    const SlDepth depth = channel.depths[i];
    Sounding sounding;
    if (place.isKnown) {
      const double longitude = LongitudeOfMercX(place.x);
      sounding.longitude = KeptDegrees(longitude - 360 * std::round(longitude / 360));
      sounding.latitude = KeptDegrees(LatitudeOfMercY(place.y));
    }
    ++(place.isKnown ? positions.known : positions.unknown);
    if (start) sounding.time = static_cast<double>(*start + depth.time) / 1000;
    sounding.recorded = sounding.depth = RecordedOf(depth, areFlagged);
    sounding.channel = channel.number;
    sounding.beginsLine = place.beginsLine;
    soundings.Add(sounding);
  }
  soundings.Finish();
  return positions;
}

// What a user should know of a reading.
void Remark(const SlChannels& channels, const SlChannel& channel, const PositionCounts& positions,
            double fixInterval, Reading& reading) {
  if (channels.DepthsOf(channel) == 0) {
    reading.remarks.emplace_back("no frame of the channel carries a depth");
  }
  if (positions.known == 0) {
    reading.remarks.emplace_back("no position in it");
  } else {
    std::array<char, 64> text;
    std::snprintf(text.data(), text.size(), "positions reckoned between fixes %.1f s apart", fixInterval);
    reading.takenFor.emplace_back(text.data());
    if (positions.unknown > 0) {
      reading.remarks.push_back("the fix was lost for " + Counted(positions.unknown, "sounding"));
    }
  }
}

// When the recording began, milliseconds since 1970 UTC of the time offset 0. A name tells it by the clock of
// a place that the user has to name.
std::optional<std::int64_t> StartOf(const SlChannels& channels, std::string_view path,
                                    const ReadOptions& options, Reading& reading) {
  if (const auto start = channels.StartTime()) {
    reading.takenFor.emplace_back("times UTC");
    return start;
  }
  const std::optional<double> local = DateOfName(FileNameOf(path));
  if (local && options.toUtc) {
    reading.takenFor.push_back("times from the file's name, " + options.zoneName);
    return static_cast<std::int64_t>(std::llround(options.toUtc(*local) * 1000)) - channels.FirstOffset();
  }
  reading.remarks.emplace_back(local
                                   ? "no date in it: its times are unknown (with --zone its name tells them)"
                                   : "no date in it: its times are unknown");
  return std::nullopt;
}

}  // namespace

bool IsSl2(const SourceHead& head) {
  return head.bytes.size() > 1 && U16At(head.bytes.data()) == Sl2Word && IsRecording(head.bytes);
}

bool IsSl3(const SourceHead& head) {
  return head.bytes.size() > 1 && U16At(head.bytes.data()) != Sl2Word && IsRecording(head.bytes);
}

void ReadSl(std::string_view path, const ReadOptions& options, const ReadWatch& watch, Reading& reading) {
  SlChannels first(options.channel ? int{*options.channel} : SlChannels::Every);
  Collect(path, watch, first, reading);
  SlChannel* channel = &Chosen(first, options);
  reading.takenFor.push_back(ChoiceText(first, *channel));

  SlChannels again(channel->number);
  const bool isForgotten = !channel->isKept;  // another channel seemed better for long
  SlChannels& channels = isForgotten ? again : first;
  if (isForgotten) {
    first.KeepOnly(*channel);
    Reading counted;
    Collect(path, {watch.isToEnd, nullptr}, again, counted);
    channel = &Chosen(again, options);
  }
  channels.KeepOnly(*channel);
  SlTrack track(*channel, channels.FixFlagsOf(*channel));
  const std::optional<std::int64_t> start = StartOf(channels, path, options, reading);
  const PositionCounts positions =
      AddSoundings(channels, *channel, track, start, reading.trips.emplace_back().soundings);
  Remark(channels, *channel, positions, track.FixInterval(), reading);
}

}  // namespace sondrix
