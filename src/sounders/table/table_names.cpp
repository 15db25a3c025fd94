#include "sounders/table/table_names.h"

#include "core/code_page.h"
#include "sounders/table/table_cells.h"

#include <array>
#include <optional>

namespace sondrix {
namespace {

struct Names {
  Meaning meaning;
  std::string_view names;  // between blanks, folded, the likelier ones first
};
// Names of other languages: English, German, Russian, Spanish, Portuguese, French, Italian, Dutch, Finnish,
// Swedish, Danish, Norwegian, Hungarian, Polish, Czech, Chinese, Japanese.
constexpr Names Table[] = {
    {Meaning::Latitude,
     "latitude lat latitudine latitud lattitude latdd latdecimal declat decimallatitude breite breitengrad "
     "geobreite "
     "geographischebreite широта leveysaste leveyspiiri bredd breddgrad bredde breddegrad szelesseg "
     "szerokosc "
     "szerokoscgeograficzna zemepisnasirka sirka breedtegraad 緯度 纬度"},
    {Meaning::Longitude,
     "longitude lon lng long longitudine longitud longtitude londd longdd londecimal declon decimallongitude "
     "lange laenge "
     "langengrad laengengrad geolange geolaenge geographischelange долгота pituusaste pituuspiiri langd "
     "langdgrad lengdegrad lengde langdegrad hosszusag dlugosc dlugoscgeograficzna zemepisnadelka delka "
     "lengtegraad 経度 经度"},
    {Meaning::Y, "northing y ycoord ycoordinate utmy utmnorthing north nordwert hochwert"},
    {Meaning::X, "easting x xcoord xcoordinate utmx utmeasting east ostwert rechtswert"},
    {Meaning::SounderY, "positiony augmentedy"},
    {Meaning::SounderX, "positionx augmentedx"},
    {Meaning::NorthSouth, "ns northsouth lathemisphere lathem latdir latitudehemisphere"},
    {Meaning::EastWest, "ew eastwest lonhemisphere lonhem londir longitudehemisphere"},
    {Meaning::Depth,
     "depth waterdepth bottomdepth depthbelowtransducer depthbelowsurface correcteddepth totaldepth btdepth "
     "instdep dep dpt dbt "
     "sounding tiefe wassertiefe глубина profondeur prof profondita profundidad profundidade diepte "
     "waterdiepte "
     "syvyys djup vattendjup dybde vanndybde melyseg vizmelyseg glebokosc hloubka 水深 深度 bathymetry bathy "
     "z"},
    {Meaning::Height, "elevation elev bottomelevation height altitude alt hohe hoehe высота"},
    {Meaning::Time,
     "timestamp datetime timeutc utctime utcdatetime datetimeutc utc gpstime time unixtime epoch posixtime "
     "epochms epochtime timems zeitstempel zeit uhrzeit "
     "время датавремя датаивремя дататывремя heure horodatage hora fechahora ora dataora tijd tijdstip aika "
     "aikaleima tid "
     "tidpunkt ido idopont czas cas 時刻 日時 时间 stamp"},
    {Meaning::Date,
     "date datum дата fecha data dato paivays paivamaara dag datetag dateutc utcdate gpsdate 日付 日期"},
    {Meaning::Channel, "channel surveytype survey sonarchannel channeltype channelid beam kanal канал"},
    {Meaning::Ignored,
     "ignore ignored skip none temperature temp watertemp wtemp speed sog course cog heading id index"},
};

struct Unit {
  std::string_view name;  // folded
  double metres;          // 0 for a unit of something else
};
// Longer ones before those that they end with.
constexpr Unit Units[] = {
    {"fathoms", 1.8288},
    {"fathom", 1.8288},
    {"faden", 1.8288},
    {"fthm", 1.8288},
    {"ftm", 1.8288},
    {"fth", 1.8288},
    {"fa", 1.8288},
    {"fm", 1.8288},
    {"feet", 0.3048},
    {"foot", 0.3048},
    {"fuss", 0.3048},
    {"fus", 0.3048},
    {"футов", 0.3048},
    {"футы", 0.3048},
    {"фут", 0.3048},
    {"ft", 0.3048},
    {"centimeters", 0.01},
    {"centimetres", 0.01},
    {"cm", 0.01},
    {"см", 0.01},
    {"dm", 0.1},
    {"дм", 0.1},
    {"millimeters", 0.001},
    {"millimetres", 0.001},
    {"mm", 0.001},
    {"мм", 0.001},
    {"meters", 1},
    {"metres", 1},
    {"meter", 1},
    {"metre", 1},
    {"mtr", 1},
    {"метры", 1},
    {"метров", 1},
    {"м", 1},
    {"metri", 1},
    {"metros", 1},
    {"decimaldegrees", 0},
    {"degrees", 0},
    {"degree", 0},
    {"grad", 0},
    {"deg", 0},
    {"wgs84", 0},
    {"utc", 0},
    {"gmt", 0},
    {"dd", 0},
    {"iso8601", 0},
    {"iso", 0},
    {"unix", 0},
    {"seconds", 0},
    {"sec", 0},
    {"ms", 0},
    {"m", 1},
    {"s", 0},
};

// What stands before a name without a meaning of its own.
constexpr std::string_view Prefixes[] = {"gps", "wgs84", "wgs",   "gnss", "position", "pos", "start",
                                         "geo", "nav",   "point", "boat", "sonar",    "echo"};

// The letters of U+00C0 to U+017F without their accents; "*" is none.
constexpr std::string_view Latin =
    "aaaaaaaceeeeiiiidnooooo*ouuuuytsaaaaaaaceeeeiiiidnooooo*ouuuuyty"
    "aaaaaaccccccccddddeeeeeeeeeegggggggghhhhiiiiiiiiiiiijjkkkllllllllllnnnnnnnnnoooooooorrrrrrssssssss"
    "ttttttuuuuuuuuuuuuwwyyyzzzzzzs";
static_assert(Latin.size() == 0x180 - 0xC0);

// The next character of a UTF-8 text of up to three bytes; 0 for bytes that are none, which it steps over.
unsigned TakeCode(std::string_view& text) {
  const auto first = static_cast<unsigned char>(text[0]);
  const std::size_t length = first < 0x80 ? 1 : first >= 0xE0 && first < 0xF0 ? 3 : first >= 0xC2 ? 2 : 0;
  if (length == 0 || first >= 0xF0 || length > text.size()) {
    text.remove_prefix(1);
    return 0;
  }
  unsigned code = length == 1 ? first : first & (length == 2 ? 0x1FU : 0x0FU);
  for (std::size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0) != 0x80) {
      text.remove_prefix(1);
      return 0;
    }
    code = code << 6 | (byte & 0x3FU);
  }
  text.remove_prefix(length);
  return code;
}

