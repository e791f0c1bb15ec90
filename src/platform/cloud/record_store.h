#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "platform/cloud_database.h"

namespace brimlo {

/// Where a store's changes end at one moment. A store that was reset or restored from a backup may
/// reach the same revision again, but never with the same stamp.
struct Place {
  std::int64_t revision = -1;  ///< -1: nothing is known of the store
  std::string stamp;

  bool operator==(const Place&) const = default;
};

/// Records in a database that numbers its changes, so that a reader who knows it up to a place is
/// told only what came after. `MirroredDatabase` makes a `CloudDatabase` of it; the same rules hold
/// for its calls.
class RecordStore {
 public:
  virtual ~RecordStore() = default;

  /// Why the store cannot be used.
  struct Refusal {
    CloudDatabase::AccountStatus status;
    std::string why;  ///< for the log
  };
  /// Opens the store where it is not open, and says where its changes end: one small exchange.
  virtual std::variant<Place, Refusal, CloudError> currentPlace() = 0;

  struct Changes {
    bool anew = false;             ///< these are all records there are
    std::vector<RecordPtr> saved;  ///< a field too large to be taken is not set
    std::vector<RecordID> deleted;
    Place place;
  };
  /// What changed after `known`, as of one moment; everything where the store knows no such place.
  virtual std::variant<Changes, CloudError> changesSince(const Place& known) = 0;

  struct Push {
    Place before;  ///< where the changes ended
    Place after;
  };
  struct PushFault {
    enum class Kind {
      kRequest,  ///< it would fail with any records
      kContent,  ///< the store refuses one of these records
    };
    Kind kind;
    std::string why;
  };
  /// Saves and deletes all of these, or none.
  virtual std::variant<Push, PushFault> push(std::span<const RecordPtr> saving,
                                             std::span<const RecordID> deleting) = 0;
};

}  // namespace brimlo
