#include "platform/cloud/sqlite_store.h"

#include <fcntl.h>
#include <sqlite3.h>

#include <chrono>
#include <filesystem>
#include <utility>

#include "base/unicode_text.h"
#include "platform/cloud/json_strings.h"
#include "platform/cloud/record_tables.h"
#include "platform/cloud/sqlite_schema.h"

namespace brimlo {
namespace {

namespace fs = std::filesystem;

constexpr int kSchemaVersion = 1;
constexpr int kBusyMs = 5'000;  // how long another process may hold the file
constexpr int kLargestRow = static_cast<int>(kLargestString) + (1 << 20);
// A reader that was away for longer pulls everything anew.
constexpr const char* kForgetChanges =
    "DELETE FROM change WHERE at < unixepoch() - 30 * 86400"
    " AND revision < (SELECT revision FROM account)";
constexpr const char* kForgetDeleted =
    "DELETE FROM deleted WHERE revision < (SELECT min(revision) FROM change)";

bool isDamage(int code) {
  return (code & 0xff) == SQLITE_CORRUPT || (code & 0xff) == SQLITE_NOTADB;
}

std::string columnNames(const RecordTable& table) {
  std::string names = "id";
  for (const RecordColumn& column : table.columns) names += std::string(", ") + column.name;
  return names;
}

std::string saveStatement(const RecordTable& table) {
  std::string sql = std::string("INSERT INTO ") + table.name + " (" + columnNames(table) +
                    ", revision) VALUES (?";
  for (std::size_t i = 0; i < table.columns.size(); ++i) sql += ", ?";
  sql +=
      ", (SELECT revision FROM account)) ON CONFLICT (id) DO UPDATE SET revision ="
      " excluded.revision";
  for (const RecordColumn& column : table.columns) {
    sql += std::string(", ") + column.name + " = excluded." + column.name;
  }
  return sql;
}

/// A prepared statement. Why a step failed is told by its database's error code.
class Statement {
 public:
  Statement(sqlite3* database, const std::string& sql) {
    sqlite3_prepare_v2(database, sql.c_str(), static_cast<int>(sql.size()), &statement_, nullptr);
  }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement() { sqlite3_finalize(statement_); }

  /// The caller keeps `text` until the next `reset`.
  void bind(int index, std::string_view text) {
    sqlite3_bind_text64(statement_, index, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
  }
  void bind(int index, std::int64_t number) { sqlite3_bind_int64(statement_, index, number); }
  void bind(int index, double number) { sqlite3_bind_double(statement_, index, number); }

  /// SQLITE_ROW, SQLITE_DONE, or what went wrong.
  int step() { return statement_ ? sqlite3_step(statement_) : SQLITE_ERROR; }
  bool run() { return step() == SQLITE_DONE; }
  void reset() {
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
  }

  int type(int column) const { return sqlite3_column_type(statement_, column); }
  std::int64_t integer(int column) const { return sqlite3_column_int64(statement_, column); }
  double real(int column) const { return sqlite3_column_double(statement_, column); }
  std::string text(int column) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
    return bytes ? toValidUtf8(std::string(bytes, size)) : std::string();
  }

 private:
  sqlite3_stmt* statement_ = nullptr;
};

/// Rolled back at its end unless committed.
class Transaction {
 public:
  Transaction(sqlite3* database, const char* begin)
      : database_(database), begun_(run(begin) == SQLITE_OK) {}
  ~Transaction() {
    if (begun_ && !sqlite3_get_autocommit(database_)) run("ROLLBACK");
  }

  bool begun() const { return begun_; }
  bool commit() { return run("COMMIT") == SQLITE_OK; }

 private:
  int run(const char* sql) { return sqlite3_exec(database_, sql, nullptr, nullptr, nullptr); }

  sqlite3* database_;
  bool begun_;
};

/// Saves a record into its table, by a statement made by `saveStatement`.
bool save(Statement& statement, const RecordTable& table, const CloudRecord& record) {
  statement.reset();
  int index = 0;
  statement.bind(++index, record.id.name);
  std::string list;  // there is one column of this kind at most
  for (const RecordColumn& column : table.columns) {
    ++index;
    const FieldValue* value = record.field(column.field);
    if (!value) continue;  // an unbound parameter is null
    if (const auto* text = std::get_if<std::string>(value)) {
      statement.bind(index, *text);
    } else if (const auto* date = std::get_if<Date>(value)) {
      statement.bind(index, date->secondsSince1970);
    } else if (const auto* strings = std::get_if<std::vector<std::string>>(value)) {
      list = encodeJsonStrings(*strings);
      statement.bind(index, list);
    }
  }
  return statement.run();
}

/// The value in a column, of whatever type it is: other programs may write into the file.
std::optional<FieldValue> fieldIn(const Statement& row, int index, RecordColumn::Kind kind) {
  switch (row.type(index)) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
      if (kind == RecordColumn::Kind::kDate) return Date{row.real(index)};
      return row.real(index);
    case SQLITE_TEXT:
      if (kind == RecordColumn::Kind::kStringList) {
        if (auto strings = decodeJsonStrings(row.text(index))) return std::move(*strings);
      }
      return row.text(index);
    default:
      return std::nullopt;
  }
}

RecordPtr recordIn(const Statement& row, const RecordTable& table) {
  auto record = std::make_shared<CloudRecord>();
  record->id = {table.type, row.text(0)};
  int index = 0;
  for (const RecordColumn& column : table.columns) {
    if (auto value = fieldIn(row, ++index, column.kind)) {
      record->fields.emplace_back(column.field, std::move(*value));
    }
  }
  return record;
}

}  // namespace

