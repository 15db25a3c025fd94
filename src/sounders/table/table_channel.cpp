#include "sounders/table/table_channel.h"

#include "core/channel.h"
#include "sounders/table/table_guess.h"
#include "sounders/table/table_rows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace sondrix {
namespace {

std::string TextOf(std::size_t channel) {
  std::string text = std::to_string(channel);
  if (const std::optional<Channel> known = ChannelOf(static_cast<int>(channel)))
    text += " (" + std::string(RowOf(*known).name) + ")";
  return text;
}

}  // namespace

std::optional<std::uint8_t> ChooseChannel(std::string_view path, const TableShape& shape, TableLayout& layout,
                                          const ReadOptions& options, const ReadWatch& watch) {
  if (!layout.Has(Slot::Channel)) return std::nullopt;
  // The bytes count as read by the second reading.
  const ReadWatch silent = {watch.isToEnd, nullptr};
  TableRows rows(path, shape, layout, silent);
  std::array<std::uint64_t, Sounding::NoChannel> all{}, withDepth{};
  TableRow row;
  while (rows.Next(row)) {
    const std::optional<std::uint8_t> channel = ChannelOfCell(row.Text(Slot::Channel));
    if (!channel) continue;
    ++all[*channel];
    if (std::fabs(row.Number(Slot::Depth)) > 0) ++withDepth[*channel];
  }
  const auto most = std::max_element(withDepth.begin(), withDepth.end());
  auto chosen = static_cast<std::uint8_t>(*most > 0 ? most - withDepth.begin() : 0);
  if (options.channel) chosen = *options.channel;
  std::string others;
  for (std::size_t i = 0; i < all.size(); ++i)
    if (all[i] > 0 && i != chosen) others += (others.empty() ? "" : ", ") + TextOf(i);
  if (all[chosen] == 0) {
    if (others.empty()) return std::nullopt;
    if (options.channel) throw CantRead("no rows of channel " + TextOf(chosen) + "; it has " + others);
    chosen = static_cast<std::uint8_t>(std::max_element(all.begin(), all.end()) - all.begin());
  }
  if (!others.empty()) layout.takenFor.push_back("rows of channel " + TextOf(chosen) + ", not of " + others);
  return chosen;
}

}  // namespace sondrix
