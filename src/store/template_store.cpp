#include "store/template_store.h"

#include <algorithm>
#include <utility>

#include "store/template_file.h"

namespace brimlo {

TemplateStore::TemplateStore(FileSystem& files, SystemLog& log, const std::string& dataFolder)
    : file_(files, log, dataFolder + "/templates.json") {
  const auto content = file_.read();
  if (!content) return;
  auto decoded = decodeTemplates(*content);
  if (!decoded.value) {
    file_.declareDamaged(decoded.fault);
    return;
  }
  sortNewestFirst(*decoded.value);
  saved_ = *decoded.value;
  templates_.set(std::move(*decoded.value));
}

void TemplateStore::setTemplates(std::vector<Template> templates) {
  templates_.set(std::move(templates));
}

void TemplateStore::save() {
  if (templates_.value() == saved_ && !file_.unsaved()) return;
  file_.save([this](ByteSink& sink) { encodeTemplates(templates_.value(), sink); });
  if (!file_.unsaved()) saved_ = templates_.value();
}

void sortNewestFirst(std::vector<Template>& templates) {
  std::stable_sort(templates.begin(), templates.end(),
                   [](const Template& a, const Template& b) { return a.createdAt > b.createdAt; });
}

}  // namespace brimlo
