#include "sync/local_templates.h"

#include <memory>

#include "store/template_file.h"
#include "sync/record_conversions.h"

namespace brimlo {

std::vector<RecordPtr> localTemplateRecords(const FileSystem& files,
                                            const std::string& dataFolder) {
  std::vector<RecordPtr> records;
  const auto file = files.read(dataFolder + "/templates.json");
  if (!file.contents) return records;
  const auto templates = decodeTemplates(*file.contents).value;
  if (!templates) return records;
  for (const Template& found : *templates) {
    records.push_back(std::make_shared<CloudRecord>(recordFromTemplate(found)));
  }
  return records;
}

}  // namespace brimlo
