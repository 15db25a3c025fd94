#include "exports/layer_styles.h"

#include "core/sounding.h"
#include "exports/row_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace sondrix {
namespace {

struct Colour {
  int red, green, blue;
};

// The ramp Blues of ColorBrewer (Brewer and Harrower 2003), which people with any colour vision tell apart.
constexpr Colour Blues[] = {{247, 251, 255}, {222, 235, 247}, {198, 219, 239},
                            {158, 202, 225}, {107, 174, 214}, {66, 146, 198},
                            {33, 113, 181},  {8, 81, 156},    {8, 48, 107}};

// Of the palette of Okabe and Ito (2008), for any colour vision too; by Fate.
constexpr std::array<Colour, FateCount> FateColours = {
    {{0, 0, 0}, {153, 153, 153}, {230, 159, 0}, {213, 94, 0}, {204, 121, 167}, {153, 153, 153}}};

constexpr Colour LineColour = {8, 48, 107}, TrackColour = {120, 120, 120};

constexpr std::string_view Head =
    "<!DOCTYPE qgis PUBLIC 'http://mrcc.com/qgis.dtd' 'SYSTEM'>\n<qgis version=\"3.22\" "
    "styleCategories=\"Symbology|Labeling\" labelsEnabled=\"";

struct Property {
  std::string_view name;
  std::string value;
};

std::string TextOf(Colour colour) {
  return std::to_string(colour.red) + "," + std::to_string(colour.green) + "," + std::to_string(colour.blue) +
         ",255";
}

std::string NumberText(double number) {
  std::array<char, NumberRoom> text;
  return {text.data(), PutNumber(text.data(), number, 3, true)};
}

std::string Symbol(std::size_t name, std::string_view type, std::string_view layer,
                   std::initializer_list<Property> properties) {
  std::string text = "<symbol alpha=\"1\" clip_to_extent=\"1\" force_rhr=\"0\" name=\"" +
                     std::to_string(name) + "\" type=\"";
  text.append(type)
      .append("\"><layer class=\"")
      .append(layer)
      .append("\" enabled=\"1\" locked=\"0\" pass=\"0\">");
  for (const Property& property : properties)
    text.append("<prop k=\"").append(property.name).append("\" v=\"").append(property.value).append("\"/>");
  return text + "</layer></symbol>\n";
}

std::string LineSymbol(std::size_t name, Colour colour, const char* millimetres) {
  return Symbol(name, "line", "SimpleLine",
                {{"line_color", TextOf(colour)},
                 {"line_width", millimetres},
                 {"line_width_unit", "MM"},
                 {"joinstyle", "round"},
                 {"capstyle", "round"}});
}

std::string Document(std::string_view renderer, std::string_view labels = {}) {
  return std::string(Head).append(labels.empty() ? "0\">\n" : "1\">\n").append(renderer).append(labels) +
         "</qgis>\n";
}

// The darkest is left to the lines.
Colour BlueOf(std::size_t index, std::size_t count) {
  const double place = count < 2 ? 2
                                 : static_cast<double>(index) / static_cast<double>(count - 1) *
                                       static_cast<double>(std::size(Blues) - 2);
  const auto below = static_cast<std::size_t>(place);
  const Colour &from = Blues[below], &to = Blues[below + 1];
  const auto between = [part = place - static_cast<double>(below)](int a, int b) {
    return static_cast<int>(std::lround(a + part * (b - a)));
  };
  return {between(from.red, to.red), between(from.green, to.green), between(from.blue, to.blue)};
}

}  // namespace

std::string SoundingStyle() {
  std::string categories, symbols;
  for (std::size_t i = 0; i < FateCount; ++i) {
    const std::string name(NameOf(static_cast<Fate>(i)));
    categories += "<category render=\"true\" symbol=\"";
    categories.append(std::to_string(i)).append("\" value=\"").append(name);
    categories.append("\" label=\"").append(name).append("\"/>\n");
    symbols += Symbol(i, "marker", "SimpleMarker",
                      {{"name", "circle"},
                       {"color", TextOf(FateColours[i])},
                       {"outline_style", "no"},
                       {"size", i == 0 ? "0.4" : "0.8"},
                       {"size_unit", "MM"}});
  }
  return Document(
      "<renderer-v2 attr=\"fate\" type=\"categorizedSymbol\" enableorderby=\"0\" "
      "forceraster=\"0\" symbollevels=\"0\">\n<categories>\n" +
      categories + "</categories>\n<symbols>\n" + symbols + "</symbols>\n</renderer-v2>\n");
}

