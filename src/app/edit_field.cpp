#include "app/edit_field.h"

#include "core/code_page.h"
#include "jobs/clicks.h"

#include <charconv>
#include <optional>

namespace sondrix {
namespace {

constexpr std::size_t MaxProcCharacters = 2;

std::optional<int> ParseWhole(std::string_view text) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

EditResult EditText(Session& session, const Field& field, std::string_view value) {
  if (field.text == &Settings::MaxProc && CharacterCount(value) > MaxProcCharacters) {
    return EditResult::BadValue;
  }
  session.settings.*field.text = value;
  return EditResult::Done;
}

EditResult EditFlag(Session& session, const Field& field, std::string_view value) {
  if (value != "0" && value != "1") return EditResult::BadValue;
  const bool flag = value == "1";
  if (session.settings.*field.flag == flag) return EditResult::Done;
  if (field.flag == &Settings::SaveGraf && !session.settings.MakeGraf) return EditResult::Disabled;
  SetFlag(session, field, flag);
  return EditResult::Done;
}

EditResult EditContrast(Session& session, const Field& field, std::string_view value) {
  const auto contrast = ParseWhole(value);
  if (!contrast || *contrast < MinEhoSens || *contrast > MaxEhoSens) return EditResult::BadValue;
  session.settings.*field.number = *contrast;
  return EditResult::Done;
}

EditResult EditChannel(Session& session, const Field& field, std::string_view value) {
  const auto number = ParseWhole(value);
  const auto channel = number ? ChannelOf(*number) : std::nullopt;
  if (!channel) return EditResult::BadValue;
  session.settings.*field.number = *number;
  ChannelClick(session.run, *channel);
  return EditResult::Done;
}

EditResult EditLanguage(Session& session, const Field& field, std::string_view value) {
  const LangId langId = LangIdOf(value);
  if (langId == 0) return EditResult::BadValue;
  session.settings.*field.text = value;
  ApplyLanguage(session, langId);
  return EditResult::Done;
}

}  // namespace

EditResult EditField(Session& session, std::string_view name, std::string_view value) {
  const Field* field = FindField(name);
  if (!field) return EditResult::NoField;
  EditResult result = EditResult::NoField;
  switch (field->kind) {
    case FieldKind::Text:
      result = EditText(session, *field, value);
      break;
    case FieldKind::Flag:
      result = EditFlag(session, *field, value);
      break;
    case FieldKind::Contrast:
      result = EditContrast(session, *field, value);
      break;
    case FieldKind::Channel:
      result = EditChannel(session, *field, value);
      break;
    case FieldKind::Language:
      result = EditLanguage(session, *field, value);
      break;
  }
  if (result == EditResult::Done) session.window.ShowField(name);
  return result;
}

std::string_view AllowedValues(const Field& field) {
  switch (field.kind) {
    case FieldKind::Text:
      return field.text == &Settings::MaxProc ? "at most 2 characters" : "any text";
    case FieldKind::Flag:
      return "0 or 1";
    case FieldKind::Contrast:
      return "a whole number from -100 to 50";
    case FieldKind::Channel:
      return "0, 2, 5 or 9";
    case FieldKind::Language:
      return "RUS, ENG or DEU";
  }
  return {};
}

void SetFlag(Session& session, const Field& field, bool value) {
  session.settings.*field.flag = value;
  if (field.flag == &Settings::MakeCut) CutClick(session.run);
  if (field.flag == &Settings::MakeGraf) GrafClick(session.run);
  if (field.flag == &Settings::ViewOzi && value) {
    OpenLink(session.link, session.settings, session.messages, session.window);
  }
}

}  // namespace sondrix
