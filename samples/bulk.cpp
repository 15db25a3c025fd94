#include "samples/bulk.h"

#include "samples/echogram.h"
#include "samples/open_file.h"
#include "samples/xorshift.h"

#include <array>
#include <cstdio>
#include <vector>

namespace sondrix {

namespace {

struct Beam {
  int Channel;
  std::size_t Samples;
};
constexpr Beam DenseBeams[] = {{0, 1920}, {1, 2400}, {2, 1920}, {5, 3072}};
constexpr int SparseChannels[] = {0, 1, 2, 5};
constexpr std::int16_t SparseSamples = 32608;

constexpr int BlockPings = 400;  // of a dense file: about 4 MB
constexpr int PingsPerSecond = 15;

bool Seek(std::FILE* file, std::int64_t offset) {
#ifdef _WIN32
  return _fseeki64(file, offset, SEEK_SET) == 0;
#else
  return fseeko(file, static_cast<off_t>(offset), SEEK_SET) == 0;
#endif
}

// There and back again: a number that walks from 0 to half of period and returns.
std::int32_t ToAndFro(std::int64_t step, std::int32_t period) {
  const auto phase = static_cast<std::int32_t>(step % period);
  return phase < period / 2 ? phase : period - phase;
}

SampleFrame BulkFrame(const Beam& beam, std::int64_t ping, std::int32_t days) {
  // The period divides BlockPings, so that the samples of a block fit its depths wherever it stands.
  const float depth = 12.0F + 0.2F * static_cast<float>(ToAndFro(ping, BlockPings));
  SampleFrame frame = Frame(beam.Channel, depth, 4'105'000 + ToAndFro(ping, 20'000),
                            7'533'000 + static_cast<std::int32_t>(ping / 10'000 * 20), beam.Samples);
  constexpr std::int32_t daySeconds = 86400;
  frame.TimeBase += days * daySeconds;
  frame.FrameIndex = static_cast<std::int32_t>(ping);
  frame.TimeOffset = static_cast<std::int32_t>(ping * 1000 / PingsPerSecond);
  return frame;
}

void FillSamples(SampleFrame& frame, XorShift& random) {
  const auto bottom = static_cast<std::size_t>(frame.WaterDepth / frame.LowerLimit *
                                               static_cast<float>(frame.Samples.size()));
  for (std::size_t i = 0; i < frame.Samples.size(); ++i) {
    const std::uint32_t strength = i < 20 ? 200 : i == bottom ? 230 : i > bottom && i < bottom + 60 ? 150 : 8;
    frame.Samples[i] = static_cast<std::uint8_t>(strength + random.Below(16));
  }
}

// Moves a finished block on to where it stands now: all that differs between two blocks is patched.
void MoveBlock(std::vector<std::uint8_t>& block, const std::vector<std::size_t>& starts,
               std::int64_t position, std::int64_t firstPing, std::array<std::uint32_t, 6>& links) {
  const SampleLayout& at = LayoutOf(2);
  const std::span<std::uint8_t> bytes(block);
  std::int64_t ping = firstPing;
  for (std::size_t i = 0; i < starts.size(); ++i) {
    const std::size_t start = starts[i];
    const Beam& beam = DenseBeams[i % std::size(DenseBeams)];
    const auto offset = static_cast<std::uint32_t>(position + static_cast<std::int64_t>(start));
    links[static_cast<std::size_t>(beam.Channel)] = offset;
    PutU32(bytes, start, offset);
    for (std::size_t k = 0; k < links.size(); ++k) PutU32(bytes, start + 4 + 4 * k, links[k]);
    PutU32(bytes, start + at.FrameIndex, static_cast<std::uint32_t>(ping));
    PutU32(bytes, start + at.MercX, static_cast<std::uint32_t>(4'105'000 + ToAndFro(ping, 20'000)));
    PutU32(bytes, start + at.MercY, static_cast<std::uint32_t>(7'533'000 + ping / 10'000 * 20));
    PutU32(bytes, start + at.TimeOffset, static_cast<std::uint32_t>(ping * 1000 / PingsPerSecond));
    if (i % std::size(DenseBeams) == std::size(DenseBeams) - 1) ++ping;
  }
}

bool WriteAll(std::FILE* file, std::span<const std::uint8_t> bytes) {
  return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
}

bool WriteDense(std::FILE* file, std::int64_t bytes, std::int32_t days, std::int64_t& position) {
  std::vector<std::uint8_t> head;
  std::vector<std::uint8_t> block;
  std::vector<std::size_t> starts;
  EchogramWriter writer(2);
  writer.Start(head);
  std::array<std::uint32_t, 6> links{};
  XorShift random(1);
  for (int ping = 0; ping < BlockPings; ++ping) {
    for (const Beam& beam : DenseBeams) {
      SampleFrame frame = BulkFrame(beam, ping, days);
      FillSamples(frame, random);
      // A block follows a Sidescan frame; so does the first, as in a recording that continues another.
      if (starts.empty()) {
        frame.PrevSize =
            static_cast<std::int16_t>(LayoutOf(2).HeaderLength + std::end(DenseBeams)[-1].Samples);
      }
      starts.push_back(block.size());
      writer.Add(frame, block);
    }
  }
  if (!WriteAll(file, head)) return false;
  position = static_cast<std::int64_t>(head.size());
  for (std::int64_t ping = 0; position < bytes; ping += BlockPings) {
    MoveBlock(block, starts, position, ping, links);
    std::size_t length = block.size();
    for (std::size_t i = starts.size(); i-- > 0 && position + static_cast<std::int64_t>(length) > bytes;) {
      length = starts[i];
    }
    if (!WriteAll(file, std::span(block).first(length))) return false;
    position += static_cast<std::int64_t>(length);
    if (length < block.size()) break;
  }
  return true;
}

bool WriteSparse(std::FILE* file, std::int64_t bytes, std::int32_t days, std::int64_t& position) {
  constexpr std::int16_t frameSize = 0x90 + SparseSamples;
  std::vector<std::uint8_t> header;
  EchogramWriter writer(2);
  writer.Start(header);
  for (std::int64_t count = 0;; ++count) {
    if (!Seek(file, position) || !WriteAll(file, header)) return false;
    position = static_cast<std::int64_t>(writer.Position());
    if (position + frameSize > bytes) break;
    SampleFrame frame = BulkFrame({SparseChannels[count % 4], 0}, count / 4, days);
    frame.SampleCount = SparseSamples;
    frame.FrameSize = frameSize;
    frame.PrevSize = count == 0 ? std::int16_t{0} : frameSize;
    header.clear();
    writer.Add(frame, header);
    writer.Skip(SparseSamples);
  }
  // The last byte gives the file its length.
  const std::uint8_t last = 0;
  return position == 8 || (Seek(file, position - 1) && WriteAll(file, {&last, 1}));
}

}  // namespace

std::int64_t WriteBulk(const std::string& path, std::int64_t bytes, bool sparse, std::int32_t days) {
  const SampleFile file = OpenSample(path);
  if (!file) return -1;
  std::int64_t position = 0;
  const bool written =
      sparse ? WriteSparse(file.get(), bytes, days, position) : WriteDense(file.get(), bytes, days, position);
  return written && std::fflush(file.get()) == 0 ? position : -1;
}

}  // namespace sondrix
