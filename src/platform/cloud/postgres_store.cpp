#include "platform/cloud/postgres_store.h"

#include <deque>

#include "base/unicode_text.h"
#include "platform/cloud/json_strings.h"
#include "platform/cloud/postgres_schema.h"
#include "platform/cloud/record_tables.h"

namespace brimlo {
namespace {

using Row = PostgresConnection::Row;
using Statement = PostgresConnection::Statement;
using Stage = PostgresConnection::Fault::Stage;

constexpr std::int64_t kSchemaVersion = 1;

// Whatever the server's own settings are: no transaction waits long for another one's locks, and a
// machine that fell asleep within a transaction does not hold up the others.
constexpr const char* kSettings[] = {"SET search_path = pg_catalog", "SET lock_timeout = '5s'",
                                     "SET idle_in_transaction_session_timeout = '60s'"};

// The statements name the owner themselves: row-level security does not bind a superuser.
constexpr const char* kLook =
    "SELECT v.version, a.revision, a.stamp FROM brimlo.version v"
    " LEFT JOIN brimlo.account a ON a.owner = current_user";
constexpr const char* kPlace =
    "SELECT revision, stamp, EXISTS (SELECT FROM brimlo.change WHERE owner = current_user"
    " AND revision = $1 AND uuid_send(stamp) = $2)"
    " FROM brimlo.account WHERE owner = current_user";
// True of rows that changed after the place $1, $2, or of all rows if that place is not known.
const std::string kIsNews =
    "owner = current_user AND revision > coalesce((SELECT max(revision) FROM brimlo.change"
    " WHERE owner = current_user AND revision = $1 AND uuid_send(stamp) = $2), -1)";
constexpr const char* kLock =
    "SELECT revision, stamp FROM brimlo.account WHERE owner = current_user FOR UPDATE";
constexpr const char* kNumber = "SELECT brimlo.next_revision(current_user)";
// A reader that was away for longer pulls everything anew.
constexpr const char* kForgetChanges =
    "DELETE FROM brimlo.change c WHERE owner = current_user AND at < now() - interval '30 days'"
    " AND revision < (SELECT revision FROM brimlo.account WHERE owner = current_user)";
constexpr const char* kForgetDeleted =
    "DELETE FROM brimlo.deleted WHERE owner = current_user AND revision <"
    " (SELECT min(revision) FROM brimlo.change WHERE owner = current_user)";

std::string selectStatement(const RecordTable& table) {
  std::string sql = "SELECT id";
  for (const RecordColumn& column : table.columns) {
    const std::string name = column.name;
    if (column.kind == RecordColumn::Kind::kString) {
      // The size is known without reading the string.
      const std::string limit = std::to_string(kLargestString);
      sql += ", CASE WHEN octet_length(" + name + ") <= " + limit + " THEN " + name + " END";
    } else {
      sql += ", " + name;
    }
  }
  return sql + " FROM brimlo." + table.name + " WHERE " + kIsNews;
}

std::string saveStatement(const RecordTable& table) {
  std::string names = "id", values = "$1", updates;
  int index = 1;
  for (const RecordColumn& column : table.columns) {
    std::string parameter = "$";
    parameter += std::to_string(++index);
    names += std::string(", ") + column.name;
    values += column.kind == RecordColumn::Kind::kStringList
                  ? ", convert_from(" + parameter + ", 'UTF8')::json"
                  : ", " + parameter;
    updates +=
        std::string(updates.empty() ? "" : ", ") + column.name + " = excluded." + column.name;
  }
  return std::string("INSERT INTO brimlo.") + table.name + " (" + names + ") VALUES (" + values +
         ") ON CONFLICT (owner, id) DO UPDATE SET " + updates;
}

/// The place in a row's two columns from `column` on.
Place placeIn(const Row& row, int column = 0) {
  if (row.isNull(column)) return {0, ""};  // the person has not changed anything yet
  return {row.integer(column), std::string(row.bytes(column + 1))};
}

std::string textIn(const Row& row, int column) {
  return toValidUtf8(std::string(row.bytes(column)));
}

RecordPtr recordIn(const Row& row, const RecordTable& table) {
  auto record = std::make_shared<CloudRecord>();
  record->id = {table.type, textIn(row, 0)};
  int index = 0;
  for (const RecordColumn& column : table.columns) {
    if (row.isNull(++index)) continue;
    switch (column.kind) {
      case RecordColumn::Kind::kString:
        record->fields.emplace_back(column.field, textIn(row, index));
        break;
      case RecordColumn::Kind::kDate:
        record->fields.emplace_back(column.field, Date{row.real(index)});
        break;
      case RecordColumn::Kind::kStringList:
        if (auto strings = decodeJsonStrings(row.bytes(index))) {
          record->fields.emplace_back(column.field, std::move(*strings));
        }
    }
  }
  return record;
}

/// `lists` keeps what the statement's values point to.
Statement saveStatement(const RecordTable& table, const CloudRecord& record,
                        std::deque<std::string>& lists) {
  Statement statement{saveStatement(table), {std::string_view(record.id.name)}};
  statement.repeated = true;
  for (const RecordColumn& column : table.columns) {
    PostgresConnection::Value value;
    const FieldValue* field = record.field(column.field);
    if (const auto* text = field ? std::get_if<std::string>(field) : nullptr) {
      value = std::string_view(*text);
    } else if (const auto* date = field ? std::get_if<Date>(field) : nullptr) {
      value = date->secondsSince1970;
    } else if (const auto* list = field ? std::get_if<std::vector<std::string>>(field) : nullptr) {
      value = std::string_view(lists.emplace_back(encodeJsonStrings(*list)));
    }
    statement.values.push_back(value);
  }
  return statement;
}

/// Whether the server's code blames a record, rather than the state of the database.
bool isAboutContent(std::string_view state) {
  return state.starts_with("22") || state.starts_with("23") || state.starts_with("54");
}

}  // namespace

PostgresStore::PostgresStore(PostgresParameters parameters, const PostgresPatience& patience,
                             SystemLog& log)
    : parameters_(std::move(parameters)), patience_(patience), log_(log) {}

std::optional<PostgresStore::Fault> PostgresStore::connect() {
  auto opened = PostgresConnection::open(parameters_, patience_);
  if (auto* fault = std::get_if<Fault>(&opened)) return std::move(*fault);
  connection_ = std::get<std::unique_ptr<PostgresConnection>>(std::move(opened));
  for (const char* setting : kSettings) {
    // An older server may lack a setting, and does without it.
    connection_->run({Statement{setting, {}}});
  }
  return std::nullopt;
}

std::optional<PostgresStore::Fault> PostgresStore::look(std::int64_t& version, Place& place) {
  version = 0;
  auto fault = connection_->run({Statement{kLook, {}, [&](const Row& row) {
                                             version = row.integer(0);
                                             place = placeIn(row, 1);
                                           }}});
  // No such schema, no such table.
  if (fault && (fault->state == "3F000" || fault->state == "42P01")) return std::nullopt;
  return fault;
}

std::optional<PostgresStore::Fault> PostgresStore::makeSchema() {
  auto fault = connection_->runScript(kSchemaSql);
  if (!fault) log_.write("sync database: made the tables");
  return fault;
}

std::optional<PostgresStore::Fault> PostgresStore::exchange(
    const std::vector<Statement>& statements) {
  auto fault = connection_->run(statements);
  dropBrokenConnection();
  return fault;
}

void PostgresStore::dropBrokenConnection() {
  if (connection_ && !connection_->usable()) connection_.reset();
}

std::variant<Place, RecordStore::Refusal, CloudError> PostgresStore::currentPlace() {
  using Status = CloudDatabase::AccountStatus;
  std::int64_t version = 0;
  Place place;
  const bool kept = connection_ != nullptr;
  std::optional<Fault> fault = kept ? std::nullopt : connect();
  if (!fault) fault = look(version, place);
  if (fault && kept && !connection_->usable()) {
    // It broke while nobody used it, which says nothing about the server now.
    connection_.reset();
    if (!(fault = connect())) fault = look(version, place);
  }
  if (!fault && version == 0) {
    // Where two machines make it at the same moment, one of them fails, and finds the other's.
    fault = makeSchema();
    if (connection_->usable() && !look(version, place) && version != 0) fault.reset();
  }
  dropBrokenConnection();
  if (!fault && version > kSchemaVersion) {
    return Refusal{Status::kRestricted, "the server's tables are those of a newer version"};
  }
  if (!fault) return place;

  if (fault->stage == Stage::kReaching) {
    return Refusal{Status::kTemporarilyUnavailable, fault->what};
  }
  if (fault->stage == Stage::kSecuring) return Refusal{Status::kRestricted, fault->what};
  // Wrong password, no such role, not let in; no such database.
  if (fault->state.starts_with("28") || fault->state == "3D000") {
    return Refusal{Status::kNoAccount, fault->what};
  }
  if (fault->state == "42501") {
    return Refusal{Status::kRestricted,
                   fault->what + (version == 0 ? "; an administrator has to make the tables" : "")};
  }
  return CloudError{fault->what};
}

std::variant<RecordStore::Changes, CloudError> PostgresStore::changesSince(const Place& known) {
  if (!connection_) return CloudError{"there is no connection"};
  Changes changes;
  changes.anew = true;
  changes.place = {0, ""};
  const std::vector<PostgresConnection::Value> place = {known.revision,
                                                        std::string_view(known.stamp)};
  std::vector<Statement> statements = {{"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY", {}},
                                       {kPlace, place, [&](const Row& row) {
                                          changes.place = placeIn(row);
                                          changes.anew = row.integer(2) == 0;
                                        }}};
  for (const RecordTable& table : recordTables()) {
    statements.push_back({selectStatement(table), place,
                          [&](const Row& row) { changes.saved.push_back(recordIn(row, table)); }});
  }
  statements.push_back(
      {"SELECT type, id FROM brimlo.deleted WHERE " + kIsNews, place, [&](const Row& row) {
         changes.deleted.push_back({textIn(row, 0), textIn(row, 1)});
       }});
  statements.push_back({"COMMIT", {}});
  if (const auto fault = exchange(statements)) return CloudError{fault->what};
  return changes;
}

std::variant<RecordStore::Push, RecordStore::PushFault> PostgresStore::push(
    std::span<const RecordPtr> saving, std::span<const RecordID> deleting) {
  if (!connection_) return PushFault{PushFault::Kind::kRequest, "there is no connection"};
  Push push{{0, ""}, {}};
  std::deque<std::string> lists;
  std::vector<Statement> statements = {
      {"BEGIN", {}},
      {kLock, {}, [&](const Row& row) { push.before = placeIn(row); }},
      {kNumber, {}},
      {kLock, {}, [&](const Row& row) { push.after = placeIn(row); }}};
  for (const RecordPtr& record : saving) {
    statements.push_back(saveStatement(recordTable(record->id.type), *record, lists));
  }
  for (const RecordID& id : deleting) {
    Statement removal{std::string("DELETE FROM brimlo.") + recordTable(id.type).name +
                          " WHERE owner = current_user AND id = $1",
                      {std::string_view(id.name)}};
    removal.repeated = true;
    statements.push_back(std::move(removal));
  }
  for (const char* sql : {kForgetChanges, kForgetDeleted, "COMMIT"})
    statements.push_back({sql, {}});
  if (const auto fault = exchange(statements)) {
    return PushFault{
        isAboutContent(fault->state) ? PushFault::Kind::kContent : PushFault::Kind::kRequest,
        fault->what};
  }
  // A person's first change finds no row to lock: another machine's may have come in between.
  if (push.after.revision != push.before.revision + 1) push.before = {};
  return push;
}

}  // namespace brimlo
