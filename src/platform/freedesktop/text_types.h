#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace brimlo {

/// The types under which a clipboard's owner offers plain text, best first: MIME types, and the
/// names of X11 selection targets, which Wayland clients use too. COMPOUND_TEXT and TEXT come
/// before STRING, which holds Latin-1 only.
inline constexpr std::array<std::string_view, 7> kTextTypes = {"UTF8_STRING",
                                                               "text/plain;charset=utf-8",
                                                               "text/plain;charset=UTF-8",
                                                               "COMPOUND_TEXT",
                                                               "TEXT",
                                                               "text/plain",
                                                               "STRING"};

/// The types that this program offers its own text as, in the order in which it lists them.
inline constexpr std::array<std::string_view, 5> kOfferedTextTypes = {
    "UTF8_STRING", "text/plain;charset=utf-8", "text/plain", "TEXT", "STRING"};

/// Offered beside the text types by an owner whose contents are secret.
inline constexpr std::string_view kSecretHint = "x-kde-passwordManagerHint";

/// The text in `bytes`, which an owner sent as `type`: converted from the encoding that the type
/// stands for (ICCCM, section 2.6.2), ill-formed sequences replaced. An unknown type is read as
/// UTF-8.
std::string decodeText(std::string_view type, std::string bytes);

struct EncodedText {
  std::string_view type;  ///< of `kTextTypes`
  std::shared_ptr<const std::string> bytes;
};
/// `text` in the encoding that `type` stands for, characters that it lacks replaced; none when
/// `type` is not in `kOfferedTextTypes`.
std::optional<EncodedText> encodeText(std::string_view type,
                                      const std::shared_ptr<const std::string>& text);

}  // namespace brimlo
