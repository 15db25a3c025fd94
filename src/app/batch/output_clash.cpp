#include "app/batch/output_clash.h"

#include "app/places.h"
#include "core/settings.h"
#include "jobs/job_table.h"

#include <map>

namespace sondrix {

std::vector<std::optional<Clash>> OutputClashes(const Settings& settings,
                                                std::span<const std::string> sources) {
  struct Claim {
    std::size_t source;
    std::string path;
  };
  std::map<std::string, std::size_t> sourcePlaces;
  std::map<std::string, Claim> claims;
  std::vector<std::optional<Clash>> clashes(sources.size());
  for (std::size_t i = 0; i < sources.size(); ++i) sourcePlaces.emplace(PlaceOf(sources[i]), i);
  for (std::size_t i = 0; i < sources.size(); ++i) {
    for (const std::string& path : OutputsOf(settings, sources[i])) {
      const std::string place = PlaceOf(path);
      if (const auto found = sourcePlaces.find(place); found != sourcePlaces.end()) {
        clashes[i] = Clash{path, sources[found->second], true};
        break;
      }
      const auto [claim, isFree] = claims.emplace(place, Claim{i, path});
      if (isFree || claim->second.source == i) continue;
      if (!clashes[i]) clashes[i] = Clash{path, sources[claim->second.source], false};
      std::optional<Clash>& first = clashes[claim->second.source];
      if (!first) first = Clash{claim->second.path, sources[i], false};
    }
  }
  return clashes;
}

}  // namespace sondrix
