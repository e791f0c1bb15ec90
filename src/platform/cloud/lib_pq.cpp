#include "platform/cloud/lib_pq.h"

#include <dlfcn.h>

#include <memory>

namespace brimlo {
namespace {

std::unique_ptr<const LibPq> loadLibrary() {
  void* library = dlopen("libpq.so.5", RTLD_NOW | RTLD_LOCAL);  // never unloaded
  if (!library) return nullptr;
  auto table = std::make_unique<LibPq>();
  bool complete = true;
  const auto find = [&](const char* name, auto& function) {
    function = reinterpret_cast<std::decay_t<decltype(function)>>(dlsym(library, name));
    complete = complete && function;
  };
#define BRIMLO_FIND(name) find(#name, table->name);
  BRIMLO_LIB_PQ_FUNCTIONS(BRIMLO_FIND)
#undef BRIMLO_FIND
  if (!complete) return nullptr;
  return table;
}

}  // namespace

const LibPq* LibPq::load() {
  static const std::unique_ptr<const LibPq> table = loadLibrary();
  return table.get();
}

}  // namespace brimlo
