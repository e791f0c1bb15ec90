#include "store/data_folder.h"

namespace brimlo {

std::string prepareDataFolder(FileSystem& files, SystemLog& log) {
  const auto support = files.applicationSupportFolder();
  if (!support) log.write("no home folder; the history is kept in the temporary folder");
  std::string folder = (support ? *support : files.temporaryFolder()) + "/BrimloMac";
  if (const std::error_code error = files.createPrivateFolder(folder)) {
    log.write("cannot use the data folder " + folder + ": " + error.message());
  }
  return folder;
}

}  // namespace brimlo
