#include "app/ini_file.h"

#include "core/code_page.h"
#include "core/fault.h"
#include "core/files.h"
#include "core/text.h"
#include "platform/file_system.h"

#include <algorithm>
#include <filesystem>
#include <optional>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view Blanks = " \t\r";

bool SameName(std::string_view one, std::string_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](char a, char b) { return Lower(a) == Lower(b); });
}

std::string_view Unquoted(std::string_view value) {
  const bool quoted =
      value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

std::string Decoded(std::string_view bytes) {
  if (bytes.starts_with(ByteOrderMark)) return std::string(bytes.substr(ByteOrderMark.size()));
  return FromCodePage(bytes);
}

// A letter that wouldn't come back out of the code page makes the whole file UTF-8.
std::string Encoded(const std::string& text) {
  std::string bytes = ToCodePage(text);
  if (FromCodePage(bytes) == text) return bytes;
  return std::string(ByteOrderMark) + text;
}

// A line of the text: where it stands, its end without the line end, and what it holds.
struct Line {
  std::size_t begin = 0, end = 0;
  std::string_view section;             // of a line "[section]"
  std::optional<std::string_view> key;  // of a line "key=value"
  std::string_view value;               // trimmed
};

// The line at a position, which moves behind its line end.
Line NextLine(std::string_view text, std::size_t& position) {
  Line line;
  line.begin = position;
  const std::size_t lineEnd = std::min(text.find('\n', position), text.size());
  position = std::min(lineEnd + 1, text.size());
  line.end = lineEnd > line.begin && text[lineEnd - 1] == '\r' ? lineEnd - 1 : lineEnd;
  const std::string_view content = Trimmed(text.substr(line.begin, line.end - line.begin), Blanks);
  if (content.starts_with('[')) {
    line.section = content;
    return line;
  }
  const std::size_t equals = content.find('=');
  if (content.starts_with(';') || equals == std::string_view::npos) return line;
  line.key = Trimmed(content.substr(0, equals), Blanks);
  line.value = Trimmed(content.substr(equals + 1), Blanks);
  return line;
}

// The positions between the head of a section and the next head; none where the section is missing.
struct Stretch {
  std::size_t begin = 0, end = 0;
};

std::optional<Stretch> SectionIn(std::string_view text, std::string_view section) {
  std::optional<Stretch> found;
  for (std::size_t position = 0; position < text.size();) {
    const Line line = NextLine(text, position);
    if (line.section.empty()) continue;
    if (found) return Stretch{found->begin, line.begin};
    const std::string_view name = Trimmed(line.section.substr(1, line.section.find(']') - 1), Blanks);
    if (SameName(name, section)) found = Stretch{position, text.size()};
  }
  return found;
}

std::optional<Line> LineOf(std::string_view text, const Stretch& stretch, std::string_view key) {
  for (std::size_t position = stretch.begin; position < stretch.end;) {
    const Line line = NextLine(text, position);
    if (line.key && SameName(*line.key, key)) return line;
  }
  return std::nullopt;
}

std::string_view CutTo(std::string_view text, std::size_t characters) {
  return text.substr(0, text.size() - FromCharacter(text, characters).size());
}

// A value as it stands in a line: what reading would drop is kept by a pair of quotes.
std::string Written(std::string value) {
  std::replace_if(
      value.begin(), value.end(), [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
  const bool isKept = Unquoted(Trimmed(value, Blanks)).size() == value.size();
  return isKept ? value : '"' + value + '"';
}

// A new key goes behind the last line of its section that isn't empty.
void PutValue(std::string& text, std::string_view section, std::string_view key, const std::string& value) {
  auto stretch = SectionIn(text, section);
  if (!stretch) {
    if (!text.empty() && !text.ends_with('\n')) text += "\r\n";
    text += "[" + std::string(section) + "]\r\n";
    stretch = Stretch{text.size(), text.size()};
  }
  if (const auto line = LineOf(text, *stretch, key)) {
    const std::size_t behindEquals = text.find('=', line->begin) + 1;
    text.replace(behindEquals, line->end - behindEquals, value);
    return;
  }
  std::size_t place = stretch->begin;
  for (std::size_t position = stretch->begin; position < stretch->end;) {
    const Line line = NextLine(text, position);
    if (!Trimmed(std::string_view(text).substr(line.begin, line.end - line.begin), Blanks).empty())
      place = position;
  }
  const bool isOpen = place > 0 && text[place - 1] != '\n';
  text.insert(place, (isOpen ? "\r\n" : "") + std::string(key) + "=" + value + "\r\n");
}

std::string ReadIni(std::string_view file) {
  std::error_code error;
  const std::uintmax_t length = fs::file_size(PathOf(file), error);
  if (!error && length > MaxIniLength) throw Fault(FaultNumber::OutOfMemory);
  return Decoded(ReadWhole(file));
}

// Writes beside the file and takes its place only when everything is on the disk. A link stays one.
void ReplaceFile(std::string_view path, std::string_view bytes) {
  std::error_code error;
  const fs::path target = LinkTarget(PathOf(path), error);
  if (error) throw Fault(FaultOfError(error));
  const std::u8string name = target.u8string();
  GrowingFile file(std::string(name.begin(), name.end()), ".new");
  try {
    file.File().TakePermissionsOf(target);
    file.File().Write(bytes);
    file.File().Flush();
    file.PutInPlace();
  } catch (...) {
    file.TakeAway();
    throw;
  }
}

}  // namespace

std::optional<std::string> IFind(std::string_view file, std::string_view section, std::string_view key) {
  try {
    const std::string text = ReadIni(file);
    const auto stretch = SectionIn(text, section);
    if (!stretch) return std::nullopt;
    const auto line = LineOf(text, *stretch, key);
    if (!line) return std::nullopt;
    return std::string(CutTo(Unquoted(line->value), MaxIniValue));
  } catch (const Fault&) {
    return std::nullopt;
  }
}

std::string IRead(std::string_view file, std::string_view section, std::string_view key) {
  return IFind(file, section, key).value_or("");
}

bool IWriteAll(std::string_view file, std::string_view section, std::span<const IniValue> values) {
  try {
    std::string text;
    if (fs::exists(PathOf(file))) {
      text = ReadIni(file);
    } else if (!MakeFolders(file)) {
      return false;
    }
    for (const IniValue& one : values) PutValue(text, section, one.key, Written(one.value));
    ReplaceFile(file, Encoded(text));
    return true;
  } catch (...) {
    CaughtFault();
    return false;
  }
}

bool IWrite(std::string_view file, std::string_view section, std::string_view key, std::string_view value) {
  const IniValue one{key, std::string(value)};
  return IWriteAll(file, section, std::span(&one, 1));
}

}  // namespace sondrix
