#pragma once

#include <sys/stat.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/cloud/record_store.h"
#include "platform/system_log.h"

struct sqlite3;

namespace brimlo {

/// Records in an SQLite file, which several processes may use at once. It is made where there is
/// none, readable by its owner alone. A change is on the disk when the call that made it returns. A
/// damaged file is kept aside, and a new one begun.
class SqliteStore : public RecordStore {
 public:
  /// `seed`: gives the records that a new file begins with.
  SqliteStore(std::string path, std::function<std::vector<RecordPtr>()> seed, SystemLog& log);
  ~SqliteStore() override;

  std::variant<Place, Refusal, CloudError> currentPlace() override;
  std::variant<Changes, CloudError> changesSince(const Place& known) override;
  std::variant<Push, PushFault> push(std::span<const RecordPtr> saving,
                                     std::span<const RecordID> deleting) override;

 private:
  struct Close {
    void operator()(sqlite3* database) const;
  };

  /// Say what went wrong; none when all is well.
  std::optional<std::string> open();
  std::optional<std::string> makeTables();
  bool fileReplaced() const;
  std::string fault();
  void keepAside();

  std::string path_;
  std::function<std::vector<RecordPtr>()> seed_;
  SystemLog& log_;
  std::unique_ptr<sqlite3, Close> database_;
  struct stat opened_ {};  // the file that database_ has open
  std::string damage_;     // what is wrong with that file; empty while no damage is known
};

}  // namespace brimlo
