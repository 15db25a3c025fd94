#include "sounders/nmea/nmea_sources.h"

#include <algorithm>

namespace sondrix {

namespace {

// More than any boat has; garbled addresses beyond them are no sources.
constexpr std::size_t MostSources = 64;

}  // namespace

NmeaSources::Source* NmeaSources::Find(AddressKey address) {
  const auto found = std::find_if(sources_.begin(), sources_.end(),
                                  [address](const Source& source) { return source.address == address; });
  return found == sources_.end() ? nullptr : &*found;
}

void NmeaSources::Count(AddressKey address, bool tells, int preference) {
  if (!tells) return;
  Source* source = Find(address);
  if (source == nullptr) {
    if (sources_.size() == MostSources) return;
    source = &sources_.emplace_back(Source{address, 0, preference, false});
  }
  ++source->count;
  source->preference = std::min(source->preference, preference);
}

void NmeaSources::Rank(bool keepTalker) {
  if (sources_.empty()) return;
  const AddressKey talker = TalkerOf(sources_.front().address);
  const auto isOther = [&](const Source& source) { return keepTalker && TalkerOf(source.address) != talker; };
  std::uint64_t most = 0;
  for (const Source& source : sources_) {
    if (!isOther(source)) most = std::max(most, source.count);
  }
  const auto isRare = [&](const Source& source) {
    return static_cast<double>(source.count) < least_ * static_cast<double>(most);
  };
  std::stable_sort(sources_.begin(), sources_.end(), [&](const Source& a, const Source& b) {
    if (isOther(a) != isOther(b)) return isOther(b);
    if (isRare(a) != isRare(b)) return isRare(b);
    if (a.preference != b.preference) return a.preference < b.preference;
    return a.count > b.count;
  });
}

bool NmeaSources::Takes(AddressKey address, bool tells) {
  Source* source = Find(address);
  if (source == nullptr) return false;
  const auto rank = static_cast<std::size_t>(source - sources_.data());
  if (rank != current_) {
    if (!tells) return false;
    if (rank > current_ && ++silence_ <= patience_) {
      ++leftOut_;
      return false;
    }
  }
  current_ = rank;
  silence_ = 0;
  source->isTaken = source->isTaken || tells;
  return true;
}

std::string NmeaSources::Taken() const {
  std::string names;
  for (const Source& source : sources_) {
    if (source.isTaken) names.append(names.empty() ? "" : ", ").append(AddressOf(source.address));
  }
  return names;
}

}  // namespace sondrix
