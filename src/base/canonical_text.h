#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Canonical equivalence of texts, which are valid UTF-8. Any thread.
namespace brimlo {

/// Whether the texts are canonically equivalent: equal after NFC.
bool canonicallyEqual(std::string_view a, std::string_view b);

/// A hash that canonically equivalent texts share. Not stable between runs; never store it.
std::size_t canonicalHash(std::string_view text);

/// A text with its canonical form and hash, which are made once and travel with it. Any string
/// becomes one where one is asked for.
class CanonicalText {
 public:
  CanonicalText(std::string text);  // NOLINT(google-explicit-constructor): see above
  CanonicalText(const char* text)   // NOLINT(google-explicit-constructor)
      : CanonicalText(std::string(text)) {}

  const std::string& text() const { return text_; }

  /// As `canonicalHash`.
  std::size_t hash() const { return hash_; }

  /// As `canonicallyEqual`.
  bool equals(std::string_view other) const;

 private:
  std::string text_;
  std::string form_;  // its NFC, where that is not the text itself
  std::size_t hash_ = 0;
};

}  // namespace brimlo
