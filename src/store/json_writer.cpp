#include "store/json_writer.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/json_escape.h"

namespace brimlo {
namespace {

constexpr std::size_t kBuffer = 256 * 1024;

// A string is written in slices, each of which fits into the buffer even when all of it is escaped.
constexpr std::size_t kSlice = 16 * 1024;
static_assert(jsonEscapedRoom(kSlice) <= kBuffer);

}  // namespace

JsonWriter::JsonWriter(ByteSink& sink)
    : sink_(sink), buffer_(new char[kBuffer]), end_(buffer_.get()) {}

void JsonWriter::raw(std::string_view json) {
  makeRoom(json.size());
  end_ = std::copy(json.begin(), json.end(), end_);
}

void JsonWriter::value(const std::string& text) {
  std::string_view rest = text;
  raw("\"");
  do {
    const std::string_view slice = rest.substr(0, kSlice);
    makeRoom(jsonEscapedRoom(slice.size()));
    end_ = writeJsonEscaped(end_, slice);
    rest.remove_prefix(slice.size());
  } while (!rest.empty());
  raw("\"");
}

void JsonWriter::value(double number) {
  constexpr std::size_t kLongest = 32;
  makeRoom(kLongest);
  const auto format =
      std::fabs(number) < 1e21 ? std::chars_format::fixed : std::chars_format::scientific;
  auto written = std::to_chars(end_, end_ + kLongest, number, format);
  // A tiny fraction is too long without an exponent.
  if (written.ec != std::errc()) written = std::to_chars(end_, end_ + kLongest, number);
  end_ = written.ptr;
}

void JsonWriter::flush() {
  sink_.append({buffer_.get(), static_cast<std::size_t>(end_ - buffer_.get())});
  end_ = buffer_.get();
}

void JsonWriter::makeRoom(std::size_t bytes) {
  if (static_cast<std::size_t>(buffer_.get() + kBuffer - end_) < bytes) flush();
}

}  // namespace brimlo
