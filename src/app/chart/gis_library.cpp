#include "app/chart/gis_library.h"

#include "core/files.h"
#include "exports/export_run.h"
#include "exports/gis.h"
#include "platform/platform.h"
#include "platform/shared_library.h"

#include <memory>
#include <string_view>

namespace sondrix {

std::vector<std::string> GisFolders() {
  const std::string folder = ProgramFolder();
  return {folder, WithSeparator(folder) + "../lib/sondrix"};
}

const Gis& LoadGis(std::span<const std::string> folders) {
  // The libraries behind it don't bear to be unloaded.
  static auto* const kept = new std::vector<std::unique_ptr<SharedLibrary>>;
  const std::string name = LibraryFileName(GisModuleName);
  for (const std::string& folder : folders) {
    auto library = std::make_unique<SharedLibrary>(WithSeparator(folder) + name);
    if (!library->IsLoaded()) continue;
    const auto function = reinterpret_cast<const Gis* (*)()>(library->Find(GisFunctionName, 0));
    if (function == nullptr) continue;
    const Gis* const gis = function();
    kept->push_back(std::move(library));
    if (std::string_view(gis->version) != SONDRIX_VERSION) throw CantExport(name + " is of another version");
    return *gis;
  }
  throw CantExport(name + ", or what it needs of GDAL and PROJ, isn't installed");
}

}  // namespace sondrix
