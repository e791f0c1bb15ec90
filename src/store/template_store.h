#pragma once

#include <string>
#include <vector>

#include "base/published.h"
#include "platform/file_system.h"
#include "platform/system_log.h"
#include "store/stored_value.h"
#include "store/template.h"

namespace brimlo {

/// This machine's copy of the templates, newest first. They are edited on the phone, and here only
/// replaced as a whole. Main thread.
class TemplateStore {
 public:
  /// Loads "templates.json" from `dataFolder`. A file that is missing, unreadable or not of its
  /// form counts as empty.
  TemplateStore(FileSystem& files, SystemLog& log, const std::string& dataFolder);

  const Published<std::vector<Template>>& templates() const { return templates_; }

  /// Publishes `templates`, which the caller has sorted; writes nothing.
  void setTemplates(std::vector<Template> templates);

  /// Writes the templates to the file, unless it is known to hold just them.
  void save();

 private:
  StoredValue<std::vector<Template>> file_;
  Published<std::vector<Template>> templates_{{}};
};

/// Puts templates in their order: by `createdAt`, descending and stable.
void sortNewestFirst(std::vector<Template>& templates);

}  // namespace brimlo
