#include "app/command_line.h"

#include "app/exit_status.h"
#include "platform/platform.h"

#include <cstdio>

namespace sondrix {

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

std::string Complaint(std::string_view program, std::string_view text) {
  return std::string(program) + ": " + std::string(text) + "\n";
}

void Complain(std::string_view program, std::string_view text) {
  std::fflush(stdout);
  PutText(stderr, Complaint(program, text));
}

int EndBefore(std::string_view program, int status, std::string_view text) {
  if (status == ExitUsage) {
    Complain(program, text);
  } else {
    PutText(stdout, text);
  }
  return status;
}

int EndBehind(std::string_view program, int status) {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
  Complain(program, "what was printed is lost: standard output takes no more");
  return status == ExitWell ? ExitFailed : status;
}

}  // namespace sondrix
