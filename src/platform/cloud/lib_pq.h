#pragma once

#include <libpq-fe.h>

namespace brimlo {

/// What is used of libpq.
// clang-format off
#define BRIMLO_LIB_PQ_FUNCTIONS(X) \
  X(PQclear) X(PQconnectPoll) X(PQconnectStartParams) X(PQconninfoFree) X(PQconninfoParse) \
  X(PQconsumeInput) X(PQenterPipelineMode) X(PQerrorMessage) X(PQexitPipelineMode) \
  X(PQfinish) X(PQflush) X(PQfreemem) X(PQgetResult) X(PQgetisnull) X(PQgetlength) \
  X(PQgetvalue) X(PQisBusy) X(PQntuples) X(PQpipelineSync) X(PQresultErrorField) \
  X(PQresultStatus) X(PQsendPrepare) X(PQsendQuery) X(PQsendQueryParams) \
  X(PQsendQueryPrepared) X(PQsetErrorVerbosity) X(PQsetNoticeProcessor) X(PQsetSingleRowMode) \
  X(PQsetnonblocking) X(PQsocket) X(PQstatus) X(PQtransactionStatus)
// clang-format on

/// The functions of libpq. The library is loaded only when an account on a server needs it: with
/// its own dependencies it takes more memory than the history does.
struct LibPq {
#define BRIMLO_POINTER(name) decltype(&::name) name;  // NOLINT(bugprone-macro-parentheses)
  BRIMLO_LIB_PQ_FUNCTIONS(BRIMLO_POINTER)
#undef BRIMLO_POINTER

  /// Null where the library is not installed. Any thread.
  static const LibPq* load();
};

/// The library, after a `LibPq::load` that succeeded.
inline const LibPq& pq() {
  return *LibPq::load();
}

}  // namespace brimlo
