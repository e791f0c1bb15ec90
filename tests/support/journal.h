#pragma once

#include <string>
#include <utility>
#include <vector>

namespace brimlo::test {

/// A fake that writes what it is asked into a journal, which several fakes may share. By default it
/// has none.
struct Journaling {
  void note(std::string what) const {
    if (journal) journal->push_back(std::move(what));
  }

  std::vector<std::string>* journal = nullptr;
};

}  // namespace brimlo::test
