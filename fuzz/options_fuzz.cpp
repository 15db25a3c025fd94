#include "app/batch/options.h"
#include "app/exit_status.h"
#include "fuzz/fuzz_run.h"

#include <vector>

// The arguments are the lines of the input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sondrix;
  std::vector<std::string> arguments;
  std::string_view text = TextOf({data, size});
  while (!text.empty() && arguments.size() < 50) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    arguments.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  const ParsedOptions parsed = ParseOptions(arguments);
  if (parsed.exitStatus) {
    Require(*parsed.exitStatus == ExitWell || *parsed.exitStatus == ExitUsage, "the status");
    Require(!parsed.text.empty(), "an end has a text");
    return 0;
  }
  for (const FieldEdit& edit : parsed.options.edits)
    Require(edit.name.find('=') == std::string::npos, "a field's name", edit.name);
  for (const std::string& source : parsed.options.sources) Require(!source.empty(), "a source");
  return 0;
}
