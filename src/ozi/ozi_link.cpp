#include "ozi/ozi_link.h"

#include "core/messages.h"
#include "core/settings.h"
#include "core/window.h"

#include <exception>

namespace sondrix {
namespace {

void ClearViewOzi(Settings& settings, Window& window) {
  settings.ViewOzi = false;
  window.ShowField("ViewOzi");
}

void RefuseLink(std::string_view message, Settings& settings, Window& window) {
  window.Beep();
  window.SetAtt(message, LineKind::Fault);
  ClearViewOzi(settings, window);
}

}  // namespace

void OpenLink(OziLink& link, Settings& settings, const Messages& messages, Window& window) {
  try {
    if (!link.IsOpen && !link.Load(link)) {
      RefuseLink(messages.MsgCopyApi, settings, window);
      return;
    }
    window.SetAtt(" API v" + link.GetApiVersion());
    link.IsOpen = true;
    window.SetAtt(" запущен OziExplorer v" + link.GetVersion() + std::string(window.Att()));
    if (link.FindOzi() != 0) RefuseLink(messages.MsgRunOzi, settings, window);
  } catch (const std::exception&) {
    RefuseLink(messages.MsgCopyApi, settings, window);
  }
}

void OziTrackOpen(OziLink& link) {
  link.ShowAllTracks();
  link.ShowTrack(1);
}

void OziLivePoint(OziLink& link, Window& window, std::int32_t code, double latitude, double longitude,
                  double altitudeFeet, double date) {
  link.CreateTrackPoint(1, code, latitude, longitude, altitudeFeet, date);
  link.CenterMapAtPosition(latitude, longitude);
  if (code != 1 || link.IsPositionOnMap(latitude, longitude) != 0) return;
  // In Russian whatever the language.
  window.Inform("Загрузите подходящую карту в Ози", "Точка не находится на карте");
  link.FindMapAtPosition(latitude, longitude);
}

}  // namespace sondrix
