#include "store/template_file.h"

#include "store/json_reader.h"
#include "store/json_writer.h"

namespace brimlo {
namespace {

constexpr JsonForm<Template, 4> kForm = {"template",
                                         {{{"id", &Template::id},
                                           {"title", &Template::title},
                                           {"body", &Template::body},
                                           {"createdAt", &Template::createdAt}}}};

}  // namespace

Decoded<std::vector<Template>> decodeTemplates(const FileContents& file) {
  return decodeArray<std::vector<Template>>(
      file, [](ondemand::value element, std::size_t index, ValueReader& reader, auto& templates) {
        return readRecord(element, kForm, index, reader, templates.emplace_back());
      });
}

void encodeTemplates(const std::vector<Template>& templates, ByteSink& sink) {
  JsonWriter json(sink);
  json.array(templates, [&](const Template& each) { json.record(each, kForm); });
}

}  // namespace brimlo
