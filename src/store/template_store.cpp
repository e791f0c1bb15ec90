#include "store/template_store.h"

#include <algorithm>
#include <utility>

#include "store/template_file.h"

namespace brimlo {
namespace {

bool isNewer(const Template& a, const Template& b) {
  return a.createdAt > b.createdAt;
}

}  // namespace

TemplateStore::TemplateStore(FileSystem& files, SystemLog& log, const std::string& dataFolder)
    : file_(files, log, dataFolder + "/templates.json") {
  auto templates = file_.load(decodeTemplates);
  if (!templates) return;
  if (std::is_sorted(templates->begin(), templates->end(), isNewer)) {
    file_.setHeld(*templates);
  } else {
    sortNewestFirst(*templates);
  }
  templates_.set(std::move(*templates));
}

void TemplateStore::setTemplates(std::vector<Template> templates) {
  templates_.set(std::move(templates));
}

void TemplateStore::save() {
  file_.save(templates_.value(),
             [this](ByteSink& sink) { encodeTemplates(templates_.value(), sink); });
}

void sortNewestFirst(std::vector<Template>& templates) {
  std::stable_sort(templates.begin(), templates.end(), isNewer);
}

}  // namespace brimlo
