#pragma once

#include <string>
#include <variant>

#include "platform/cloud/postgres_connection.h"
#include "platform/cloud/record_store.h"

namespace brimlo {

/// The account that a person has chosen: one line in a file of the settings folder.
struct EmbeddedAccount {
  bool operator==(const EmbeddedAccount&) const = default;
};
struct PostgresAccount {
  PostgresParameters parameters;

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
/// "postgresql://" URI or with "none". Any other line is refused, and so is a password in a file
/// that others may read. A connection to another machine must be encrypted unless the URI says
/// "sslmode=disable".
Account readAccount(const std::string& path);

}  // namespace brimlo
