#pragma once

#include <string>

namespace brimlo {

/// A fresh random UUID (version 4, RFC 4122) in canonical text form: 36 characters, upper-case
/// hexadecimal in groups of 8-4-4-4-12.
std::string makeUuid();

}  // namespace brimlo
