#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "platform/file_system.h"
#include "store/json_form.h"

namespace brimlo {

/// Writes compact JSON into a sink. What is buffered reaches the sink with `flush`, at destruction
/// at the latest. Texts are valid UTF-8 and written as such; only what JSON forbids raw is escaped.
class JsonWriter {
 public:
  explicit JsonWriter(ByteSink& sink);
  JsonWriter(const JsonWriter&) = delete;
  JsonWriter& operator=(const JsonWriter&) = delete;
  ~JsonWriter() { flush(); }

  /// Brackets and commas.
  void raw(std::string_view json);

  void value(const std::string& text);
  /// The shortest decimal that reads back as `number`, which must be finite; no exponent in the
  /// range that times lie in.
  void value(double number);
  /// `strings` must be set.
  void value(const StringList& strings) {
    array(*strings, [this](const std::string& text) { value(text); });
  }

  /// An array of what `write` writes for each element of `range`.
  template <typename Range, typename Write>
  void array(const Range& range, Write write) {
    raw("[");
    bool first = true;
    for (const auto& element : range) {
      if (!std::exchange(first, false)) raw(",");
      write(element);
    }
    raw("]");
  }

  /// An object; a list that is not set is left out.
  template <typename Record, std::size_t N>
  void record(const Record& record, const JsonForm<Record, N>& form) {
    bool first = true;
    for (const JsonMember<Record>& member : form.members) {
      std::visit(
          [&](auto place) {
            if constexpr (std::is_same_v<decltype(place), StringList Record::*>) {
              if (!(record.*place)) return;
            }
            raw(std::exchange(first, false) ? "{\"" : ",\"");
            raw(member.key);
            raw("\":");
            value(record.*place);
          },
          member.place);
    }
    raw("}");
  }

  void flush();

 private:
  void makeRoom(std::size_t bytes);

  ByteSink& sink_;
  std::unique_ptr<char[]> buffer_;
  char* end_;  // of the buffer's content
};

}  // namespace brimlo
