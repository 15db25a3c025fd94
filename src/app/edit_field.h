#pragma once

#include "app/session.h"

#include <string_view>

namespace sondrix {

enum class EditResult {
  Done,
  NoField,   // no field of that name
  BadValue,  // see AllowedValues
  Disabled,  // the control is disabled; nothing was changed
};

// Acts as a user who edits or clicks the field until it holds the value: a check box that has it already
// isn't clicked. Whether a click has its effect shows in Settings and in the log line.
EditResult EditField(Session& session, std::string_view name, std::string_view value);

// What EditField takes for a field, in English.
std::string_view AllowedValues(const Field& field);

// A check box takes a value, with what its click does.
void SetFlag(Session& session, const Field& field, bool value);

}  // namespace sondrix
