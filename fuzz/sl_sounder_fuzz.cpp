#include "fuzz/fuzz_run.h"
#include "sounders/sl/sl_reader.h"

#include <cmath>

namespace {

using namespace sondrix;

// The channels that the input's first byte asks for; none of them is the reader's choice.
constexpr std::uint8_t Auto = 255;
constexpr std::uint8_t Asked[] = {Auto, 0, 2, 5, 9, 200};

void Check(const Sounding& sounding) {
  Require(std::isnan(sounding.longitude) == std::isnan(sounding.latitude), "a place is whole");
  Require(!(std::abs(sounding.longitude) > 180) && !(std::abs(sounding.latitude) > 90),
          "a place is on the earth");
  // The clock from 1990 to 2100, and the offset of 25 days to each side.
  Require(!(sounding.time < 6.28e8) && !(sounding.time > 4.106e9), "a time has a date");
  Require(!(sounding.recorded < 0) && !(sounding.recorded > 12'000), "a depth is one of water");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const FuzzBytes recording = FuzzBytes(data, size).subspan(1);
  const std::string path = Folder().Of("recording");
  {
    OutputFile file(path);
    file.Write(recording);
    file.Close();
  }
  // What no reader recognises is never read.
  const SourceHead head = {recording, static_cast<std::int64_t>(recording.size())};
  if (!IsSl2(head) && !IsSl3(head)) return 0;
  ReadOptions options;
  const std::uint8_t asked = Asked[data[0] % std::size(Asked)];
  if (asked != Auto) options.channel = asked;
  Reading reading;
  try {
    ReadSl(path, options, {}, reading);
  } catch (const CantRead& reason) {
    Require(*reason.what() != '\0', "there is a reason");
    return 0;
  }
  constexpr std::size_t shortestHead = 128;
  const SoundingList& soundings = reading.trips.at(0).soundings;
  Require(!soundings.empty() && soundings.size() <= recording.size() / shortestHead,
          "each sounding has its frame");
  for (std::size_t i = 0; i < soundings.size(); ++i) Check(soundings[i]);
  const auto damaged = reading.passedOver[static_cast<std::size_t>(PassedOver::DamagedBytes)];
  Require(damaged <= 2 * recording.size(), "the damage isn't larger than the recording");
  return 0;
}
