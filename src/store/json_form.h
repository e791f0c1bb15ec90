#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace brimlo {

/// A list that a record need not have.
using StringList = std::optional<std::vector<std::string>>;

/// A member of `Record` and its key in the JSON object. Strings and numbers must be there when one
/// is read; a list may be missing or null.
template <typename Record>
struct JsonMember {
  std::string_view key;
  std::variant<std::string Record::*, double Record::*, StringList Record::*> place;

  constexpr bool isRequired() const { return !std::holds_alternative<StringList Record::*>(place); }
};

/// The JSON object of a record: its members in the order in which they are written.
template <typename Record, std::size_t N>
struct JsonForm {
  std::string_view name;  ///< of such a record, for messages
  std::array<JsonMember<Record>, N> members;
};

}  // namespace brimlo
