// Takes the calls that go to the map program's library and notes each as a line of the file that the
// environment names in OZI_RECORD. OZI_MOOD makes it answer otherwise: a text with one of the words
//   closed   the map program isn't running
//   off-map  no position is on the loaded map
//   garbage  the length of a version text is impossible
//   noisy    the version text is 8-bit letters, control characters and no end; calls change the rounding
#include <cfenv>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#ifdef _WIN32
#define RECORDED extern "C" __declspec(dllexport) std::int32_t __stdcall
#else
#define RECORDED extern "C" __attribute__((visibility("default"))) std::int32_t
#endif

namespace {

bool Is(const char* mood) {
  const char* moods = std::getenv("OZI_MOOD");
  return moods && std::strstr(moods, mood);
}

std::int32_t Note(const char* format, ...) {
  if (Is("noisy")) std::fesetround(FE_UPWARD);
  const char* path = std::getenv("OZI_RECORD");
  std::FILE* file = path ? std::fopen(path, "ab") : nullptr;
  if (!file) return 0;
  va_list arguments;
  va_start(arguments, format);
  std::vfprintf(file, format, arguments);
  va_end(arguments);
  std::fputc('\n', file);
  std::fclose(file);
  return 0;
}

std::int32_t Answer(const char* text, char* target, std::int32_t* length) {
  if (Is("noisy")) {
    std::memset(target, '\xC2', static_cast<std::size_t>(*length));
    target[0] = '\n';
    return 0;
  }
  *length = Is("garbage") ? -559038737 : static_cast<std::int32_t>(std::strlen(text));
  // NOLINTNEXTLINE(bugprone-not-null-terminated-result): the length tells where the text ends
  std::memcpy(target, text, std::strlen(text));
  return 0;
}

}  // namespace

RECORDED oziGetApiVersion(char* text, std::int32_t* length) {
  Note("oziGetApiVersion");
  return Answer("1.08", text, length);
}
RECORDED oziGetVersion(char* text, std::int32_t* length) {
  Note("oziGetVersion");
  return Answer("3.95 4m", text, length);
}
RECORDED oziFindOzi() {
  Note("oziFindOzi");
  return Is("closed") ? 1 : 0;
}
RECORDED oziShowAllTracks() { return Note("oziShowAllTracks"); }
RECORDED oziShowTrack(std::int32_t* track) { return Note("oziShowTrack %d", *track); }
RECORDED oziCreateTrackPoint(std::int32_t track, std::int32_t code, double lat, double lon, double altitude,
                             double date) {
  return Note("oziCreateTrackPoint %d %d %.9f %.9f %.4f %.6f", track, code, lat, lon, altitude, date);
}
RECORDED oziCenterMapAtPosition(double lat, double lon) {
  return Note("oziCenterMapAtPosition %.9f %.9f", lat, lon);
}
RECORDED oziCenterMapAtPositionWithMark(double lat, double lon) {
  return Note("oziCenterMapAtPositionWithMark %.9f %.9f", lat, lon);
}
RECORDED oziIsPositionOnMap(double lat, double lon) {
  Note("oziIsPositionOnMap %.9f %.9f", lat, lon);
  return Is("off-map") ? 0 : 1;
}
#ifndef WITHOUT_FIND_MAP
RECORDED oziFindMapAtPosition(double lat, double lon) {
  return Note("oziFindMapAtPosition %.9f %.9f", lat, lon);
}
#endif
RECORDED oziCreateWP(const char* name, std::int32_t symbol, double lat, double lon, double altitude,
                     double date, std::int32_t a, std::int32_t direction, std::int32_t b, std::int32_t c,
                     std::int32_t colour, std::int32_t d, const char* description, std::int32_t e,
                     std::int32_t f, std::int32_t g) {
  Note("oziCreateWP '%s' %d %.9f %.9f %.4f %.6f %d %d %d %d %d %d '%s' %d %d %d", name, symbol, lat, lon,
       altitude, date, a, direction, b, c, colour, d, description, e, f, g);
  return 17;
}
RECORDED oziCloseApi() { return Note("oziCloseApi"); }
