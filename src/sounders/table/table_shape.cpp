#include "sounders/table/table_shape.h"

#include "core/code_page.h"
#include "sounders/table/table_angle.h"
#include "sounders/table/table_cells.h"
#include "sounders/table/table_names.h"
#include "sounders/table/table_time.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>

namespace sondrix {
namespace {

// Ones that stand inside values only rarely come first.
constexpr char Separators[] = {'\t', ';', '|', ',', Blanks};
constexpr std::size_t MaxRows = 500;

bool IsValue(std::string_view cell) {
  if (CellNumber(cell) || MomentOf(cell, DateOrder::DayFirst) || MomentOf(cell, DateOrder::MonthFirst))
    return true;
  // Numbers between blanks alone are as likely two cells.
  return cell.find_first_not_of("0123456789.,- ") != std::string_view::npos && AngleOf(cell);
}

// The share of values among the cells that aren't empty, and how many there are.
struct RowShare {
  std::size_t cells = 0;
  double values = 0;
};
RowShare ShareOf(const std::vector<std::string_view>& cells) {
  std::size_t values = 0, filled = 0;
  for (const std::string_view cell : cells) {
    if (IsMissing(cell)) continue;
    ++filled;
    if (IsValue(cell)) ++values;
  }
  return {cells.size(), filled == 0 ? 0 : static_cast<double>(values) / static_cast<double>(filled)};
}

// A row of values has at least so many of them; names of places and channels may stand beside.
constexpr double RowValues = 0.4;

struct SeparatorScore {
  double quality = 0;
  std::size_t columns = 0, fitting = 0;
};

SeparatorScore ScoreOf(const std::vector<std::string_view>& lines, char separator) {
  std::map<std::size_t, std::size_t> counts;
  std::vector<RowShare> shares;
  std::vector<std::string_view> cells;
  for (const std::string_view line : lines) {
    SplitRow(line, separator, cells, MaxColumns);
    shares.push_back(ShareOf(cells));
    if (shares.back().values >= RowValues) ++counts[cells.size()];
  }
  SeparatorScore score;
  for (const auto& [columns, count] : counts)
    if (count >= score.fitting) score = {0, columns, count};
  for (const RowShare& share : shares)
    if (share.cells == score.columns && share.values >= RowValues) score.quality += share.values;
  // Rows of one length speak for a separator; one column is what is left where none separates.
  if (score.columns < 2) score.quality *= 0.25;
  return score;
}

std::vector<std::string_view> LinesOf(std::string_view text, bool isWhole) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("\r\n");
    if (end == std::string_view::npos) {
      if (isWhole || lines.empty()) lines.push_back(text);
      break;
    }
    lines.push_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  return lines;
}

// A comment without its mark.
std::string_view CommentText(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of("#/%; \t"), line.size()));
  return line;
}

std::vector<std::string> NamesOf(std::string_view line, char separator) {
  std::vector<std::string_view> cells;
  SplitRow(line, separator, cells, MaxColumns);
  std::vector<std::string> names;
  for (const std::string_view cell : cells) {
    // Between blanks a unit stands by itself.
    if (separator == Blanks && !names.empty() && (cell.starts_with('(') || cell.starts_with('['))) {
      names.back().append(cell);
    } else {
      names.push_back(HeadName(cell));
    }
  }
  return names;
}

// How many of a line's cells are names that a head of soundings has, 0 where values stand in it.
std::size_t KnownNames(std::string_view line, char separator) {
  std::vector<std::string_view> cells;
  SplitRow(line, separator, cells, MaxColumns);
  if (ShareOf(cells).values > 0.3) return 0;
  std::array<bool, MeaningCount> isKnown{};
  for (const std::string_view cell : cells)
    isKnown[static_cast<std::size_t>(ColumnNameOf(HeadName(cell)).meaning)] = true;
  isKnown[static_cast<std::size_t>(Meaning::Unknown)] = false;
  isKnown[static_cast<std::size_t>(Meaning::Ignored)] = false;
  return static_cast<std::size_t>(std::count(isKnown.begin(), isKnown.end(), true));
}

bool FitsRow(std::string_view line, const TableShape& shape) {
  std::vector<std::string_view> cells;
  SplitRow(line, shape.separator, cells, MaxColumns);
  return cells.size() == shape.columns && ShareOf(cells).values >= RowValues;
}

// A line of names in front of the rows that other separators part than theirs, as a converter writes it: it
// doesn't say which column is which, but it is no bad row.
std::string_view ForeignHead(const std::vector<std::string_view>& lines, const TableShape& shape) {
  for (const std::string_view line : lines) {
    if (IsComment(line, shape.separator)) continue;
    if (FitsRow(line, shape)) break;
    for (const char separator : Separators)
      if (KnownNames(line, separator) >= 2) return line;
  }
  return {};
}

