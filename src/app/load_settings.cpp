#include "app/load_settings.h"

#include "app/edit_field.h"
#include "app/ini_file.h"
#include "core/number_text.h"
#include "core/rounding.h"

namespace sondrix {
namespace {

// A check box has a third state, 2, which counts as set.
bool FlagOf(std::string_view text) {
  const std::int16_t value = ToWhole16(LocParse(text));
  if (value < 0 || value > 2) throw Fault(FaultNumber::InvalidProperty);
  return value != 0;
}

int ContrastOf(std::string_view text) {
  const std::int16_t value = ToWhole16(ToWhole32(LocParse(text)));
  if (value < MinEhoSens || value > MaxEhoSens) throw Fault(FaultNumber::InvalidProperty);
  return value;
}

void SetFromText(Session& session, const Field& field, const std::string& text) {
  switch (field.kind) {
    case FieldKind::Text:
      session.settings.*field.text = text;
      break;
    case FieldKind::Flag:
      SetFlag(session, field, FlagOf(text));
      break;
    case FieldKind::Contrast:
      session.settings.*field.number = ContrastOf(text);
      break;
    case FieldKind::Language:
      EditField(session, field.name, text);
      break;
    case FieldKind::Channel:
      break;
  }
  session.window.ShowField(field.name);
}

}  // namespace

std::optional<LoadFault> LoadSettings(Session& session, std::string_view iniFile,
                                      std::span<const Field> fields) {
  for (const Field& field : fields) {
    if (field.key.empty() || field.kind == FieldKind::Channel) continue;
    try {
      const std::string_view missing = field.mayMiss ? field.defaultText : std::string_view();
      const auto stored = IFind(iniFile, IniSection, field.key);
      SetFromText(session, field, stored.value_or(std::string(missing)));
    } catch (const Fault& fault) {
      return LoadFault{field.key, fault};
    }
  }
  return std::nullopt;
}

}  // namespace sondrix
