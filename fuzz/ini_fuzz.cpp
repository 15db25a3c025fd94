#include "app/ini_file.h"
#include "app/load_settings.h"
#include "app/settings_store.h"
#include "core/code_page.h"
#include "fuzz/fuzz_run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sondrix;
  const std::string file = Folder().Of("sondrix.ini");
  {
    OutputFile output(file);
    output.Write(FuzzBytes(data, size));
    output.Close();
  }
  FuzzWindow window;
  Session session(window);
  const auto fault = LoadSettings(session, file);
  Require(session.settings.EhoSens >= MinEhoSens && session.settings.EhoSens <= MaxEhoSens, "the contrast");
  if (fault) return 0;

  // What a closing writes is what the next start reads, but for the lengths and blanks that a reader drops.
  Require(SaveSettings(session, file), "the file is written");
  FuzzWindow nextWindow;
  Session next(nextWindow);
  Require(!LoadSettings(next, file), "a file of ours is read without a fault");
  for (const Field& field : Fields()) {
    if (field.key.empty() || field.kind == FieldKind::Text) continue;
    Require(FieldText(next.settings, field) == FieldText(session.settings, field), "a field comes back",
            field.name);
  }
  return 0;
}
