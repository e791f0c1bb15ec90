#include "base/placeholders.h"

#include <cstddef>
#include <optional>

namespace brimlo {
namespace {

struct Placeholder {
  std::size_t length;
  std::optional<std::size_t> index;  // of its value, where it names one
};

/// The placeholder that `format`, at a percent sign, begins with.
std::optional<Placeholder> placeholderAt(std::string_view format) {
  Placeholder found{1, std::nullopt};
  if (format.size() > 2 && format[1] >= '1' && format[1] <= '9' && format[2] == '$') {
    found = {3, static_cast<std::size_t>(format[1] - '1')};
  }
  for (const std::string_view kind : {"@", "lld"}) {
    if (!format.substr(found.length).starts_with(kind)) continue;
    found.length += kind.size();
    return found;
  }
  return std::nullopt;
}

}  // namespace

std::string filledIn(std::string_view format, std::initializer_list<std::string> values) {
  std::string text;
  std::size_t next = 0;
  for (;;) {
    const std::size_t percent = format.find('%');
    text += format.substr(0, percent);
    if (percent == format.npos) return text;
    format.remove_prefix(percent);
    auto placeholder = placeholderAt(format);
    if (placeholder && !placeholder->index) placeholder->index = next++;
    const bool hasValue = placeholder && *placeholder->index < values.size();
    const std::size_t length = placeholder ? placeholder->length : 1;
    text +=
        hasValue ? std::string_view(values.begin()[*placeholder->index]) : format.substr(0, length);
    format.remove_prefix(length);
  }
}

}  // namespace brimlo
