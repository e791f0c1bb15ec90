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

#include "platform/file_system.h"

/// What the readers of the JSON files share. For their source files only: it brings the parser in.
namespace brimlo {

namespace ondemand = simdjson::ondemand;

/// A document of the right syntax that does not have the form it should.
struct Malformed {
  std::string fault;
};

/// Takes strings out of a document. Each is unescaped to the same place before it is copied: the
/// parser's own buffer would keep them all, and meeting that much fresh memory costs more than the
/// work itself.
class StringReader {
 public:
  StringReader(const ondemand::parser& parser, std::size_t documentSize)
      : parser_(parser), place_(new std::uint8_t[documentSize + simdjson::SIMDJSON_PADDING]) {}

  /// The string; valid until the next call.
  std::string_view view(ondemand::raw_json_string string) {
    std::uint8_t* end = place_.get();
    return parser_.unescape(string, end);
  }
  std::string copy(ondemand::value value) { return std::string(view(value.get_raw_json_string())); }

 private:
  const ondemand::parser& parser_;
  std::unique_ptr<std::uint8_t[]> place_;
};

/// Keeps account of the keys that a record must have.
template <std::size_t N>
class RequiredKeys {
 public:
  explicit RequiredKeys(const std::array<std::string_view, N>& keys) : keys_(keys) {}

  void note(std::string_view key) {
    const auto found = std::find(keys_.begin(), keys_.end(), key);
    if (found != keys_.end()) seen_[static_cast<std::size_t>(found - keys_.begin())] = true;
  }

  /// Throws `Malformed` when a key was not noted. `what`, `index`: the record, for the message.
  void check(const char* what, std::size_t index) const {
    const auto missing = std::find(seen_.begin(), seen_.end(), false);
    if (missing == seen_.end()) return;
    const std::string key(keys_[static_cast<std::size_t>(missing - seen_.begin())]);
    throw Malformed{what + (" " + std::to_string(index)) + " has no \"" + key + "\""};
  }

 private:
  const std::array<std::string_view, N>& keys_;
  std::array<bool, N> seen_{};
};

/// Parses `file` as one JSON array and hands each element to `take`; says what is wrong, or "".
template <typename Take>
std::string decodeArray(const FileContents& file, Take take) {
  try {
    ondemand::parser parser;
    ondemand::document document = parser.iterate(
        simdjson::padded_string_view(file.view(), file.size + FileContents::kPadding));
    StringReader strings(parser, file.size);
    std::size_t index = 0;
    for (auto element : document.get_array()) take(element.value(), index++, strings);
    const bool atEnd = document.current_location().error() == simdjson::OUT_OF_BOUNDS;
    return atEnd ? "" : "something follows the array";
  } catch (const simdjson::simdjson_error& error) {
    return error.what();
  } catch (const Malformed& malformed) {
    return malformed.fault;
  } catch (const std::bad_alloc&) {
    return "too large for the memory";
  }
}

}  // namespace brimlo
