#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/cloud/lib_pq.h"

namespace brimlo {

/// How long a server may take.
struct PostgresPatience {
  std::chrono::milliseconds connecting{10'000};
  std::chrono::milliseconds silence{15'000};  ///< without a byte read or written
  std::chrono::milliseconds exchange{600'000};
};

/// libpq's keywords with their values.
using PostgresParameters = std::vector<std::pair<std::string, std::string>>;

/// A connection to a PostgreSQL server (its protocol's version 3, through libpq). Waits no longer
/// than its `PostgresPatience` allows, except for the name service. One thread at a time.
class PostgresConnection {
 public:
  struct Fault {
    enum class Stage {
      kReaching,  ///< there was no connection, or it broke, or the server fell silent
      kSecuring,  ///< the server's encryption or identity is not what was asked for
      kServer,    ///< the server refused
    };
    Stage stage;
    std::string state;  ///< the server's code for it (SQLSTATE), where it refused
    std::string what;   ///< one line
  };

  static std::variant<std::unique_ptr<PostgresConnection>, Fault> open(
      const PostgresParameters& parameters, const PostgresPatience& patience);

  PostgresConnection(const PostgresConnection&) = delete;
  PostgresConnection& operator=(const PostgresConnection&) = delete;

  /// A row of an answer, in binary. Valid only during the call that it is passed to.
  class Row {
   public:
    Row(const PGresult* result, int row) : result_(result), row_(row) {}
    bool isNull(int column) const { return pq().PQgetisnull(result_, row_, column) != 0; }
    std::string_view bytes(int column) const;
    std::int64_t integer(int column) const;  ///< of a boolean, an int4 or an int8
    double real(int column) const;           ///< of a float8

   private:
    const PGresult* result_;
    int row_;
  };

  /// A value for $1, $2 and so on: null, bytea, int8 or float8. For any other type the statement
  /// converts a bytea. The caller keeps the bytes alive.
  using Value = std::variant<std::monostate, std::string_view, std::int64_t, double>;
  struct Statement {
    std::string sql;
    std::vector<Value> values;
    std::function<void(const Row&)> onRow = [](const Row&) {};
    bool repeated = false;  ///< worth preparing: run many times, with other values
  };
  /// Sends all statements at once, then takes their answers: one exchange. The first failure ends
  /// it, and rolls back a transaction that was begun.
  std::optional<Fault> run(const std::vector<Statement>& statements);

  /// Runs statements that have neither parameters nor answers, all of them or none.
  std::optional<Fault> runScript(const char* sql);

  /// Whether it can still be used.
  bool usable() const { return !lost_ && pq().PQstatus(connection_.get()) == CONNECTION_OK; }

 private:
  struct Finish {
    void operator()(PGconn* connection) const { pq().PQfinish(connection); }
  };
  using Clock = std::chrono::steady_clock;

  PostgresConnection(PGconn* connection, const PostgresPatience& patience);
  std::optional<Fault> connect();
  std::optional<Fault> exchange(const std::vector<Statement>& statements);
  std::optional<Fault> takeAnswer(const Statement& statement);
  std::optional<Fault> takeEnd();
  bool send(const Statement& statement, const std::string* prepared);
  PGresult* nextResult();
  bool wait(short events);
  Fault lost();

  std::unique_ptr<PGconn, Finish> connection_;
  std::map<std::string, std::string> prepared_;  // by their SQL, the names of prepared statements
  unsigned names_ = 0;                           // how many were made
  PostgresPatience patience_;
  Clock::time_point end_;  // when the patience with what is under way ends
  bool silent_ = false;    // the patience ran out
  bool lost_ = false;      // its state is unknown, it must not be used again
};

}  // namespace brimlo
