#include "platform/cloud/json_strings.h"

#include <simdjson.h>

#include "base/json_escape.h"

namespace brimlo {

std::string encodeJsonStrings(const std::vector<std::string>& strings) {
  std::string json = "[";
  for (const std::string& text : strings) {
    json += json.size() > 1 ? ",\"" : "\"";
    const std::size_t begin = json.size();
    json.resize(begin + jsonEscapedRoom(text.size()));
    const char* const end = writeJsonEscaped(json.data() + begin, text);
    json.resize(static_cast<std::size_t>(end - json.data()));
    json += '"';
  }
  return json + "]";
}

std::optional<std::vector<std::string>> decodeJsonStrings(std::string_view json) {
  simdjson::dom::parser parser;
  simdjson::dom::array array;
  if (parser.parse(json.data(), json.size()).get(array) != simdjson::SUCCESS) return std::nullopt;
  std::vector<std::string> strings;
  for (const simdjson::dom::element element : array) {
    std::string_view text;
    if (element.get(text) != simdjson::SUCCESS) return std::nullopt;
    strings.emplace_back(text);
  }
  return strings;
}

}  // namespace brimlo
