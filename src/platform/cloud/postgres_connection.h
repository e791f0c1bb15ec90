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

/// A connection to a PostgreSQL server (its protocol's version 3, through libpq) that waits for
/// nothing longer than it is told to, except for the name service. Any one thread.
class PostgresConnection {
 public:
  struct Fault {
    enum class Stage {
      kReaching,  ///< there was no connection, or it broke, or the server fell silent
      kSecuring,  ///< the server's encryption or identity is not what was asked for
      kServer,    ///< the server said no
    };
    Stage stage;
    std::string state;  ///< the server's code for it (SQLSTATE), where it said no
    std::string what;   ///< one line
  };

  /// `parameters`: libpq's keywords with their values.
  static std::variant<std::unique_ptr<PostgresConnection>, Fault> open(
      const std::vector<std::pair<std::string, std::string>>& parameters,
      const PostgresPatience& patience);

  PostgresConnection(const PostgresConnection&) = delete;
  PostgresConnection& operator=(const PostgresConnection&) = delete;

  /// A row of an answer, in binary. Lives as long as the call it is given to.
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

  /// A value for $1, $2 and so on: nothing, bytea, int8, float8. Text in other types is written
  /// as bytea and converted by the statement. The bytes are kept by the caller.
  using Value = std::variant<std::monostate, std::string_view, std::int64_t, double>;
  struct Statement {
    std::string sql;
    std::vector<Value> values;
    std::function<void(const Row&)> onRow = [](const Row&) {};
    bool repeated = false;  ///< worth preparing: it comes again and again, with other values
  };
  /// Sends all statements at once and takes their answers: one exchange. The first one that fails
  /// ends it, and rolls back a transaction that was begun.
  std::optional<Fault> run(const std::vector<Statement>& statements);

  /// Runs statements without parameters and answers, all or none.
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
  std::map<std::string, std::string> prepared_;  // the server's names of statements
  unsigned names_ = 0;                           // how many were given
  PostgresPatience patience_;
  Clock::time_point end_;  // of the patience with what is under way
  bool silent_ = false;    // that was at an end
  bool lost_ = false;      // nothing on this connection makes sense any more
};

}  // namespace brimlo
