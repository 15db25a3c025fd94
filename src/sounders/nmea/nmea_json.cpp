#include "sounders/nmea/nmea_json.h"

#include <cstddef>
#include <nlohmann/json.hpp>

namespace sondrix {

namespace {

using Json = nlohmann::json;

constexpr std::size_t MostJson = 64 * 1024;  // bytes
constexpr std::size_t MostOther = 40;        // bytes; a longer text tells no time

// Keeps the texts as they come, without a tree of them.
class LogTexts : public nlohmann::json_sax<Json> {
 public:
  std::string others;
  std::vector<std::string> sentences;

  bool null() override { return true; }
  bool boolean(bool) override { return true; }
  bool number_integer(number_integer_t) override { return true; }  // those below 0
  bool number_unsigned(number_unsigned_t value) override { return AddOther(std::to_string(value)); }
  bool number_float(number_float_t, const string_t& text) override { return AddOther(text); }
  bool string(string_t& text) override {
    const std::size_t start = text.find_first_of("$!");
    if (start == std::string::npos) return AddOther(text);
    if (text.find(',', start) != std::string::npos) AddSentences(text);
    return true;
  }
  bool binary(binary_t&) override { return true; }
  bool start_object(std::size_t) override { return true; }
  bool key(string_t&) override { return true; }
  bool end_object() override { return true; }
  bool start_array(std::size_t) override { return true; }
  bool end_array() override { return true; }
  bool parse_error(std::size_t, const std::string&, const Json::exception&) override { return false; }

 private:
  bool AddOther(std::string_view text) {
    if (text.size() <= MostOther && text.find('{') == std::string_view::npos) others.append(text) += ' ';
    return true;
  }

  void AddSentences(std::string_view text) {
    while (!text.empty()) {
      const std::size_t end = text.find_first_of("\r\n");
      const std::string_view line = text.substr(0, end);
      if (line.find_first_of("$!") != std::string_view::npos) sentences.emplace_back(line);
      if (end == std::string_view::npos) return;
      text.remove_prefix(end + 1);
    }
  }
};

}  // namespace

std::vector<std::string> JsonLogLines(std::string_view json) {
  while (!json.empty() && json.back() != '}') json.remove_suffix(1);
  LogTexts texts;
  if (json.size() > MostJson || !Json::sax_parse(json, &texts)) return {};
  for (std::string& line : texts.sentences) line.insert(0, texts.others);
  return std::move(texts.sentences);
}

}  // namespace sondrix
