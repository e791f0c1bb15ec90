#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace brimlo {

/// The tables in which both databases keep records: one for a type, a column for a field, beside
/// "id" and "revision".
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

/// `type` is one of theirs.
const RecordTable& recordTable(std::string_view type);

/// A string of more bytes is not taken from a database: as large a text as the pasteboard takes.
constexpr std::size_t kLargestString = std::size_t{256} << 20;

}  // namespace brimlo
