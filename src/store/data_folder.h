#pragma once

#include <string>

#include "platform/file_system.h"
#include "platform/system_log.h"

namespace brimlo {

/// Finds and creates the program's data folder, "BrimloMac" in the Application Support folder, or
/// in the temporary folder where the user has none. A folder that cannot be created is logged; its
/// path is returned all the same, and what is saved there stays in memory.
std::string prepareDataFolder(FileSystem& files, SystemLog& log);

}  // namespace brimlo
