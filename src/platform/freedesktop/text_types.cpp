#include "platform/freedesktop/text_types.h"

#include <unicode/unistr.h>

#include <algorithm>
#include <cstdint>

#include "base/unicode_text.h"

namespace brimlo {
namespace {

std::string fromCharset(std::string_view bytes, const char* charset) {
  const icu::UnicodeString text(bytes.data(), static_cast<std::int32_t>(bytes.size()), charset);
  std::string utf8;
  text.toUTF8String(utf8);
  return utf8;
}

/// COMPOUND_TEXT is ISO 2022 with two additions that the converter does not know: ESC % G … ESC % @
/// encloses UTF-8, and ESC % / n m l, where m and l hold the length in seven bits each, begins a
/// segment that names its charset and ends the name with STX.
std::string fromCompoundText(std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) {
    const std::size_t segment = std::min(bytes.find("\x1b%G"), bytes.find("\x1b%/"));
    text += fromCharset(bytes.substr(0, segment), "x11-compound-text");
    if (segment == std::string_view::npos) break;
    bytes.remove_prefix(segment);
    if (bytes[2] == 'G') {
      const std::size_t end = bytes.find("\x1b%@");
      text += toValidUtf8(std::string(bytes.substr(3, end == bytes.npos ? end : end - 3)));
      bytes.remove_prefix(end == bytes.npos ? bytes.size() : end + 3);
    } else {
      if (bytes.size() < 6) break;
      const std::size_t length = (bytes[4] & 0x7F) * 128 + (bytes[5] & 0x7F);
      const std::string_view body = bytes.substr(6, length);
      const std::size_t stx = body.find('\x02');
      const std::string charset(body.substr(0, stx));
      if (stx != body.npos) text += fromCharset(body.substr(stx + 1), charset.c_str());
      bytes.remove_prefix(std::min(bytes.size(), 6 + length));
    }
  }
  return text;
}

std::string toLatin1(const std::string& text) {
  std::string latin1;
  const icu::UnicodeString units = icu::UnicodeString::fromUTF8(text);
  for (std::int32_t i = 0; i < units.length(); i = units.moveIndex32(i, 1)) {
    const UChar32 c = units.char32At(i);
    latin1 += c < 0x100 ? static_cast<char>(c) : '?';
  }
  return latin1;
}

}  // namespace

std::string decodeText(std::string_view type, std::string bytes) {
  if (type == "COMPOUND_TEXT") return fromCompoundText(bytes);
  if (type == "STRING") return fromCharset(bytes, "ISO-8859-1");
  if (type == "text/plain") {
    // No charset is named. Nearly every program means UTF-8; an old one means Latin-1.
    std::string utf8 = toValidUtf8(bytes);
    return utf8 == bytes ? utf8 : fromCharset(bytes, "ISO-8859-1");
  }
  return toValidUtf8(std::move(bytes));
}

std::optional<EncodedText> encodeText(std::string_view type,
                                      const std::shared_ptr<const std::string>& text) {
  const auto* offered = std::find(kOfferedTextTypes.begin(), kOfferedTextTypes.end(), type);
  if (offered == kOfferedTextTypes.end()) return std::nullopt;
  if (type == "STRING" && !isAscii(*text)) {
    return EncodedText{*offered, std::make_shared<const std::string>(toLatin1(*text))};
  }
  // For TEXT the owner chooses the encoding and names it by the type.
  return EncodedText{type == "TEXT" ? "UTF8_STRING" : *offered, text};
}

}  // namespace brimlo
