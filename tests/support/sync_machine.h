#pragma once

#include <cmath>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/fake_cloud.h"
#include "support/fake_file_system.h"
#include "support/fakes.h"
#include "sync/sync_scheduler.h"

namespace brimlo::test {

using Strings = std::vector<std::string>;

/// Clips in the short form "id:text@savedAt", each with a tag behind "#" (only "#": an empty list
/// of tags) or sent by a phone ("!"): "a:x@6#tag b:y@5!".
inline ClipList clips(const std::string& shortForms) {
  std::vector<ClipPtr> list;
  std::istringstream words(shortForms);
  for (std::string word; words >> word;) {
    const auto colon = word.find(':'), at = word.find('@'), tag = word.find('#');
    Clip clip{word.substr(0, colon),
              word.substr(colon + 1, at - colon - 1),
              std::stod(word.substr(at + 1)),
              word.ends_with('!') ? "action" : "manual",
              {}};
    if (tag != word.npos) clip.tags = Strings(word.ends_with('#') ? 0 : 1, word.substr(tag + 1));
    list.push_back(std::make_shared<Clip>(clip));
  }
  return ClipList(std::move(list));
}

inline std::string shortForms(const ClipList& clips) {
  std::string forms;
  for (const ClipPtr& clip : clips) {
    forms += (forms.empty() ? "" : " ") + clip->id + ":" + clip->text + "@" +
             std::to_string(std::llround(clip->savedAt));
    for (const std::string& tag : clip->tags.value_or(Strings())) forms += "#" + tag;
    if (clip->source == "action") forms += "!";
  }
  return forms;
}

/// What syncs on one machine, from a start of the program to its end.
struct Machine {
  Machine(std::unique_ptr<CloudDatabase> session, FakeFileSystem& disk, FakeRunLoop& runLoop)
      : files(disk), loop(runLoop), cloud(std::move(session)) {}

  /// One run, with `meanwhile` between the run's body and its outcome.
  void sync(const std::function<void()>& meanwhile = [] {}) {
    scheduler.syncNow(1e12);
    background.run();
    meanwhile();
    while (scheduler.isSyncing().value()) {
      loop.drain();
      background.run();
    }
  }

  FakeFileSystem& files;
  FakeRunLoop& loop;
  std::unique_ptr<CloudDatabase> cloud;
  FakeBackground background;
  FakeEntitlements entitlements;
  FakeLog log;
  FakeStrings strings;
  ClipStore store{files, log, "/data"};
  TemplateStore templates{files, log, "/data"};
  SyncScheduler scheduler{{background, *cloud, entitlements, log, loop, strings}, store, templates};
};

}  // namespace brimlo::test
