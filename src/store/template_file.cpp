#include "store/template_file.h"

#include <array>

#include "store/json_reader.h"
#include "store/json_writer.h"

namespace brimlo {
namespace {

constexpr std::array<std::string_view, 4> kRequired = {"id", "title", "body", "createdAt"};

Template decodeTemplate(ondemand::object object, std::size_t index, StringReader& strings) {
  Template result;
  RequiredKeys required(kRequired);
  for (auto field : object) {
    const std::string_view key = strings.view(field.key());
    required.note(key);
    if (key == "id") {
      result.id = strings.copy(field.value());
    } else if (key == "title") {
      result.title = strings.copy(field.value());
    } else if (key == "body") {
      result.body = strings.copy(field.value());
    } else if (key == "createdAt") {
      result.createdAt = field.value().get_double();
    }
  }
  required.check("template", index);
  return result;
}

}  // namespace

Decoded<std::vector<Template>> decodeTemplates(const FileContents& file) {
  std::vector<Template> templates;
  std::string fault =
      decodeArray(file, [&](ondemand::value element, std::size_t index, StringReader& strings) {
        templates.push_back(decodeTemplate(element.get_object(), index, strings));
      });
  if (!fault.empty()) return {std::nullopt, std::move(fault)};
  return {std::move(templates), {}};
}

void encodeTemplates(const std::vector<Template>& templates, ByteSink& sink) {
  JsonWriter json(sink);
  json.raw("[");
  for (const Template& item : templates) {
    json.raw(&item == templates.data() ? "{\"id\":" : ",{\"id\":");
    json.string(item.id);
    json.raw(",\"title\":");
    json.string(item.title);
    json.raw(",\"body\":");
    json.string(item.body);
    json.raw(",\"createdAt\":");
    json.number(item.createdAt);
    json.raw("}");
  }
  json.raw("]");
}

}  // namespace brimlo
