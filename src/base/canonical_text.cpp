#include "base/canonical_text.h"

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <utility>

#include "base/unicode_text.h"

namespace brimlo {
namespace {

constexpr std::size_t kIcuLimit = std::numeric_limits<std::int32_t>::max();

const icu::Normalizer2* nfc() {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* normalizer = icu::Normalizer2::getNFCInstance(status);
  return U_SUCCESS(status) ? normalizer : nullptr;
}

icu::StringPiece piece(std::string_view text) {
  return {text.data(), static_cast<std::int32_t>(text.size())};
}

/// Calls `use` with the NFC of `text`, which is `text` itself, uncopied, in nearly every case.
template <typename Use>
auto withCanonicalForm(std::string_view text, Use use) {
  const icu::Normalizer2* normalizer = isAscii(text) || text.size() > kIcuLimit ? nullptr : nfc();
  UErrorCode status = U_ZERO_ERROR;
  if (!normalizer || normalizer->isNormalizedUTF8(piece(text), status)) return use(text);
  std::string canonical;
  icu::StringByteSink<std::string> sink(&canonical);
  status = U_ZERO_ERROR;
  normalizer->normalizeUTF8(0, piece(text), sink, nullptr, status);
  return use(U_SUCCESS(status) ? std::string_view(canonical) : text);
}

std::size_t hashOf(std::string_view canonicalForm) {
  return std::hash<std::string_view>()(canonicalForm);
}

}  // namespace

bool canonicallyEqual(std::string_view a, std::string_view b) {
  if (a == b) return true;
  return withCanonicalForm(a, [b](std::string_view canonicalA) {
    return withCanonicalForm(
        b, [canonicalA](std::string_view canonicalB) { return canonicalA == canonicalB; });
  });
}

std::size_t canonicalHash(std::string_view text) {
  return withCanonicalForm(text, hashOf);
}

CanonicalText::CanonicalText(std::string text) : text_(std::move(text)) {
  withCanonicalForm(text_, [this](std::string_view form) {
    if (form.data() != text_.data()) form_ = form;
    hash_ = hashOf(form);
  });
}

bool CanonicalText::equals(std::string_view other) const {
  if (text_ == other) return true;
  const std::string_view form = form_.empty() ? text_ : form_;
  return withCanonicalForm(other, [form](std::string_view otherForm) { return form == otherForm; });
}

}  // namespace brimlo
