#pragma once

#include <compare>
#include <string_view>

namespace brimlo {

/// Which of two versions is the newer: parts between dots, dashes and spaces, numbers by their
/// value. A missing part is older than a number and newer than a word: 1.0b2 < 1.0 < 1.0.1.
/// "1.0" and "1.0.0" are the same.
std::strong_ordering compareVersions(std::string_view a, std::string_view b);

}  // namespace brimlo
