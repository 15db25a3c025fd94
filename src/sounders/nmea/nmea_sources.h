#pragma once

#include "sounders/nmea/nmea_sentence.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace sondrix {

// Which of several sentences that tell the same is taken. A first pass counts them; then they are ranked and
// a second pass asks of each sentence. The best stays as long as it speaks. Another is taken when it alone
// has been heard for a while, so that joined logs of different instruments lose nothing.
class NmeaSources {
 public:
  // patience: how many sentences of others in a row, each with something to tell, mean that the source in use
  // is silent. least: the part of the most frequent one's count that a source needs to be preferred to it.
  NmeaSources(unsigned patience, double least) : patience_(patience), least_(least) {}

  // First pass: a sentence of that address, whether it tells anything, and how it is preferred; smaller is
  // better, and a source's smallest counts.
  void Count(AddressKey address, bool tells, int preference);
  // Between the passes. keepTalker: sources of the talker that told something first go before all others.
  void Rank(bool keepTalker);

  // Second pass.
  bool Takes(AddressKey address, bool tells);

  bool IsEmpty() const { return sources_.empty(); }   // none tells anything
  std::uint64_t LeftOut() const { return leftOut_; }  // sentences that told something and weren't taken
  // The sources taken from so far, best first: "SDDPT, SDDBT".
  std::string Taken() const;

 private:
  struct Source {
    AddressKey address = 0;
    std::uint64_t count = 0;
    int preference = 0;
    bool isTaken = false;
  };
  Source* Find(AddressKey address);

  std::vector<Source> sources_;  // by rank once they are ranked
  unsigned patience_, silence_ = 0;
  double least_;
  std::size_t current_ = 0;
  std::uint64_t leftOut_ = 0;
};

}  // namespace sondrix
