#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "platform/pasteboard.h"

namespace brimlo {

/// The tables in which both databases keep records: one for each type, with a column for each field
/// beside "id" and "revision".
struct RecordColumn {
  enum class Kind { kString, kDate, kStringList };
  const char* field;
  const char* name;
  Kind kind;
};

struct RecordTable {
  const char* type;
  const char* name;
  std::span<const RecordColumn> columns;
};

std::span<const RecordTable> recordTables();

/// The table for `type`, which must have one.
const RecordTable& recordTable(std::string_view type);

/// The largest string, in bytes, that is read from a database. The pasteboard has the same limit.
constexpr std::size_t kLargestString = kLargestText;

}  // namespace brimlo