std::string TrackStyle() {
  return Document(
      "<renderer-v2 type=\"singleSymbol\" enableorderby=\"0\" forceraster=\"0\" "
      "symbollevels=\"0\">\n<symbols>\n" +
      LineSymbol(0, TrackColour, "0.1") + "</symbols>\n</renderer-v2>\n");
}

std::string ContourStyle() {
  const std::string renderer =
      "<renderer-v2 type=\"RuleRenderer\" enableorderby=\"0\" forceraster=\"0\" symbollevels=\"0\">\n"
      "<rules key=\"all\">\n<rule key=\"thin\" symbol=\"0\" filter=\"NOT &quot;index&quot;\" "
      "label=\"contour\"/>\n<rule key=\"index\" symbol=\"1\" filter=\"&quot;index&quot;\" "
      "label=\"index contour\"/>\n</rules>\n<symbols>\n" +
      LineSymbol(0, LineColour, "0.15") + LineSymbol(1, LineColour, "0.4") + "</symbols>\n</renderer-v2>\n";
  // Placement 3 bends the text along its line, on it (flag 1).
  const std::string labels =
      "<labeling type=\"rule-based\">\n<rules key=\"labels\">\n<rule key=\"depth\" "
      "filter=\"&quot;index&quot;\">\n<settings>\n<text-style fieldName=\"depth\" isExpression=\"0\" "
      "fontSize=\"7\" fontSizeUnit=\"Point\" textColor=\"" +
      TextOf(LineColour) +
      "\" textOpacity=\"1\">\n<text-buffer bufferDraw=\"1\" bufferSize=\"0.6\" bufferSizeUnits=\"MM\" "
      "bufferColor=\"255,255,255,255\" bufferOpacity=\"1\"/>\n</text-style>\n<placement placement=\"3\" "
      "placementFlags=\"1\" repeatDistance=\"60\" repeatDistanceUnits=\"MM\"/>\n<rendering "
      "mergeLines=\"0\" obstacle=\"0\"/>\n</settings>\n</rule>\n</rules>\n</labeling>\n";
  return Document(renderer, labels);
}

std::string AreaStyle(std::span<const DepthArea> areas) {
  std::vector<double> depths;  // least ones
  for (const DepthArea& area : areas) depths.push_back(area.depthMin);
  std::sort(depths.begin(), depths.end());
  depths.erase(std::unique(depths.begin(), depths.end()), depths.end());
  std::string ranges, symbols;
  for (std::size_t i = 0; i < depths.size(); ++i) {
    const bool isLast = i + 1 == depths.size();
    // Both ends of a range belong to it, so they lie between the depths.
    const double lower = i == 0 ? depths[i] - 1 : (depths[i - 1] + depths[i]) / 2;
    const double upper = isLast ? depths[i] + 1 : (depths[i] + depths[i + 1]) / 2;
    const std::string label =
        isLast ? "from " + NumberText(depths[i]) : NumberText(depths[i]) + " to " + NumberText(depths[i + 1]);
    ranges += "<range render=\"true\" symbol=\"" + std::to_string(i) + "\" lower=\"" + NumberText(lower) +
              "\" upper=\"" + NumberText(upper) + "\" label=\"" + label + " m\"/>\n";
    symbols +=
        Symbol(i, "fill", "SimpleFill",
               {{"color", TextOf(BlueOf(i, depths.size()))}, {"style", "solid"}, {"outline_style", "no"}});
  }
  return Document(
      "<renderer-v2 attr=\"depth_min\" type=\"graduatedSymbol\" graduatedMethod=\"GraduatedColor\" "
      "enableorderby=\"0\" forceraster=\"0\" symbollevels=\"0\">\n<ranges>\n" +
      ranges + "</ranges>\n<symbols>\n" + symbols + "</symbols>\n</renderer-v2>\n");
}

}  // namespace sondrix
