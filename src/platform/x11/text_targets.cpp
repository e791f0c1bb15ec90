#include "platform/x11/text_targets.h"

#include <unicode/unistr.h>

#include <algorithm>
#include <limits>
#include <string_view>

#include "base/unicode_text.h"

namespace brimlo {
namespace {

std::string fromCharset(std::string_view bytes, const char* charset) {
  const icu::UnicodeString text(bytes.data(), static_cast<std::int32_t>(bytes.size()), charset);
  std::string utf8;
  text.toUTF8String(utf8);
  return utf8;
}

/// COMPOUND_TEXT is ISO 2022 with two additions of its own that the converter does not know:
/// ESC % G … ESC % @ encloses UTF-8, and ESC % / n m l, where m and l hold the length in seven bits
/// each, begins a segment that names its charset and ends the name with STX.
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

std::vector<xcb_atom_t> textTargets(const X11Atoms& atoms) {
  return {atoms.utf8String, atoms.plainUtf8, atoms.plainUtf8Upper, atoms.compoundText,
          atoms.text,       atoms.plain,     XCB_ATOM_STRING};
}

std::string decodeText(const X11Atoms& atoms, xcb_atom_t type, std::string bytes) {
  if (type == atoms.compoundText) return fromCompoundText(bytes);
  if (type == XCB_ATOM_STRING) return fromCharset(bytes, "ISO-8859-1");
  if (type == atoms.plain) {
    // No charset is named; nearly every program means UTF-8, an old one Latin-1.
    std::string utf8 = toValidUtf8(bytes);
    return utf8 == bytes ? utf8 : fromCharset(bytes, "ISO-8859-1");
  }
  return toValidUtf8(std::move(bytes));
}

std::vector<xcb_atom_t> offeredTextTargets(const X11Atoms& atoms) {
  return {atoms.utf8String, atoms.plainUtf8, atoms.plain, atoms.text, XCB_ATOM_STRING};
}

std::optional<EncodedText> encodeText(const X11Atoms& atoms, xcb_atom_t target,
                                      const std::shared_ptr<const std::string>& text) {
  const auto offered = offeredTextTargets(atoms);
  if (std::find(offered.begin(), offered.end(), target) == offered.end()) return std::nullopt;
  if (target == XCB_ATOM_STRING && !isAscii(*text)) {
    return EncodedText{target, std::make_shared<const std::string>(toLatin1(*text))};
  }
  // TEXT leaves the encoding to the owner, who names it by the type.
  return EncodedText{target == atoms.text ? atoms.utf8String : target, text};
}

}  // namespace brimlo
