#pragma once

#include "core/channel.h"

#include <cstdint>

namespace sondrix {

struct SlFormat;
struct SlLeadFields;

// What a frame is to a reader of one channel.
enum class SlVerdict { Bad, OtherChannel, StepOver, Good };

// The sample count by which a frame is judged: 3D frames and frames without index and count take it from
// their size.
std::int16_t EffectiveSamples(const SlLeadFields& lead, Channel selectedChannel, const SlFormat& format);

// The sample count that the frames of a run have, from its first frame of the selected channel.
std::int16_t KnownSamplesOf(Channel selectedChannel, std::int16_t sampleCount);

// Judges a frame by its lead fields. knownSamples is 0 until a frame of the selected channel was seen.
SlVerdict SlCheck(const SlLeadFields& lead, Channel selectedChannel, std::int16_t knownSamples);

}  // namespace sondrix