void SqliteStore::Close::operator()(sqlite3* database) const {
  sqlite3_close_v2(database);
}

SqliteStore::SqliteStore(std::string path, std::function<std::vector<RecordPtr>()> seed,
                         SystemLog& log)
    : path_(std::move(path)), seed_(std::move(seed)), log_(log) {}

SqliteStore::~SqliteStore() = default;

bool SqliteStore::fileReplaced() const {
  struct stat now {};
  return stat(path_.c_str(), &now) != 0 || now.st_dev != opened_.st_dev ||
         now.st_ino != opened_.st_ino;
}

std::optional<std::string> SqliteStore::open() {
  if (!damage_.empty()) keepAside();
  if (database_ && !fileReplaced()) return std::nullopt;
  // SQLite gives the files beside it, such as its log, the same permissions.
  const int file = ::open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (file >= 0) close(file);
  sqlite3* database = nullptr;
  const int opened = sqlite3_open_v2(path_.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr);
  database_.reset(database);
  if (opened != SQLITE_OK) return fault();
  sqlite3_extended_result_codes(database, 1);
  sqlite3_busy_timeout(database, kBusyMs);
  sqlite3_limit(database, SQLITE_LIMIT_LENGTH, kLargestRow);
  for (const char* setting :
       {"PRAGMA journal_mode = WAL", "PRAGMA synchronous = FULL", "PRAGMA cache_size = -16384",
        "PRAGMA cell_size_check = ON", "PRAGMA trusted_schema = OFF"}) {
    if (sqlite3_exec(database, setting, nullptr, nullptr, nullptr) != SQLITE_OK) return fault();
  }
  stat(path_.c_str(), &opened_);
  return makeTables();
}

std::optional<std::string> SqliteStore::makeTables() {
  enum class Tables { kThere, kMissing, kUnknown };
  const auto tables = [this] {
    Statement version(database_.get(), "PRAGMA user_version");
    if (version.step() != SQLITE_ROW) return Tables::kUnknown;
    return version.integer(0) != 0 ? Tables::kThere : Tables::kMissing;
  };
  if (tables() == Tables::kThere) return std::nullopt;
  Transaction making(database_.get(), "BEGIN IMMEDIATE");
  const Tables now = tables();
  if (now == Tables::kThere) return std::nullopt;  // another process was faster
  if (!making.begun() || now == Tables::kUnknown ||
      sqlite3_exec(database_.get(), kSchemaSql, nullptr, nullptr, nullptr) != SQLITE_OK) {
    return fault();
  }
  for (const RecordPtr& record : seed_()) {
    const RecordTable& table = recordTable(record->id.type);
    Statement statement(database_.get(), saveStatement(table));
    if (!save(statement, table, *record)) return fault();
  }
  if (!making.commit()) return fault();
  return std::nullopt;
}

/// Why the last call failed. Remembers damage.
std::string SqliteStore::fault() {
  if (!database_) return sqlite3_errstr(SQLITE_CANTOPEN);
  std::string why = sqlite3_errmsg(database_.get());
  if (isDamage(sqlite3_errcode(database_.get()))) damage_ = why;
  return why;
}

void SqliteStore::keepAside() {
  database_.reset();
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now).count();
  std::string aside = path_ + ".damaged-" + std::to_string(seconds);
  while (fs::exists(aside)) aside += "-2";
  std::error_code error, ignored;
  fs::rename(path_, aside, error);
  // The log of the damaged file must not be taken for the new one's.
  for (const char* part : {"-wal", "-shm"}) fs::rename(path_ + part, aside + part, ignored);
  log_.write("sync database: " + path_ + " is damaged (" + std::exchange(damage_, {}) + "); " +
             (error ? "it cannot be kept aside: " + error.message() : "kept as " + aside));
}

