#include "platform/cloud/json_strings.h"

#include <simdjson.h>

#include <cstdio>

namespace brimlo {
namespace {

void appendQuoted(std::string& json, std::string_view text) {
  json += '"';
  for (const char c : text) {
    if (static_cast<unsigned char>(c) < 0x20) {
      char escaped[7];
      std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
      json += escaped;
      continue;
    }
    if (c == '"' || c == '\\') json += '\\';
    json += c;
  }
  json += '"';
}

}  // namespace

std::string encodeJsonStrings(const std::vector<std::string>& strings) {
  std::string json = "[";
  for (const std::string& text : strings) {
    if (json.size() > 1) json += ',';
    appendQuoted(json, text);
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
