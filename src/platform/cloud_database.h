#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace brimlo {

/// A moment, as a database keeps it.
struct Date {
  double secondsSince1970 = 0;  ///< UTC, fraction kept

  bool operator==(const Date&) const = default;
};

/// What a field of a record may hold. Strings are valid UTF-8, NUL characters included.
using FieldValue = std::variant<std::string, double, Date, std::vector<std::string>>;

struct RecordID {
  std::string type;  ///< "Clip" or "Template"
  std::string name;  ///< unique among the records of its type

  bool operator==(const RecordID&) const = default;
};

/// One record of a person's private database, a value. Fields that are not set are absent.
struct CloudRecord {
  RecordID id;
  std::vector<std::pair<std::string, FieldValue>> fields;

  /// The value of the field called `key`; null where it is not set.
  const FieldValue* field(std::string_view key) const {
    for (const auto& [name, value] : fields) {
      if (name == key) return &value;
    }
    return nullptr;
  }

  bool operator==(const CloudRecord&) const = default;
};

/// Records are shared, never changed.
using RecordPtr = std::shared_ptr<const CloudRecord>;

/// Why a request to the database failed, for the log: never holds a secret or a clip's text.
struct CloudError {
  std::string description;
};

/// A person's private database, and the account that opens it. Calls may take long, but not for
/// ever: a peer that is gone or hangs makes them fail. One thread at a time, and never the main
/// one.
class CloudDatabase {
 public:
  virtual ~CloudDatabase() = default;

  enum class AccountStatus {
    kAvailable,
    kCouldNotDetermine,
    kRestricted,              ///< there is an account, but it may not be used for this
    kNoAccount,               ///< none is set up, or the server does not know it
    kTemporarilyUnavailable,  ///< it cannot be reached just now
  };
  /// The state of the account, or why the request for it failed. What `records` gives afterwards
  /// is at least as new as this answer.
  virtual std::variant<AccountStatus, CloudError> accountStatus() = 0;

  /// What tells one state of all the records from another, as of the last other call: where two are
  /// equal, no record has changed in between. Empty where that is not known.
  virtual std::string contentsStamp() const = 0;

  /// Where a query goes on.
  struct Cursor {
    std::string type;
    std::size_t position = 0;
  };
  struct Page {
    std::vector<RecordPtr> records;  ///< null for a record that the database failed to give
    std::optional<Cursor> cursor;    ///< none when this was the last page
  };
  /// All records of `type`, as many at once as the database gives.
  virtual std::variant<Page, CloudError> records(std::string_view type) = 0;
  /// The next page. A query is not continued across a `modifyRecords` or an `accountStatus`.
  virtual std::variant<Page, CloudError> recordsContinuing(const Cursor& cursor) = 0;

  /// Saves and deletes each record by itself. A saved record takes the place of one that has its
  /// type and name, whatever became of that in the meantime; deleting a record that does not exist
  /// is no failure. An error means that the request failed, and may have been carried out in part.
  virtual std::optional<CloudError> modifyRecords(const std::vector<RecordPtr>& saving,
                                                  const std::vector<RecordID>& deleting) = 0;
};

}  // namespace brimlo
