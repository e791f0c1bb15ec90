#pragma once

#include <libpq-fe.h>

namespace brimlo {

/// The functions of libpq. The library is loaded when an account on a server needs it: with all
/// that it brings along it would take more memory than the history, in every process.
struct LibPq {
  decltype(&::PQclear) PQclear;
  decltype(&::PQconnectPoll) PQconnectPoll;
  decltype(&::PQconnectStartParams) PQconnectStartParams;
  decltype(&::PQconninfoFree) PQconninfoFree;
  decltype(&::PQconninfoParse) PQconninfoParse;
  decltype(&::PQconsumeInput) PQconsumeInput;
  decltype(&::PQenterPipelineMode) PQenterPipelineMode;
  decltype(&::PQerrorMessage) PQerrorMessage;
  decltype(&::PQexitPipelineMode) PQexitPipelineMode;
  decltype(&::PQfinish) PQfinish;
  decltype(&::PQflush) PQflush;
  decltype(&::PQfreemem) PQfreemem;
  decltype(&::PQgetResult) PQgetResult;
  decltype(&::PQgetisnull) PQgetisnull;
  decltype(&::PQgetlength) PQgetlength;
  decltype(&::PQgetvalue) PQgetvalue;
  decltype(&::PQisBusy) PQisBusy;
  decltype(&::PQntuples) PQntuples;
  decltype(&::PQpipelineSync) PQpipelineSync;
  decltype(&::PQresultErrorField) PQresultErrorField;
  decltype(&::PQresultStatus) PQresultStatus;
  decltype(&::PQsendPrepare) PQsendPrepare;
  decltype(&::PQsendQuery) PQsendQuery;
  decltype(&::PQsendQueryParams) PQsendQueryParams;
  decltype(&::PQsendQueryPrepared) PQsendQueryPrepared;
  decltype(&::PQsetErrorVerbosity) PQsetErrorVerbosity;
  decltype(&::PQsetNoticeProcessor) PQsetNoticeProcessor;
  decltype(&::PQsetSingleRowMode) PQsetSingleRowMode;
  decltype(&::PQsetnonblocking) PQsetnonblocking;
  decltype(&::PQsocket) PQsocket;
  decltype(&::PQstatus) PQstatus;
  decltype(&::PQtransactionStatus) PQtransactionStatus;

  /// Null where the library is not installed. Any thread.
  static const LibPq* load();
};

/// The library, which was loaded before.
inline const LibPq& pq() {
  return *LibPq::load();
}

}  // namespace brimlo
