#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/cloud/record_store.h"

namespace brimlo {

/// The account that a person has chosen: one line in a file of the settings folder.
struct EmbeddedAccount {
  bool operator==(const EmbeddedAccount&) const = default;
};
struct PostgresAccount {
  std::vector<std::pair<std::string, std::string>> parameters;  ///< libpq's keywords and values

  bool operator==(const PostgresAccount&) const = default;
};
struct RefusedAccount {
  RecordStore::Refusal refusal;

  bool operator==(const RefusedAccount& other) const {
    return refusal.status == other.refusal.status && refusal.why == other.refusal.why;
  }
};
using Account = std::variant<EmbeddedAccount, PostgresAccount, RefusedAccount>;

/// Reads the account in the file at `path`: embedded where there is no file, else a line with a
/// "postgresql://" URI or with "none". Refused: a line that is none of these, a password in a file
/// that others may read. A connection to another machine is to be encrypted unless the URI says
/// "sslmode=disable".
Account readAccount(const std::string& path);

}  // namespace brimlo
