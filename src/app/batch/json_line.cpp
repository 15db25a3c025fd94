#include "app/batch/json_line.h"

#include "core/channel.h"
#include "core/run_result.h"

#include <nlohmann/json.hpp>

namespace sondrix {
namespace {

using Json = nlohmann::ordered_json;

Json FaultObject(const Fault& fault) {
  Json object = {{"number", fault.Number()}, {"description", fault.Description()}};
  if (!fault.Path().empty()) object["path"] = fault.Path();
  return object;
}

Json ChannelObject(const ChannelCount& count) {
  Json object = {{"channel", count.channel}};
  if (const auto channel = ChannelOf(count.channel)) object["name"] = RowOf(*channel).name;
  object["frames"] = count.frames;
  object["withDepth"] = count.withDepth;
  return object;
}

}  // namespace

std::string JsonLine(std::string_view source, const RunResult& result, std::string_view line,
                     double seconds) {
  Json channels = Json::array(), outputs = Json::array(), lost = Json::array();
  for (const ChannelCount& count : result.channels) channels.push_back(ChannelObject(count));
  for (const RunOutput& output : result.outputs) {
    outputs.push_back({{"path", output.path}, {"whole", output.isWhole}});
  }
  for (const Fault& fault : result.lost) lost.push_back(FaultObject(fault));
  const Json object = {{"source", source},
                       {"result", NameOf(result.end)},
                       {"line", line},
                       {"points", result.points},
                       {"soundings", result.soundings},
                       {"withDepth", result.withDepth},
                       {"frames", result.frames},
                       {"channels", std::move(channels)},
                       {"outputs", std::move(outputs)},
                       {"lost", std::move(lost)},
                       {"fault", result.fault ? FaultObject(*result.fault) : Json()},
                       {"seconds", seconds}};
  return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace sondrix
