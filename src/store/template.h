#pragma once

#include <string>

namespace brimlo {

/// A reusable text with a title, a value. Its body may hold placeholders. Its identity is its `id`.
struct Template {
  std::string id;
  std::string title;
  std::string body;
  double createdAt = 0;  ///< milliseconds since 1970 UTC, fraction kept; finite

  bool operator==(const Template&) const = default;
};

}  // namespace brimlo
