#pragma once

#include <gtest/gtest.h>

#include "menu/menu_content_model.h"
#include "support/fake_file_system.h"
#include "support/fake_panel.h"
#include "support/fakes.h"

namespace brimlo::test {

/// What a menu window shows and does, with `asked` for what its commands asked for.
class MenuTest : public testing::Test {
 protected:
  /// Makes a history of `count` clips, "text 1" in front.
  void fill(std::size_t count) {
    std::vector<ClipPtr> clips;
    for (std::size_t i = 1; i <= count; ++i) {
      const std::string name = std::to_string(i);
      clips.push_back(std::make_shared<Clip>(
          Clip{name, "text " + name, static_cast<double>(1000 - i), "manual", std::nullopt}));
    }
    store.replaceAll(ClipList(std::move(clips)));
  }

  MenuContentModel::Services services() {
    const auto set = [](Published<bool>& setting) {
      return [&setting](bool on) { setting.set(on); };
    };
    const auto ask = [this](const char* what) { return [this, what] { asked.push_back(what); }; };
    return {.accessibility = desktop,
            .environment = surroundings,
            .log = log,
            .strings = strings,
            .store = store,
            .templateStore = templates,
            .quickPasteEnabled = quickPaste,
            .excludePasswords = passwords,
            .autoApply = autoApply,
            .isSyncing = syncing,
            .syncStatus = status,
            .copyClip = [this](const Clip& clip) { asked.push_back("copy " + clip.text); },
            .copyTemplate = [this](const Template& it) { asked.push_back("copy " + it.title); },
            .setQuickPasteEnabled = set(quickPaste),
            .setExcludePasswords = set(passwords),
            .setAutoApply = set(autoApply),
            .syncNow = ask("sync"),
            .showOnboarding = ask("onboarding"),
            .checkForUpdates = ask("updates"),
            .quit = ask("quit")};
  }

  struct Strings : FakeStrings {
    std::string text(const char* key) const override {
      const std::string name = key;
      return name == "menu.history_range" ? "%3$lld: %lld to %lld, 100 %" : name;
    }
  };

  FakeFileSystem files;
  FakeLog log;
  FakeDesktop desktop;
  FakeSurroundings surroundings;
  Strings strings;
  ClipStore store{files, log, "/data"};
  TemplateStore templates{files, log, "/data"};
  Published<bool> quickPaste{true}, passwords{false}, autoApply{true}, syncing{false};
  Published<std::string> status{"idle"};
  std::vector<std::string> asked;
};

}  // namespace brimlo::test
