#include "ozi/ozi_library.h"

#include "core/code_page.h"
#include "core/files.h"
#include "ozi/ozi_link.h"
#include "platform/platform.h"
#include "platform/shared_library.h"

#include <array>
#include <cfenv>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string_view>

namespace sondrix {

namespace {

using std::int32_t;

// Room for a version text, far more than any has.
constexpr std::size_t MaxVersion = 4096;

// A library may leave other rounding or trapping of floating-point operations behind; the program's own
// numbers don't depend on that.
class KeepFloatingPoint {
 public:
  KeepFloatingPoint() { std::fegetenv(&environment_); }
  ~KeepFloatingPoint() { std::fesetenv(&environment_); }
  KeepFloatingPoint(const KeepFloatingPoint&) = delete;
  KeepFloatingPoint& operator=(const KeepFloatingPoint&) = delete;

 private:
  std::fenv_t environment_{};
};

template <typename... Arguments>
using Function = int32_t(SONDRIX_LIBRARY_CALL*)(Arguments...);

// A call of the library under its name.
template <typename... Arguments>
struct Call {
  const char* name;
  Function<Arguments...> function = nullptr;

  bool Bind(const SharedLibrary& library) {
    function = reinterpret_cast<Function<Arguments...>>(library.Find(name, (0 + ... + sizeof(Arguments))));
    return function != nullptr;
  }
  int32_t operator()(Arguments... arguments) const {
    const KeepFloatingPoint keep;
    return function(arguments...);
  }
};

using TextCall = Call<char*, int32_t*>;
using PlaceCall = Call<double, double>;

struct OziLibrary {
  explicit OziLibrary(std::string_view path) : file(path) {}
  bool Bind();

  SharedLibrary file;
  TextCall GetApiVersion{"oziGetApiVersion"};
  TextCall GetVersion{"oziGetVersion"};
  Call<> FindOzi{"oziFindOzi"};
  Call<> ShowAllTracks{"oziShowAllTracks"};
  Call<int32_t*> ShowTrack{"oziShowTrack"};
  Call<int32_t, int32_t, double, double, double, double> CreateTrackPoint{"oziCreateTrackPoint"};
  PlaceCall CenterMapAtPosition{"oziCenterMapAtPosition"};
  PlaceCall CenterMapAtPositionWithMark{"oziCenterMapAtPositionWithMark"};
  PlaceCall IsPositionOnMap{"oziIsPositionOnMap"};
  PlaceCall FindMapAtPosition{"oziFindMapAtPosition"};
  Call<const char*, int32_t, double, double, double, double, int32_t, int32_t, int32_t, int32_t, int32_t,
       int32_t, const char*, int32_t, int32_t, int32_t>
      CreateWp{"oziCreateWP"};
  Call<> CloseApi{"oziCloseApi"};
};

bool OziLibrary::Bind() {
  const SharedLibrary& from = file;
  return GetApiVersion.Bind(from) && GetVersion.Bind(from) && FindOzi.Bind(from) &&
         ShowAllTracks.Bind(from) && ShowTrack.Bind(from) && CreateTrackPoint.Bind(from) &&
         CenterMapAtPosition.Bind(from) && CenterMapAtPositionWithMark.Bind(from) &&
         IsPositionOnMap.Bind(from) && FindMapAtPosition.Bind(from) && CreateWp.Bind(from) &&
         CloseApi.Bind(from);
}

// The text ends at the length that the library tells or at a zero, whichever comes first. What can't stand in
// one line of a log is left out.
std::string TextOf(const TextCall& call) {
  std::array<char, MaxVersion + 1> bytes{};
  auto length = static_cast<int32_t>(MaxVersion);
  call(bytes.data(), &length);
  if (length < 0 || length > static_cast<int32_t>(MaxVersion)) {
    throw std::runtime_error("a version text of an impossible length");
  }
  // cppcheck-suppress containerOutOfBounds ; there is one byte more than the longest text
  bytes.at(static_cast<std::size_t>(length)) = 0;
  std::string text(bytes.data());
  std::erase_if(text, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; });
  return FromCodePage(text);
}

int32_t CreateWaypoint(const OziLibrary& library, const OziWaypoint& point) {
  constexpr int32_t nameAndMark = 3, nameSize = 6, symbolSize = 17;
  return library.CreateWp(ToCodePage(point.name).c_str(), point.symbol, point.latitude, point.longitude,
                          point.altitude, point.date, nameAndMark, point.direction, 0, 0, point.colour, 0,
                          ToCodePage(point.description).c_str(), nameSize, 0, symbolSize);
}

void TakeCalls(OziLink& link, const std::shared_ptr<const OziLibrary>& library) {
  link.GetApiVersion = [library] { return TextOf(library->GetApiVersion); };
  link.GetVersion = [library] { return TextOf(library->GetVersion); };
  link.FindOzi = [library] { return library->FindOzi(); };
  link.ShowAllTracks = [library] { library->ShowAllTracks(); };
  link.ShowTrack = [library](int32_t track) { library->ShowTrack(&track); };
  link.CreateTrackPoint = [library](int32_t track, int32_t code, double latitude, double longitude,
                                    double altitude, double date) {
    library->CreateTrackPoint(track, code, latitude, longitude, altitude, date);
  };
  link.CenterMapAtPosition = [library](double latitude, double longitude) {
    library->CenterMapAtPosition(latitude, longitude);
  };
  link.CenterMapAtPositionWithMark = [library](double latitude, double longitude) {
    library->CenterMapAtPositionWithMark(latitude, longitude);
  };
  link.IsPositionOnMap = [library](double latitude, double longitude) {
    return library->IsPositionOnMap(latitude, longitude);
  };
  link.FindMapAtPosition = [library](double latitude, double longitude) {
    library->FindMapAtPosition(latitude, longitude);
  };
  link.CreateWp = [library](const OziWaypoint& point) { return CreateWaypoint(*library, point); };
  link.CloseApi = [library] { library->CloseApi(); };
}

}  // namespace

std::string OziLibraryName() { return LibraryFileName("OziAPI"); }

std::vector<std::string> OziLibraryFolders() { return {ProgramFolder(), SystemLibraryFolder()}; }

bool LoadOziLibrary(OziLink& link, std::span<const std::string> folders) {
  const KeepFloatingPoint keep;
  for (const std::string& folder : folders) {
    const auto library = std::make_shared<OziLibrary>(folder + PathSeparator + OziLibraryName());
    if (!library->file.IsLoaded() || !library->Bind()) continue;
    TakeCalls(link, library);
    return true;
  }
  return false;
}

}  // namespace sondrix
