#pragma once

#include <string_view>

namespace brimlo {

/// Whether `text`, without white space at its ends, looks like a password: 8 to 64 printable ASCII
/// characters without a space, of at least three of the four kinds lower case, upper case, digit
/// and symbol, and not an http or https address.
bool isPasswordLike(std::string_view text);

}  // namespace brimlo
