#include "platform/cloud/lib_pq.h"

#include <dlfcn.h>

#include <memory>

namespace brimlo {
namespace {

std::unique_ptr<const LibPq> loadLibrary() {
  void* library = dlopen("libpq.so.5", RTLD_NOW | RTLD_LOCAL);  // for good
  if (!library) return nullptr;
  auto table = std::make_unique<LibPq>();
  bool complete = true;
  const auto find = [&](const char* name, auto& function) {
    function = reinterpret_cast<std::decay_t<decltype(function)>>(dlsym(library, name));
    complete = complete && function;
  };
  find("PQclear", table->PQclear);
  find("PQconnectPoll", table->PQconnectPoll);
  find("PQconnectStartParams", table->PQconnectStartParams);
  find("PQconninfoFree", table->PQconninfoFree);
  find("PQconninfoParse", table->PQconninfoParse);
  find("PQconsumeInput", table->PQconsumeInput);
  find("PQenterPipelineMode", table->PQenterPipelineMode);
  find("PQerrorMessage", table->PQerrorMessage);
  find("PQexitPipelineMode", table->PQexitPipelineMode);
  find("PQfinish", table->PQfinish);
  find("PQflush", table->PQflush);
  find("PQfreemem", table->PQfreemem);
  find("PQgetResult", table->PQgetResult);
  find("PQgetisnull", table->PQgetisnull);
  find("PQgetlength", table->PQgetlength);
  find("PQgetvalue", table->PQgetvalue);
  find("PQisBusy", table->PQisBusy);
  find("PQntuples", table->PQntuples);
  find("PQpipelineSync", table->PQpipelineSync);
  find("PQresultErrorField", table->PQresultErrorField);
  find("PQresultStatus", table->PQresultStatus);
  find("PQsendPrepare", table->PQsendPrepare);
  find("PQsendQuery", table->PQsendQuery);
  find("PQsendQueryParams", table->PQsendQueryParams);
  find("PQsendQueryPrepared", table->PQsendQueryPrepared);
  find("PQsetErrorVerbosity", table->PQsetErrorVerbosity);
  find("PQsetNoticeProcessor", table->PQsetNoticeProcessor);
  find("PQsetSingleRowMode", table->PQsetSingleRowMode);
  find("PQsetnonblocking", table->PQsetnonblocking);
  find("PQsocket", table->PQsocket);
  find("PQstatus", table->PQstatus);
  find("PQtransactionStatus", table->PQtransactionStatus);
  if (!complete) return nullptr;
  return table;
}

}  // namespace

const LibPq* LibPq::load() {
  static const std::unique_ptr<const LibPq> table = loadLibrary();
  return table.get();
}

}  // namespace brimlo