std::variant<Place, RecordStore::Refusal, CloudError> SqliteStore::currentPlace() {
  using Status = CloudDatabase::AccountStatus;
  for (int attempt = 0;; ++attempt) {
    std::optional<std::string> why = open();
    if (!why) {
      Statement query(database_.get(),
                      "SELECT revision, stamp, (SELECT user_version FROM pragma_user_version)"
                      " FROM account");
      if (query.step() == SQLITE_ROW) {
        if (query.integer(2) > kSchemaVersion) {
          return Refusal{Status::kRestricted, path_ + " was made by a newer version"};
        }
        return Place{query.integer(0), query.text(1)};
      }
      why = fault();
    }
    if (!damage_.empty() && attempt == 0) continue;  // with a new file
    database_.reset();
    return Refusal{Status::kTemporarilyUnavailable, "cannot use " + path_ + ": " + *why};
  }
}

std::variant<RecordStore::Changes, CloudError> SqliteStore::changesSince(const Place& known) {
  sqlite3* database = database_.get();
  if (!database) return CloudError{"the database is not open"};
  Transaction reading(database, "BEGIN");
  Changes changes;
  Statement place(database,
                  "SELECT revision, stamp, EXISTS (SELECT * FROM change"
                  " WHERE revision = ?1 AND stamp = ?2) FROM account");
  place.bind(1, known.revision);
  place.bind(2, known.stamp);
  if (place.step() != SQLITE_ROW) return CloudError{fault()};
  changes.place = {place.integer(0), place.text(1)};
  changes.anew = place.integer(2) == 0;
  const std::int64_t since = changes.anew ? -1 : known.revision;

  int code = SQLITE_DONE;
  for (const RecordTable& table : recordTables()) {
    Statement rows(database,
                   std::string("SELECT rowid FROM ") + table.name + " WHERE revision > ?1");
    Statement row(database,
                  "SELECT " + columnNames(table) + " FROM " + table.name + " WHERE rowid = ?1");
    rows.bind(1, since);
    // Row by row, so that a row which is too large is left out alone.
    while ((code = rows.step()) == SQLITE_ROW) {
      row.reset();
      row.bind(1, rows.integer(0));
      code = row.step();
      if (code == SQLITE_ROW) changes.saved.push_back(recordIn(row, table));
      if (code == SQLITE_TOOBIG || code == SQLITE_NOMEM) {
        log_.write(std::string("sync database: a ") + table.type +
                   " record is too large and is left alone");
      } else if (code != SQLITE_ROW) {
        return CloudError{fault()};
      }
    }
    if (code != SQLITE_DONE) return CloudError{fault()};
  }
  Statement deleted(database, "SELECT type, id FROM deleted WHERE revision > ?1");
  deleted.bind(1, since);
  while ((code = deleted.step()) == SQLITE_ROW) {
    changes.deleted.push_back({deleted.text(0), deleted.text(1)});
  }
  if (code != SQLITE_DONE) return CloudError{fault()};
  sqlite3_db_release_memory(database);  // these pages are not needed again soon
  return changes;
}

std::variant<RecordStore::Push, RecordStore::PushFault> SqliteStore::push(
    std::span<const RecordPtr> saving, std::span<const RecordID> deleting) {
  sqlite3* database = database_.get();
  const auto failed = [this] {
    const int code = sqlite3_errcode(database_.get()) & 0xff;
    const bool content =
        code == SQLITE_TOOBIG || code == SQLITE_CONSTRAINT || code == SQLITE_MISMATCH;
    return PushFault{content ? PushFault::Kind::kContent : PushFault::Kind::kRequest, fault()};
  };
  if (!database) return PushFault{PushFault::Kind::kRequest, "the database is not open"};
  Transaction pushing(database, "BEGIN IMMEDIATE");
  if (!pushing.begun()) return failed();
  const auto place = [&] {
    Statement query(database, "SELECT revision, stamp FROM account");
    return query.step() == SQLITE_ROW ? Place{query.integer(0), query.text(1)} : Place{};
  };
  const auto run = [&](const char* sql) { return Statement(database, sql).run(); };

  const Place before = place();
  if (!run("UPDATE account SET pushing = 1") || !run("UPDATE next_revision SET revision = 0")) {
    return failed();
  }
  for (const RecordTable& table : recordTables()) {
    Statement statement(database, saveStatement(table));
    for (const RecordPtr& record : saving) {
      if (record->id.type == table.type && !save(statement, table, *record)) return failed();
    }
    Statement remove(database, std::string("DELETE FROM ") + table.name + " WHERE id = ?1");
    Statement note(database, "INSERT OR REPLACE INTO deleted SELECT ?1, ?2, revision FROM account");
    for (const RecordID& id : deleting) {
      if (id.type != table.type) continue;
      remove.reset();
      remove.bind(1, id.name);
      note.reset();
      note.bind(1, id.type);
      note.bind(2, id.name);
      if (!remove.run() || !note.run()) return failed();
    }
  }
  const Place after = place();
  if (!run(kForgetChanges) || !run(kForgetDeleted) || !run("UPDATE account SET pushing = 0") ||
      !pushing.commit()) {
    return failed();
  }
  sqlite3_db_release_memory(database);
  return Push{before, after};
}

}  // namespace brimlo
