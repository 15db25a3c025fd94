#include "samples/damage.h"

#include "samples/echogram.h"
#include "samples/xorshift.h"

#include <algorithm>

namespace sondrix {

namespace {

using Bytes = std::vector<std::uint8_t>;
using Source = std::span<const std::uint8_t>;

const SampleLayout& LayoutIn(Source clean) { return LayoutOf(clean[0] | clean[1] << 8); }

// Half way into the file, on an odd number: the second channel of a file of two.
std::size_t MiddleFrame(const std::vector<std::size_t>& starts) { return starts.size() / 2 | 1; }

Bytes Truncated(Source clean, std::size_t length) {
  return {clean.begin(), clean.begin() + static_cast<std::ptrdiff_t>(std::min(length, clean.size()))};
}

Bytes WithFormatWord(Source clean, std::size_t word) {
  Bytes bad(clean.begin(), clean.end());
  PutU16(bad, 0, static_cast<std::uint16_t>(word));
  return bad;
}

// The last frame keeps its first bytes only.
Bytes LastFrameCut(Source clean, std::size_t kept) {
  return Truncated(clean, FrameStarts(clean).back() + kept);
}

Bytes LastFrameCutInSamples(Source clean, std::size_t kept) {
  return LastFrameCut(clean, LayoutIn(clean).HeaderLength + kept);
}

Bytes WithFrameSize(Source clean, std::size_t size) {
  Bytes bad(clean.begin(), clean.end());
  const std::vector<std::size_t> starts = FrameStarts(clean);
  PutU16(bad, starts[MiddleFrame(starts)] + LayoutIn(clean).FrameSize, static_cast<std::uint16_t>(size));
  return bad;
}

Bytes WithSampleCount(Source clean, std::size_t count) {
  Bytes bad(clean.begin(), clean.end());
  const std::vector<std::size_t> starts = FrameStarts(clean);
  PutU16(bad, starts[MiddleFrame(starts)] + LayoutIn(clean).SampleCount, static_cast<std::uint16_t>(count));
  return bad;
}

// Every byte of the noise is at least 0x80: a size read there is negative, and no marker arises by chance.
Bytes WithNoise(Source clean, std::size_t length) {
  Bytes bad(clean.begin(), clean.end());
  const std::vector<std::size_t> starts = FrameStarts(clean);
  const std::size_t first = starts[MiddleFrame(starts)];
  XorShift random(7);
  for (std::size_t i = first; i < bad.size() && i - first < length; ++i) {
    bad[i] = static_cast<std::uint8_t>(0x80 + random.Below(0x80));
  }
  return bad;
}

constexpr std::size_t ToTheEnd = SIZE_MAX;

constexpr Damage Table[] = {
    {"empty", "no byte at all", 2, 0, Truncated},
    {"1-byte", "the file ends after 1 byte", 2, 1, Truncated},
    {"2-bytes", "the file ends after 2 bytes", 2, 2, Truncated},
    {"3-bytes", "the file ends after 3 bytes", 2, 3, Truncated},
    {"4-bytes", "the file ends after 4 bytes", 2, 4, Truncated},
    {"5-bytes", "the file ends after 5 bytes", 2, 5, Truncated},
    {"6-bytes", "the file ends after 6 bytes", 2, 6, Truncated},
    {"7-bytes", "the file ends after 7 bytes", 2, 7, Truncated},
    {"8-bytes", "the file header and no frame", 2, 8, Truncated},
    {"9-bytes", "the file header and one byte of a frame", 2, 9, Truncated},
    {"format-word", "a format word above 255", 2, 0x0102, WithFormatWord},
    {"cut-in-lead", "the last frame ends within the fields that every frame needs", 2, 0x21, LastFrameCut},
    {"cut-in-header", "the last frame ends behind them, still in its header", 2, 0x70, LastFrameCut},
    {"cut-in-samples", "the last frame ends half way through its samples", 2, 960, LastFrameCutInSamples},
    {"frame-size-zero", "a frame in the middle with a size of 0", 2, 0, WithFrameSize},
    {"frame-size-negative", "a frame in the middle with a size of -2", 2, 0xFFFE, WithFrameSize},
    {"sample-count-zero", "a frame in the middle with 0 samples", 2, 0, WithSampleCount},
    {"noise", "noise over three frames and a half in the middle", 2, 7224, WithNoise},
    {"noise-to-end", "noise from the middle to the end: no marker comes again", 2, ToTheEnd, WithNoise},
    {"sl3-bad-frame", "an SL3 with 0 samples in a frame in the middle", 3, 0, WithSampleCount},
    {"sl3-frame-size-zero", "an SL3 with a size of 0 in the middle", 3, 0, WithFrameSize},
    {"sl3-noise", "an SL3 with noise in the middle", 3, 7224, WithNoise},
};

}  // namespace

std::span<const Damage> Damages() { return Table; }

const Damage* DamageOf(std::string_view name) {
  const auto* found = std::ranges::find(Table, name, &Damage::Name);
  return found == std::end(Table) ? nullptr : found;
}

std::vector<std::uint8_t> CleanEchogram(int formatWord) {
  std::vector<SampleFrame> frames;
  for (int ping = 0; ping < 40; ++ping) {
    const float depth = 12.0F + 0.1F * static_cast<float>(ping);
    for (const int channel : {0, 2}) frames.push_back(Frame(channel, depth, 4'105'000 + 3 * ping));
  }
  return EchogramBytes(formatWord, frames);
}

}  // namespace sondrix
