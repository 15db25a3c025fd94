#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace sondrix {

// The channel that the user chose. What a recording itself says of a frame stays a byte: it may be any.
enum class Channel : std::uint8_t { Primary = 0, Downscan = 2, Sidescan = 5, Scan3D = 9 };

struct ChannelRow {
  Channel channel;
  std::string_view name;  // in the window and in tables
  bool isCompared;        // an own depth is looked for in its samples
  bool is3D;              // lists of soundings in place of samples
  bool isInTables;        // exported tables have rows of it
};

// The only list of them, in the order of the window.
inline constexpr std::array<ChannelRow, 4> Channels = {{{Channel::Primary, "Primary", true, false, true},
                                                        {Channel::Downscan, "Downscan", true, false, true},
                                                        {Channel::Sidescan, "Sidescan", false, false, true},
                                                        {Channel::Scan3D, "3D", false, true, false}}};

// By which frames, fields and file names call it.
constexpr std::uint8_t ChannelByte(Channel channel) { return static_cast<std::uint8_t>(channel); }

// Nothing for a number that is no channel's.
constexpr std::optional<Channel> ChannelOf(int number) {
  for (const ChannelRow& row : Channels)
    if (ChannelByte(row.channel) == number) return row.channel;
  return std::nullopt;
}

constexpr const ChannelRow& RowOf(Channel channel) {
  const ChannelRow* row = Channels.data();
  while (row->channel != channel) ++row;
  return *row;
}

constexpr bool IsCompared(Channel channel) { return RowOf(channel).isCompared; }
constexpr bool Is3D(Channel channel) { return RowOf(channel).is3D; }

}  // namespace sondrix
