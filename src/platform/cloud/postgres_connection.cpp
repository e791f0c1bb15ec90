#include "platform/cloud/postgres_connection.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>

namespace brimlo {
namespace {

using Fault = PostgresConnection::Fault;
using Stage = Fault::Stage;
using ResultPtr = std::unique_ptr<PGresult, decltype(&PQclear)>;

// The protocol's numbers for the types of parameters.
constexpr Oid kBytea = 17, kInt8 = 20, kFloat8 = 701;

std::array<char, 8> bigEndian(std::uint64_t number) {
  std::array<char, 8> bytes;
  for (std::size_t i = 0; i < 8; ++i) bytes[i] = static_cast<char>(number >> (56 - 8 * i));
  return bytes;
}

/// libpq's messages end in a newline and may have several lines; where the server refused, the
/// first one holds "FATAL:  28P01: …".
std::string firstLine(const char* message) {
  const std::string_view all(message);
  return std::string(all.substr(0, all.find('\n')));
}

/// The code in such a line; empty where there is none.
std::string stateIn(std::string_view line) {
  for (std::size_t at = line.find(":  "); at != line.npos; at = line.find(":  ", at + 1)) {
    const std::string_view code = line.substr(at + 3, 5);
    if (code.size() == 5 && line.substr(at + 8, 2) == ": " &&
        std::all_of(code.begin(), code.end(), [](unsigned char c) {
          return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z');
        })) {
      return std::string(code);
    }
  }
  return {};
}

/// Whether the code says that the server is shutting down or cannot serve anybody just now.
bool isPassing(std::string_view state) {
  return state.starts_with("08") || state.starts_with("53") || state.starts_with("57P");
}

}  // namespace

std::string_view PostgresConnection::Row::bytes(int column) const {
  return {pq().PQgetvalue(result_, row_, column),
          static_cast<std::size_t>(pq().PQgetlength(result_, row_, column))};
}

std::int64_t PostgresConnection::Row::integer(int column) const {
  std::uint64_t number = 0;
  const std::string_view data = bytes(column);
  for (const char c : data) number = number << 8 | static_cast<unsigned char>(c);
  if (data.size() == 4) return static_cast<std::int32_t>(number);
  return static_cast<std::int64_t>(number);
}

double PostgresConnection::Row::real(int column) const {
  return std::bit_cast<double>(integer(column));
}

PostgresConnection::PostgresConnection(PGconn* connection, const PostgresPatience& patience)
    : connection_(connection), patience_(patience) {}

std::variant<std::unique_ptr<PostgresConnection>, Fault> PostgresConnection::open(
    const PostgresParameters& parameters, const PostgresPatience& patience) {
  if (!LibPq::load()) return Fault{Stage::kReaching, "", "libpq is not installed"};
  std::vector<const char*> keywords, values;
  for (const auto& [keyword, value] : parameters) {
    keywords.push_back(keyword.c_str());
    values.push_back(value.c_str());
  }
  keywords.push_back(nullptr);
  values.push_back(nullptr);
  std::unique_ptr<PostgresConnection> made(new PostgresConnection(
      pq().PQconnectStartParams(keywords.data(), values.data(), 0), patience));
  if (auto fault = made->connect()) return std::move(*fault);
  return made;
}

std::optional<Fault> PostgresConnection::connect() {
  PGconn* connection = connection_.get();
  if (!connection) return Fault{Stage::kReaching, "", "out of memory"};
  // So that the message of a refusal holds the server's code for it.
  pq().PQsetErrorVerbosity(connection, PQERRORS_VERBOSE);
  pq().PQsetNoticeProcessor(
      connection, [](void*, const char*) {}, nullptr);
  end_ = Clock::now() + patience_.connecting;
  auto polled = PGRES_POLLING_WRITING;
  auto status = pq().PQstatus(connection);
  while (polled != PGRES_POLLING_OK && pq().PQstatus(connection) != CONNECTION_BAD) {
    status = pq().PQstatus(connection);
    if (!wait(polled == PGRES_POLLING_READING ? POLLIN : POLLOUT)) {
      return Fault{Stage::kReaching, "", "the server does not answer"};
    }
    polled = pq().PQconnectPoll(connection);
  }
  if (polled != PGRES_POLLING_OK) {
    const std::string line = firstLine(pq().PQerrorMessage(connection));
    const std::string state = stateIn(line);
    if (!state.empty() && !isPassing(state)) return Fault{Stage::kServer, state, line};
    const bool securing = state.empty() && status == CONNECTION_SSL_STARTUP;
    return Fault{securing ? Stage::kSecuring : Stage::kReaching, state, line};
  }
  pq().PQsetErrorVerbosity(connection, PQERRORS_DEFAULT);
  pq().PQsetnonblocking(connection, 1);
  pq().PQenterPipelineMode(connection);
  return std::nullopt;
}

/// Waits until the socket is ready for one of `events`; false when the patience has run out.
bool PostgresConnection::wait(short events) {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end_ - Clock::now());
  const auto allowed = std::clamp(left, std::chrono::milliseconds(0), patience_.silence);
  pollfd socket{pq().PQsocket(connection_.get()), events, 0};
  while (true) {
    const int ready = poll(&socket, 1, static_cast<int>(allowed.count()));
    if (ready < 0 && errno == EINTR) continue;
    silent_ = ready <= 0;
    lost_ = lost_ || silent_;
    return !silent_;
  }
}

std::optional<Fault> PostgresConnection::run(const std::vector<Statement>& statements) {
  auto fault = exchange(statements);
  if (fault && usable() && pq().PQtransactionStatus(connection_.get()) != PQTRANS_IDLE) {
    exchange({Statement{"ROLLBACK", {}}});
  }
  return fault;
}

