#pragma once

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "platform/file_system.h"
#include "store/decoded.h"
#include "store/json_form.h"

/// What the readers of the JSON files share. For source files only: it includes the parser.
namespace brimlo {

namespace ondemand = simdjson::ondemand;

/// What is wrong with a document, or with a part of one; none when it was read.
using Fault = std::optional<std::string>;

inline Fault faultOf(simdjson::error_code error) {
  return error ? Fault(simdjson::error_message(error)) : std::nullopt;
}

/// Reads values of one document. Each string is unescaped to the same place before it is copied:
/// the parser's own buffer would keep them all, and touching that much fresh memory costs more than
/// the parsing itself.
class ValueReader {
 public:
  ValueReader(const ondemand::parser& parser, std::size_t documentSize)
      : parser_(parser), place_(new std::uint8_t[documentSize + simdjson::SIMDJSON_PADDING]) {}

  /// The string that `raw` is; valid until the next call of any of these.
  simdjson::simdjson_result<std::string_view> unescaped(
      simdjson::simdjson_result<ondemand::raw_json_string> raw) {
    ondemand::raw_json_string string;
    if (const auto error = std::move(raw).get(string)) return error;
    std::uint8_t* end = place_.get();
    return parser_.unescape(string, end);
  }

  simdjson::error_code read(ondemand::value value, std::string& into) {
    std::string_view text;
    if (const auto error = unescaped(value.get_raw_json_string()).get(text)) return error;
    into = std::string(text);  // an assignment of the view would reserve more than that
    return simdjson::SUCCESS;
  }

  simdjson::error_code read(ondemand::value value, double& into) {
    return value.get_double().get(into);
  }

  /// Null is no list.
  simdjson::error_code read(ondemand::value value, StringList& into) {
    bool isNull;
    if (const auto error = value.is_null().get(isNull); error || isNull) return error;
    ondemand::array array;
    if (const auto error = value.get_array().get(array)) return error;
    into.emplace();
    for (auto each : array) {
      ondemand::value element;
      if (const auto error = std::move(each).get(element)) return error;
      if (const auto error = read(element, into->emplace_back())) return error;
    }
    return simdjson::SUCCESS;
  }

 private:
  const ondemand::parser& parser_;
  std::unique_ptr<std::uint8_t[]> place_;
};

/// Reads an object of `form` into `record`: keys in any order, unknown ones ignored. `index`: its
/// place in the document, for the fault.
template <typename Record, std::size_t N>
Fault readRecord(ondemand::value value, const JsonForm<Record, N>& form, std::size_t index,
                 ValueReader& reader, Record& record) {
  ondemand::object object;
  if (const auto error = value.get_object().get(object)) return faultOf(error);
  std::array<bool, N> seen{};
  for (auto field : object) {
    std::string_view key;
    if (const auto error = reader.unescaped(field.key()).get(key)) return faultOf(error);
    const auto member = std::find_if(form.members.begin(), form.members.end(),
                                     [key](const auto& each) { return each.key == key; });
    if (member == form.members.end()) continue;
    seen[static_cast<std::size_t>(member - form.members.begin())] = true;
    ondemand::value content;
    if (const auto error = field.value().get(content)) return faultOf(error);
    const auto error =
        std::visit([&](auto place) { return reader.read(content, record.*place); }, member->place);
    if (error) return faultOf(error);
  }
  for (std::size_t i = 0; i < N; ++i) {
    if (seen[i] || !form.members[i].isRequired()) continue;
    return std::string(form.name) + " " + std::to_string(index) + " has no \"" +
           std::string(form.members[i].key) + "\"";
  }
  return std::nullopt;
}

/// Reads `file` as one JSON array. `take(value, index, reader, result)` reads an element into the
/// result, and returns its fault.
template <typename Result, typename Take>
Decoded<Result> decodeArray(const FileContents& file, Take take) {
  const auto parse = [&](Result& result) -> Fault {
    ondemand::parser parser;
    ondemand::document document;
    ondemand::array array;
    const simdjson::padded_string_view json(file.view(), file.size + FileContents::kPadding);
    if (const auto error = parser.iterate(json).get(document)) return faultOf(error);
    if (const auto error = document.get_array().get(array)) return faultOf(error);
    ValueReader reader(parser, file.size);
    std::size_t index = 0;
    for (auto each : array) {
      ondemand::value element;
      if (const auto error = std::move(each).get(element)) return faultOf(error);
      if (Fault fault = take(element, index++, reader, result)) return fault;
    }
    const bool atEnd = document.current_location().error() == simdjson::OUT_OF_BOUNDS;
    return atEnd ? std::nullopt : Fault("something follows the array");
  };
  Result result;
  Fault fault;
  try {
    fault = parse(result);
  } catch (const std::bad_alloc&) {
    fault = "too large for the memory";
  }
  if (fault) return {std::nullopt, std::move(*fault)};
  return {std::move(result), {}};
}

}  // namespace brimlo
