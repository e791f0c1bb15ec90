#include "platform/cloud/record_tables.h"

#include <algorithm>
#include <array>

namespace brimlo {
namespace {

using Kind = RecordColumn::Kind;

constexpr std::array kClipColumns = {RecordColumn{"text", "text", Kind::kString},
                                     RecordColumn{"savedAt", "saved_at", Kind::kDate},
                                     RecordColumn{"source", "source", Kind::kString},
                                     RecordColumn{"tags", "tags", Kind::kStringList}};
constexpr std::array kTemplateColumns = {RecordColumn{"title", "title", Kind::kString},
                                         RecordColumn{"body", "body", Kind::kString},
                                         RecordColumn{"createdAt", "created_at", Kind::kDate}};
constexpr std::array kTables = {RecordTable{"Clip", "clip", kClipColumns},
                                RecordTable{"Template", "template", kTemplateColumns}};

}  // namespace

std::span<const RecordTable> recordTables() {
  return kTables;
}

const RecordTable& recordTable(std::string_view type) {
  return *std::find_if(kTables.begin(), kTables.end() - 1,
                       [type](const RecordTable& table) { return table.type == type; });
}

}  // namespace brimlo
