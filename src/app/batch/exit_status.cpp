#include "app/batch/exit_status.h"

#include "core/code_page.h"
#include "core/messages.h"

namespace sondrix {
namespace {

// The closing of an echogram's run may put its percentage over the first three characters of a report, so a
// report of an error is known by what follows these.
constexpr std::size_t Covered = 3;

bool Names(std::string_view line, std::string_view report) {
  return line.find(FromCharacter(report, Covered)) != std::string_view::npos;
}

}  // namespace

bool EndedWell(std::string_view lastLine, const Messages& messages) {
  if (lastLine.starts_with(" ! ")) return false;
  if (Names(lastLine, "ошибка ") || Names(lastLine, messages.MsgLogError)) return false;
  // A folder as a source, a map that isn't there or isn't one.
  return lastLine != messages.MsgBegin && lastLine != messages.MsgNeedPolish;
}

}  // namespace sondrix
