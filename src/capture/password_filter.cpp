#include "capture/password_filter.h"

#include <algorithm>

#include "base/unicode_text.h"

namespace brimlo {
namespace {

bool startsWithIgnoringCase(std::string_view text, std::string_view lowerCasePrefix) {
  return text.size() >= lowerCasePrefix.size() &&
         std::equal(lowerCasePrefix.begin(), lowerCasePrefix.end(), text.begin(),
                    [](char p, char t) { return p == (t >= 'A' && t <= 'Z' ? t | 0x20 : t); });
}

}  // namespace

bool isPasswordLike(std::string_view text) {
  const std::string_view token = trimmed(text, WhiteSpace::kWithNewlines);
  // Only ASCII can pass, so that bytes are characters.
  if (token.size() < 8 || token.size() > 64) return false;
  if (!std::all_of(token.begin(), token.end(), [](char c) { return c >= '!' && c <= '~'; })) {
    return false;
  }
  if (startsWithIgnoringCase(token, "http://") || startsWithIgnoringCase(token, "https://")) {
    return false;
  }
  const auto isLower = [](char c) { return c >= 'a' && c <= 'z'; };
  const auto isUpper = [](char c) { return c >= 'A' && c <= 'Z'; };
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const auto isSymbol = [&](char c) { return !isLower(c) && !isUpper(c) && !isDigit(c); };
  const auto has = [token](auto kind) { return std::any_of(token.begin(), token.end(), kind); };
  return has(isLower) + has(isUpper) + has(isDigit) + has(isSymbol) > 2;
}

}  // namespace brimlo
