#include "platform/freedesktop/xsettings.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace brimlo {
namespace {

/// Reads the parts of the property in order. Each call gives nothing when fewer bytes are left than
/// it asks for.
class Parts {
 public:
  explicit Parts(std::string_view bytes) : rest_(bytes) {}

  std::optional<std::string_view> take(std::size_t size) {
    if (size > rest_.size()) return std::nullopt;
    const std::string_view part = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return part;
  }

  std::optional<std::uint32_t> number(std::size_t size) {
    const auto bytes = take(size);
    if (!bytes) return std::nullopt;
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
      const std::size_t place = bigEndian ? size - 1 - i : i;
      value |= std::uint32_t{static_cast<unsigned char>((*bytes)[i])} << (8 * place);
    }
    return value;
  }

  /// A text, which is padded to a multiple of four bytes.
  std::optional<std::string_view> text(std::size_t size) {
    const auto part = take(size);
    take((4 - size % 4) % 4);
    return part;
  }

  bool bigEndian = false;

 private:
  std::string_view rest_;
};

}  // namespace

std::string xsettingsText(std::string_view settings, std::string_view name) {
  constexpr std::uint32_t kNumber = 0, kText = 1, kColor = 2;
  Parts parts(settings);
  parts.bigEndian = parts.number(1) == 1U;
  parts.take(3);
  parts.number(4);  // the serial
  const std::uint32_t count = parts.number(4).value_or(0);
  for (std::uint32_t i = 0; i < count; ++i) {
    const auto type = parts.number(1);
    parts.take(1);
    const auto length = parts.number(2);
    const auto found = length ? parts.text(*length) : std::nullopt;
    if (!found || !parts.number(4)) return {};
    if (type == kText) {
      const auto size = parts.number(4);
      const auto text = size ? parts.text(*size) : std::nullopt;
      if (!text) return {};
      if (found == name) return std::string(*text);
    } else if (type == kNumber || type == kColor) {
      parts.take(type == kNumber ? 4 : 8);
    } else {
      return {};
    }
  }
  return {};
}

}  // namespace brimlo
