#include "sounders/sounder_formats.h"

#include "core/files.h"
#include "sounders/gpx/gpx_reader.h"
#include "sounders/nmea/nmea_reader.h"
#include "sounders/sl/sl_reader.h"
#include "sounders/table/table_sounder.h"

#include <vector>

namespace sondrix {

std::span<const SounderFormat> SounderFormats() {
  // From what is certain of itself to what any text could be.
  static constexpr SounderFormat formats[] = {
      {"SL2", IsSl2, ReadSl},
      {"SL3", IsSl3, ReadSl},
      {"NMEA 0183", IsNmeaLog, ReadNmeaLog},
      {"GPX", IsGpx, ReadGpx},
      {"table", IsTable, ReadTable, true},
  };
  return formats;
}

const SounderFormat* Recognise(std::string_view path) {
  InputFile file(path);
  std::vector<std::uint8_t> bytes(SourceHead::MaxBytes);
  bytes.resize(file.ReadAt(0, bytes));
  const SourceHead head = {bytes, file.Length()};
  for (const SounderFormat& format : SounderFormats()) {
    if (format.recognises(head)) return &format;
  }
  return nullptr;
}

}  // namespace sondrix
