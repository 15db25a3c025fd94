#pragma once

#include "app/session.h"
#include "core/fault.h"
#include "core/settings.h"

#include <optional>
#include <span>
#include <string_view>

namespace sondrix {

// A value of the ini file that no field takes.
struct LoadFault {
  std::string_view key;
  Fault fault;
};

// Fills the stored fields from an ini file, in the order of their table, each as its click would. A faulty
// flag or contrast ends the load at that key, and the fields after it keep what they hold; a flag that is
// missing is such a fault (13) unless its row says that it may miss, one other than 0, 1 and 2 fault 380. A
// "DefLang" outside the list is passed over.
std::optional<LoadFault> LoadSettings(Session& session, std::string_view iniFile,
                                      std::span<const Field> fields = Fields());

}  // namespace sondrix