// The head is the best known line in front of the rows; a comment may be one, and so may names that nobody
// knows, of as many columns as the rows have.
void FindHead(TableShape& shape, const std::vector<std::string_view>& lines) {
  std::size_t best = 0;
  std::string_view head, last;
  bool isRow = false;
  for (const std::string_view line : lines) {
    const bool isComment = IsComment(line, shape.separator);
    if (!isComment && FitsRow(line, shape)) {
      isRow = true;
      break;
    }
    const std::string_view text = isComment ? CommentText(line) : line;
    if (const std::size_t known = KnownNames(text, shape.separator); known > 0 && known >= best) {
      // Words may stand in front of the names in a comment; then they are of no use.
      if (isComment && NamesOf(text, shape.separator).size() != shape.columns) continue;
      best = known;
      head = text;
    }
    if (!isComment && !TrimmedCell(line).empty()) last = line;
  }
  if (best < 2 && isRow && !last.empty() && (best == 0 || head.data() != last.data())) {
    std::vector<std::string_view> cells;
    SplitRow(last, shape.separator, cells, MaxColumns);
    if (cells.size() == shape.columns && ShareOf(cells).values == 0) head = last;
  }
  if (head.empty() && isRow) shape.headLine = ForeignHead(lines, shape);
  if (head.empty() || (best == 1 && shape.columns > 1 && head.data() != last.data())) return;
  shape.headLine = head;
  shape.head = NamesOf(head, shape.separator);
}

}  // namespace

EncodingFound EncodingOf(std::string_view start) {
  if (start.starts_with("\xEF\xBB\xBF")) return {TableEncoding::Bytes, 3};
  if (start.starts_with("\xFF\xFE")) return {TableEncoding::Utf16Little, 2};
  if (start.starts_with("\xFE\xFF")) return {TableEncoding::Utf16Big, 2};
  // Without a mark by the zeros beside digits and Latin letters.
  std::size_t even = 0, odd = 0;
  const std::size_t length = std::min<std::size_t>(start.size(), 256);
  for (std::size_t i = 0; i < length; ++i)
    if (start[i] == '\0') ++(i % 2 == 0 ? even : odd);
  if (length >= 8 && even == 0 && odd > length / 3) return {TableEncoding::Utf16Little, 0};
  if (length >= 8 && odd == 0 && even > length / 3) return {TableEncoding::Utf16Big, 0};
  return {};
}

void DecodeLine(std::string_view bytes, TableEncoding encoding, std::string& utf8) {
  utf8.clear();
  const bool isLittle = encoding == TableEncoding::Utf16Little;
  if (isLittle && !bytes.empty() && bytes.front() == '\0') bytes.remove_prefix(1);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto low = static_cast<unsigned char>(bytes[isLittle ? i : i + 1]);
    const auto high = static_cast<unsigned char>(bytes[isLittle ? i + 1 : i]);
    AppendUtf8(utf8, high * 256U + low);
  }
}

bool IsComment(std::string_view line, char separator) {
  if (line.empty()) return false;
  if (line[0] == '#' || line[0] == '%') return true;
  return line.starts_with("//") || (line[0] == ';' && separator != ';');
}

std::string_view NameOfSeparator(char separator) {
  switch (separator) {
    case ',':
      return "comma";
    case ';':
      return "semicolon";
    case '\t':
      return "tab";
    case '|':
      return "|";
    default:
      return "blanks";
  }
}

TableShape ShapeOf(std::string_view start, bool isWhole) {
  TableShape shape;
  const EncodingFound found = EncodingOf(start);
  shape.encoding = found.encoding;
  start.remove_prefix(found.markBytes);
  std::string decoded;
  if (shape.encoding != TableEncoding::Bytes) {
    DecodeLine(start, shape.encoding, decoded);
    start = decoded;
  }
  std::vector<std::string_view> lines = LinesOf(start, isWhole);
  std::vector<std::string_view> plain;
  for (const std::string_view line : lines) {
    if (plain.size() == MaxRows) break;
    if (!TrimmedCell(line).empty() && !IsComment(line, Blanks)) plain.push_back(line);
  }
  shape.lines = plain.size();

  double best = 0;
  for (const char separator : Separators) {
    const SeparatorScore score = ScoreOf(plain, separator);
    if (score.quality <= best) continue;
    best = score.quality;
    shape.separator = separator;
    shape.columns = score.columns;
    shape.fitting = score.fitting;
  }
  if (shape.fitting == 0) {
    // A head without rows: the separator that gives most names.
    std::size_t most = 0;
    for (const char separator : Separators) {
      const std::size_t known = plain.empty() ? 0 : KnownNames(plain[0], separator);
      if (known <= most) continue;
      most = known;
      shape.separator = separator;
    }
  }
  FindHead(shape, lines);
  for (const std::string_view line : plain)
    if (shape.rows.size() < MaxRows && FitsRow(line, shape)) shape.rows.emplace_back(line);
  return shape;
}

}  // namespace sondrix
