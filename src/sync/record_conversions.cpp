#include "sync/record_conversions.h"

#include <cmath>
#include <string>

namespace brimlo {
namespace {

template <typename T>
const T* fieldAs(const CloudRecord& record, std::string_view key) {
  const FieldValue* value = record.field(key);
  return value ? std::get_if<T>(value) : nullptr;
}

double milliseconds(const CloudRecord& record, std::string_view key) {
  const Date* date = fieldAs<Date>(record, key);
  const double time = date ? date->secondsSince1970 * 1000 : 0;
  return std::isfinite(time) ? time : 0;
}

std::string_view stringOr(const CloudRecord& record, std::string_view key, const char* otherwise) {
  const auto* text = fieldAs<std::string>(record, key);
  return text ? std::string_view(*text) : otherwise;
}

}  // namespace

std::optional<Clip> clipFromRecord(const CloudRecord& record) {
  const auto* text = fieldAs<std::string>(record, "text");
  if (!text) return std::nullopt;
  Clip clip{record.id.name, *text, milliseconds(record, "savedAt"),
            std::string(stringOr(record, "source", "manual")), std::nullopt};
  if (const auto* tags = fieldAs<std::vector<std::string>>(record, "tags")) clip.tags = *tags;
  return clip;
}

CloudRecord recordFromClip(const Clip& clip) {
  CloudRecord record{
      {std::string(kClipRecord), clip.id},
      {{"text", clip.text}, {"savedAt", Date{clip.savedAt / 1000}}, {"source", clip.source}}};
  if (clip.tags && !clip.tags->empty()) record.fields.emplace_back("tags", *clip.tags);
  return record;
}

std::optional<Template> templateFromRecord(const CloudRecord& record) {
  const auto* title = fieldAs<std::string>(record, "title");
  if (!title) return std::nullopt;
  return Template{record.id.name, *title, std::string(stringOr(record, "body", "")),
                  milliseconds(record, "createdAt")};
}

CloudRecord recordFromTemplate(const Template& given) {
  return {
      {std::string(kTemplateRecord), given.id},
      {{"title", given.title}, {"body", given.body}, {"createdAt", Date{given.createdAt / 1000}}}};
}

}  // namespace brimlo
