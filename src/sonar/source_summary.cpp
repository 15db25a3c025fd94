#include "sonar/source_summary.h"

#include "core/channel.h"
#include "core/look_plan.h"
#include "core/rounding.h"
#include "sonar/layout/sl_format.h"
#include "sonar/layout/sl_frame.h"
#include "sonar/layout/sl_source.h"
#include "sonar/layout/sl_verdict.h"
#include "sonar/layout/words.h"

#include <algorithm>
#include <span>

namespace sondrix {
namespace {

constexpr float MaxWaterDepth = 1500.0F;  // feet
constexpr std::uint16_t MostChannel = 0xFF;
constexpr unsigned FramesPerLook = 64;  // at the clock
constexpr std::int64_t SearchPiece = SlSource::MaxRequest / 2;

struct Look {
  SlSource source;
  SlFormat format;
  SourceSummary summary;
  std::optional<DateSeconds> start;  // of the recording
};

ChannelSummary& ChannelOfLead(Look& look, const SlLeadFields& lead) {
  std::vector<ChannelSummary>& channels = look.summary.channels;
  const auto found = std::ranges::lower_bound(channels, lead.Channel, {}, &ChannelSummary::channel);
  if (found != channels.end() && found->channel == lead.Channel) return *found;
  return *channels.insert(found, {lead.Channel, 0, 0, lead.FrameIndex, lead.FrameIndex});
}

template <typename Value>
void Widen(std::optional<Value>& least, std::optional<Value>& greatest, Value value) {
  least = std::min(value, least.value_or(value));
  greatest = std::max(value, greatest.value_or(value));
}

void Count(Look& look, const SlLeadFields& lead) {
  ++look.summary.frames;
  ChannelSummary& channel = ChannelOfLead(look, lead);
  ++channel.frames;
  channel.firstIndex = std::min(channel.firstIndex, lead.FrameIndex);
  channel.lastIndex = std::max(channel.lastIndex, lead.FrameIndex);
  if (!look.start && lead.TimeBase > 0) look.start = DateOfUnix(lead.TimeBase);
  if (!look.source.Has(look.source.Pos, look.format.offsets->bodyEnd)) return;
  const SlFrame frame =
      SlBody(look.source.Bytes(look.source.Pos, look.format.offsets->bodyEnd), look.format, lead);
  if (look.start) {
    Widen<DateSeconds>(look.summary.firstTime, look.summary.lastTime, *look.start + frame.TimeOffset / 1000);
  }
  if (!(frame.WaterDepth > 0)) return;
  ++channel.withDepth;
  if (frame.WaterDepth > MaxWaterDepth) return;
  Widen(look.summary.leastDepth, look.summary.greatestDepth,
        static_cast<float>(frame.WaterDepth * MetresPerFoot));
}

// Counts the frame at Pos and goes to the next one; false where there is none.
bool StepFrame(Look& look) {
  SlSource& source = look.source;
  if (!source.Has(source.Pos, look.format.offsets->leadEnd)) return false;
  const SlLeadFields lead = SlLead(source.Bytes(source.Pos, look.format.offsets->leadEnd), look.format);
  const Channel kind = lead.Channel == ChannelByte(Channel::Scan3D) ? Channel::Scan3D : Channel::Primary;
  if (lead.FrameSize <= 0 || EffectiveSamples(lead, kind, look.format) == 0) return false;
  Count(look, lead);
  source.Pos += lead.FrameSize;
  return true;
}

// Whether a frame begins at a place of the bytes: it leads to a next one that knows its size, and that to one
// more as far as the bytes go.
bool IsChained(std::span<const std::uint8_t> bytes, std::size_t at, const SlOffsets& offsets) {
  for (int link = 0; link < 2; ++link) {
    const std::int16_t size = I16At(bytes.data() + at + offsets.FrameSize);
    if (size < offsets.leadEnd || U16At(bytes.data() + at + offsets.Channel) > MostChannel) return false;
    at += static_cast<std::size_t>(size);
    if (at + offsets.leadEnd > bytes.size()) return link > 0;
    if (I16At(bytes.data() + at + offsets.PrevSize) != size) return false;
    if (U16At(bytes.data() + at + offsets.Channel) > MostChannel) return false;
  }
  return true;
}

// Puts Pos at a frame from there on, before end; false where none is found in time.
bool FindFrame(Look& look, const LookPlan& plan, std::int64_t end) {
  SlSource& source = look.source;
  const SlOffsets& offsets = *look.format.offsets;
  for (; source.Pos < end && plan.MayGoOn(); source.Pos += SearchPiece) {
    const std::int64_t rest = source.FileLength() - source.Pos;
    const auto bytes = source.Bytes(
        source.Pos, static_cast<std::size_t>(std::min<std::int64_t>(rest, SlSource::MaxRequest)));
    for (std::size_t at = 0; at < SearchPiece && at + offsets.leadEnd <= bytes.size(); ++at) {
      if (!IsChained(bytes, at, offsets)) continue;
      source.Pos += static_cast<std::int64_t>(at);
      return source.Pos < end;
    }
  }
  return false;
}

// Counts the frames that begin before end, beyond damaged ones, for as long as it may.
template <typename May>
void CountFrames(Look& look, const LookPlan& plan, std::int64_t end, May&& may) {
  for (unsigned count = 1; look.source.Pos < end; ++count) {
    if (count % FramesPerLook == 0 && !may()) return;
    if (StepFrame(look)) continue;
    ++look.source.Pos;
    if (!may() || !FindFrame(look, plan, end)) return;
  }
}

}  // namespace

SourceSummary LookAtEchogram(std::string_view path, std::chrono::milliseconds time) {
  const LookPlan plan(time);
  Look look = {SlSource(path), {}, {}, {}};
  SlSource& source = look.source;
  const std::int64_t length = source.FileLength();
  look.summary.bytes = length;
  look.summary.isWhole = length <= SlSource::FirstFrame;
  if (look.summary.isWhole) return look.summary;
  look.format = SlFormatOf(U16At(source.Bytes(0, 2).data()));
  CountFrames(look, plan, length, [&plan] { return plan.MayStart(); });
  look.summary.isWhole = source.Pos >= length;
  if (look.summary.isWhole) return look.summary;
  plan.VisitPlaces(source.Pos, length, [&](std::int64_t place) {
    source.Pos = place;
    if (!FindFrame(look, plan, std::min(place + LookPlan::PieceLength, length))) return;
    CountFrames(look, plan, std::min(place + LookPlan::PieceLength, length),
                [&plan] { return plan.MayGoOn(); });
  });
  return look.summary;
}

}  // namespace sondrix
