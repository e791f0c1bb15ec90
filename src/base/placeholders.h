#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace brimlo {

/// `format` with `values` in the place of its placeholders: "%@" and "%lld" take the next value,
/// "%2$@" and "%2$lld" the second. What is no placeholder, or has no value, stays as it is.
std::string filledIn(std::string_view format, std::initializer_list<std::string> values);

}  // namespace brimlo
