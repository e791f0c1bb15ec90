#pragma once

#include <string>
#include <vector>

#include "platform/cloud_database.h"
#include "platform/file_system.h"

namespace brimlo {

/// The templates of the file in `dataFolder` as records, for a database that has none yet. None
/// where the file is missing or damaged, which is the store's to report. Called on the thread that
/// `files` belongs to.
std::vector<RecordPtr> localTemplateRecords(const FileSystem& files, const std::string& dataFolder);

}  // namespace brimlo
