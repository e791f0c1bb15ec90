#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "platform/file_system.h"

namespace brimlo {

/// Writes compact JSON into a sink through a buffer of its own, which `flush` and destruction
/// empty. Texts are valid UTF-8 and written as such; only what JSON forbids raw is escaped.
class JsonWriter {
 public:
  explicit JsonWriter(ByteSink& sink);
  JsonWriter(const JsonWriter&) = delete;
  JsonWriter& operator=(const JsonWriter&) = delete;
  ~JsonWriter() { flush(); }

  /// Brackets, commas, and keys with their quotes and colon.
  void raw(std::string_view json);
  /// A string value with its quotes.
  void string(std::string_view text);
  /// The shortest decimal that reads back as `value`, which must be finite; no exponent in the
  /// range that times lie in.
  void number(double value);

  void flush();

 private:
  void makeRoom(std::size_t bytes);

  ByteSink& sink_;
  std::unique_ptr<char[]> buffer_;
  char* end_;  // of what the buffer holds
};

}  // namespace brimlo