bool IsUtf8(std::string_view text) {
  while (!text.empty())
    if (TakeCode(text) == 0) return false;
  return true;
}

std::optional<ColumnName> Known(std::string_view folded) {
  if (folded.empty()) return std::nullopt;
  for (const Names& row : Table) {
    std::size_t rank = 0;
    for (std::string_view names = row.names; !names.empty(); ++rank) {
      const std::size_t end = std::min(names.find(' '), names.size());
      if (names.substr(0, end) == folded) return ColumnName{row.meaning, 0, rank};
      names.remove_prefix(std::min(end + 1, names.size()));
    }
  }
  return std::nullopt;
}

// A name alone or with a unit behind it.
std::optional<ColumnName> KnownWithUnit(std::string_view folded) {
  if (const auto known = Known(folded)) return known;
  for (const Unit& unit : Units) {
    if (!folded.ends_with(unit.name)) continue;
    auto known = Known(folded.substr(0, folded.size() - unit.name.size()));
    if (!known) continue;
    known->metres = unit.metres;
    return known;
  }
  return std::nullopt;
}

}  // namespace

std::string_view NameOf(Meaning meaning) {
  static constexpr std::array<std::string_view, MeaningCount> names = {
      "unknown",        "ignored",      "latitude", "longitude", "y",    "x",    "Mercator y", "Mercator x",
      "north or south", "east or west", "depth",    "height",    "time", "date", "channel"};
  return names[static_cast<std::size_t>(meaning)];
}

double MetresOf(std::string_view unit) {
  const std::string folded = FoldedName(unit);
  for (const Unit& row : Units)
    if (folded == row.name) return row.metres;
  return 0;
}

std::string FoldedName(std::string_view name) {
  std::string folded;
  while (!name.empty()) {
    unsigned code = TakeCode(name);
    if (code >= 'A' && code <= 'Z') code += 'a' - 'A';
    if (code >= 0xC0 && code < 0x180) code = static_cast<unsigned char>(Latin[code - 0xC0]);
    if (code >= 0x410 && code <= 0x42F) code += 0x20;
    if (code == 0x401 || code == 0x451) code = 0x435;
    const bool isAscii = (code >= 'a' && code <= 'z') || (code >= '0' && code <= '9');
    const bool isOther = code >= 0x400 && (code < 0x2000 || code > 0x303F) && code < 0xFE00;
    if (isAscii || isOther) AppendUtf8(folded, code);
  }
  return folded;
}

ColumnName ColumnNameOf(std::string_view name) {
  if (TrimmedCell(name) == "-") return {Meaning::Ignored, 0, 0};
  // A unit stands in brackets or behind a comma.
  const std::size_t bracket = std::min(name.find_first_of("([{,"), name.size());
  const std::string folded = FoldedName(name.substr(0, bracket));
  std::optional<ColumnName> known = KnownWithUnit(folded);
  for (const std::string_view prefix : Prefixes) {
    if (known) break;
    if (folded.starts_with(prefix)) known = KnownWithUnit(std::string_view(folded).substr(prefix.size()));
  }
  if (!known) known = KnownWithUnit(FoldedName(name));
  if (!known) return {};
  if (bracket < name.size()) {
    if (const double metres = MetresOf(name.substr(bracket)); metres > 0) known->metres = metres;
  }
  return *known;
}

std::string HeadName(std::string_view bytes) {
  if (IsUtf8(bytes)) return std::string(bytes);
  std::string western;
  for (const char c : bytes) AppendUtf8(western, static_cast<unsigned char>(c));
  const std::string cyrillic = FromCodePage(bytes);
  return ColumnNameOf(cyrillic).meaning == Meaning::Unknown ? western : cyrillic;
}

}  // namespace sondrix