std::optional<Fault> PostgresConnection::exchange(const std::vector<Statement>& statements) {
  end_ = Clock::now() + patience_.exchange;
  const Statement preparation;
  std::vector<const Statement*> sent;
  // That the server has prepared a statement is certain once the whole exchange has succeeded.
  auto prepared = prepared_;
  for (const Statement& statement : statements) {
    if (statement.repeated && !prepared.contains(statement.sql)) {
      const std::string& name = prepared[statement.sql] = std::to_string(++names_);
      if (!pq().PQsendPrepare(connection_.get(), name.c_str(), statement.sql.c_str(), 0, nullptr)) {
        return lost();
      }
      sent.push_back(&preparation);
    }
    const auto known = statement.repeated ? prepared.find(statement.sql) : prepared.end();
    if (!send(statement, known == prepared.end() ? nullptr : &known->second)) return lost();
    sent.push_back(&statement);
  }
  if (!pq().PQpipelineSync(connection_.get())) return lost();
  std::optional<Fault> fault;
  for (const Statement* statement : sent) {
    if ((fault = takeAnswer(*statement))) break;
  }
  auto unfinished = takeEnd();
  if (!fault && !unfinished) prepared_ = std::move(prepared);
  return fault ? fault : unfinished;
}

bool PostgresConnection::send(const Statement& statement, const std::string* prepared) {
  const std::size_t count = statement.values.size();
  std::vector<Oid> types(count);
  std::vector<const char*> values(count);
  std::vector<int> lengths(count), formats(count, 1);
  std::vector<std::array<char, 8>> numbers(count);
  const auto number = [&](std::size_t i, Oid type, std::uint64_t bits) {
    numbers[i] = bigEndian(bits);
    types[i] = type;
    values[i] = numbers[i].data();
    lengths[i] = 8;
  };
  for (std::size_t i = 0; i < count; ++i) {
    if (const auto* integer = std::get_if<std::int64_t>(&statement.values[i])) {
      number(i, kInt8, static_cast<std::uint64_t>(*integer));
    } else if (const auto* real = std::get_if<double>(&statement.values[i])) {
      number(i, kFloat8, std::bit_cast<std::uint64_t>(*real));
    } else if (const auto* bytes = std::get_if<std::string_view>(&statement.values[i])) {
      types[i] = kBytea;
      values[i] = bytes->empty() ? "" : bytes->data();
      lengths[i] = static_cast<int>(bytes->size());
    }
  }
  if (prepared) {
    return pq().PQsendQueryPrepared(connection_.get(), prepared->c_str(), static_cast<int>(count),
                                    values.data(), lengths.data(), formats.data(), 1) != 0;
  }
  return pq().PQsendQueryParams(connection_.get(), statement.sql.c_str(), static_cast<int>(count),
                                types.data(), values.data(), lengths.data(), formats.data(),
                                1) != 0;
}

/// The next result, owned by the caller. Null at the end of an answer, and when the connection is
/// lost.
PGresult* PostgresConnection::nextResult() {
  PGconn* connection = connection_.get();
  while (pq().PQisBusy(connection)) {
    const int unsent = pq().PQflush(connection);
    const bool ready =
        unsent >= 0 && wait(static_cast<short>(unsent > 0 ? POLLIN | POLLOUT : POLLIN));
    if (!ready || !pq().PQconsumeInput(connection)) {
      // From here on `PQgetResult` would wait without a limit.
      lost_ = true;
      return nullptr;
    }
  }
  return pq().PQgetResult(connection);
}

std::optional<Fault> PostgresConnection::takeAnswer(const Statement& statement) {
  pq().PQsetSingleRowMode(connection_.get());
  std::optional<Fault> fault;
  while (const ResultPtr result{nextResult(), pq().PQclear}) {
    switch (pq().PQresultStatus(result.get())) {
      case PGRES_COMMAND_OK:
        break;
      case PGRES_SINGLE_TUPLE:
      case PGRES_TUPLES_OK:
        for (int row = 0; row < pq().PQntuples(result.get()); ++row) {
          statement.onRow(Row(result.get(), row));
        }
        break;
      default: {
        if (!usable()) return lost();
        const char* state = pq().PQresultErrorField(result.get(), PG_DIAG_SQLSTATE);
        const char* what = pq().PQresultErrorField(result.get(), PG_DIAG_MESSAGE_PRIMARY);
        const std::string code = state ? state : "";
        fault = Fault{isPassing(code) ? Stage::kReaching : Stage::kServer, code,
                      what ? what : "the server's answer makes no sense"};
      }
    }
  }
  if (!usable()) return lost();
  return fault;
}

/// Takes the remaining answers of the exchange.
std::optional<Fault> PostgresConnection::takeEnd() {
  while (usable()) {
    const ResultPtr result{nextResult(), pq().PQclear};
    if (result && pq().PQresultStatus(result.get()) == PGRES_PIPELINE_SYNC) return std::nullopt;
  }
  return lost();
}

std::optional<Fault> PostgresConnection::runScript(const char* sql) {
  PGconn* connection = connection_.get();
  end_ = Clock::now() + patience_.exchange;
  if (!pq().PQexitPipelineMode(connection) || !pq().PQsendQuery(connection, sql)) return lost();
  auto fault = takeAnswer({});
  if (usable()) pq().PQenterPipelineMode(connection);
  return fault;
}

Fault PostgresConnection::lost() {
  lost_ = true;
  if (silent_) return {Stage::kReaching, "", "the server fell silent"};
  return {Stage::kReaching, "", firstLine(pq().PQerrorMessage(connection_.get()))};
}

}  // namespace brimlo
