#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brimlo {

/// A list of strings as JSON, which both databases keep in one column.
std::string encodeJsonStrings(const std::vector<std::string>& strings);

/// None where `json` is no array of strings.
std::optional<std::vector<std::string>> decodeJsonStrings(std::string_view json);

}  // namespace brimlo
