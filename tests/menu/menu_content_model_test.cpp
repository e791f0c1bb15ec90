#include "menu/menu_content_model.h"

#include <gtest/gtest.h>

#include "support/fake_file_system.h"
#include "support/fake_panel.h"
#include "support/fakes.h"

namespace brimlo {
namespace {

class MenuContentModelTest : public testing::Test {
 protected:
  void fill(std::size_t count) {
    std::vector<ClipPtr> clips;
    for (std::size_t i = 1; i <= count; ++i) {
      const std::string name = std::to_string(i);
      clips.push_back(std::make_shared<Clip>(
          Clip{name, "text " + name, static_cast<double>(1000 - i), "manual", std::nullopt}));
    }
    store.replaceAll(ClipList(std::move(clips)));
  }

  std::unique_ptr<MenuContentModel> make(bool withUpdater = true) {
    const auto set = [this](Published<bool>& setting) {
      return [&setting, this](bool on) {
        asked.push_back(on ? "on" : "off");
        setting.set(on);
      };
    };
    const auto ask = [this](const char* what) { return [this, what] { asked.push_back(what); }; };
    return std::make_unique<MenuContentModel>(MenuContentModel::Services{
        .accessibility = desktop,
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
        .checkForUpdates = withUpdater ? ask("updates") : std::function<void()>(),
        .quit = ask("quit")});
  }

  static const FooterItem& item(const MenuContentModel& model, FooterItemId id) {
    const auto& items = model.content().value().footer;
    return *std::find_if(items.begin(), items.end(),
                         [&](const FooterItem& each) { return each.id == id; });
  }

  struct Strings : test::FakeStrings {
    std::string text(const char* key) const override {
      const std::string name = key;
      return name == "menu.history_range" ? "%3$lld: %lld to %lld, 100 %" : name;
    }
  };

  test::FakeFileSystem files;
  test::FakeLog log;
  test::FakeDesktop desktop;
  test::FakeSurroundings surroundings;
  Strings strings;
  ClipStore store{files, log, "/data"};
  TemplateStore templates{files, log, "/data"};
  Published<bool> quickPaste{true}, passwords{false}, autoApply{true}, syncing{false};
  Published<std::string> status{"idle"};
  std::vector<std::string> asked;
};

std::string shown(const MenuPage& page) {
  const std::string rows =
      page.rows.empty() ? "none" : *page.rows.front().text + ".." + *page.rows.back().text;
  return rows + " [" + page.label + "] " + page.previous.value_or("-") + " " +
         page.next.value_or("-");
}

TEST_F(MenuContentModelTest, PagesTheHistory) {
  const struct {
    std::size_t clips;
    const char* page;  // of the environment
    const char* expected;
  } cases[] = {
      {0, nullptr, "none [] - -"},
      {1, "7", "text 1..text 1 [] - -"},
      {25, nullptr, "text 1..text 25 [] - -"},
      {26, nullptr, "text 1..text 25 [26: 1 to 25, 100 %] - 26 – 26"},
      {60, "1", "text 26..text 50 [60: 26 to 50, 100 %] pager.prev 51 – 60"},
      {60, "2", "text 51..text 60 [60: 51 to 60, 100 %] pager.prev -"},
      {60, "+2", "text 51..text 60 [60: 51 to 60, 100 %] pager.prev -"},
      {60, "2x", "text 1..text 25 [60: 1 to 25, 100 %] - 26 – 50"},
      {60, "", "text 1..text 25 [60: 1 to 25, 100 %] - 26 – 50"},
      {60, " 2", "text 1..text 25 [60: 1 to 25, 100 %] - 26 – 50"},
      {60, "+-2", "text 1..text 25 [60: 1 to 25, 100 %] - 26 – 50"},
      {60, "-1", "text 1..text 25 [60: 1 to 25, 100 %] - 26 – 50"},
      {60, "9223372036854775808", "text 1..text 25 [60: 1 to 25, 100 %] - 26 – 50"},
      {60, "9223372036854775807", "text 60..text 60 [60: 60 to 60, 100 %] pager.prev -"},
      {30, "3", "text 30..text 30 [30: 30 to 30, 100 %] pager.prev -"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.expected);
    fill(each.clips);
    surroundings.variables.clear();
    if (each.page) surroundings.variables["BRIMLO_MENU_PAGE"] = each.page;
    const auto model = make();
    EXPECT_EQ(shown(model->content().value().history), each.expected);
    EXPECT_EQ(model->content().value().empty, each.clips == 0 ? "menu.empty" : "");
  }
}

TEST_F(MenuContentModelTest, APageBeyondTheEndLeadsBackStepByStep) {
  fill(30);
  surroundings.variables["BRIMLO_MENU_PAGE"] = "3";
  const auto model = make();
  std::vector<std::size_t> rows;
  for (int i = 0; i < 4; ++i) {
    model->showPreviousHistoryPage();
    rows.push_back(model->content().value().history.rows.size());
  }
  EXPECT_EQ(rows, (std::vector<std::size_t>{1, 5, 25, 25}));
  model->showNextHistoryPage();
  model->showNextHistoryPage();
  EXPECT_EQ(model->content().value().history.rows.size(), 5U);
}

TEST_F(MenuContentModelTest, ARowSaysWhereItStandsAndWhereItIsFrom) {
  const auto clip = [](const char* id, std::string text, const char* source, double at) {
    return std::make_shared<Clip>(Clip{id, std::move(text), at, source, std::nullopt});
  };
  store.replaceAll(
      ClipList({clip("a", "one\ntwo\n\nthree", "action", 9), clip("b", " two ", "Action", 8),
                clip("c", std::string(5'000'000, 'x') + "y", "manual", 7)}));
  templates.setTemplates({{"t", "The title\n", "the body", 1}});
  const auto model = make();
  const auto row = [](const char* badge, const char* symbol, const char* text) {
    return MenuRow{badge, symbol, std::make_shared<const std::string>(text)};
  };
  const auto& rows = model->content().value().history.rows;
  EXPECT_EQ(rows[0], row("1", "iphone", "one\ntwo\n\nthree"));
  EXPECT_EQ(rows[1], row("2", "", " two "));
  EXPECT_EQ(rows[2].text.get(), &store.clips().value()[2]->text) << "a long text is not copied";
  EXPECT_EQ(model->content().value().templates.rows,
            std::vector<MenuRow>{row("1", "text.badge.plus", "The title\n")});
  fill(60);
  EXPECT_EQ(rows[8].badge, "9");
  EXPECT_EQ(rows[9].badge, "·");
  model->showNextHistoryPage();
  EXPECT_EQ(rows[0].badge, "·");
  model->activateClip(8);
  EXPECT_EQ(asked, std::vector<std::string>{"copy text 34"}) << "by the place on the page";
}

TEST_F(MenuContentModelTest, FollowsTheStoresAndCopiesWhatIsShown) {
  fill(1);
  const auto model = make();
  EXPECT_EQ(model->content().value().count, "menu.count 1");
  store.add("newer", "manual", 5000);
  EXPECT_EQ(model->content().value().count, "menu.count 2");
  templates.setTemplates({{"t", "title", "body", 1}});
  model->activateClip(0);
  model->activateClip(2);
  model->activateTemplate(0);
  model->activateTemplate(1);
  EXPECT_EQ(asked, (std::vector<std::string>{"copy newer", "copy title"}));
}

TEST_F(MenuContentModelTest, ClearingAsksFirst) {
  fill(80);
  const auto model = make();
  for (int i = 0; i < 3; ++i) model->showNextHistoryPage();
  int closed = 0;
  model->setOnClose([&] { ++closed; });

  model->activate(FooterItemId::kClearHistory);
  ASSERT_TRUE(model->content().value().alert);
  EXPECT_EQ(model->content().value().alert->confirm, "alert.clear_confirm");
  model->escape();
  EXPECT_FALSE(model->content().value().alert);
  model->confirmClear();
  EXPECT_EQ(store.clips().value().size(), 80U);
  EXPECT_EQ(model->content().value().history.rows.size(), 5U) << "still on the last page";
  EXPECT_EQ(closed, 0);

  model->activate(FooterItemId::kClearHistory);
  model->confirmClear();
  EXPECT_TRUE(store.clips().value().empty());
  EXPECT_EQ(store.deletedIds()->size(), 80U);
  EXPECT_EQ(log.lines, std::vector<std::string>{"history cleared"});
  EXPECT_EQ(model->content().value().empty, "menu.empty");
  EXPECT_FALSE(model->content().value().alert);
  fill(30);
  EXPECT_EQ(model->content().value().history.rows.size(), 25U) << "on the first page";
  model->escape();
  EXPECT_EQ(closed, 1);
}

TEST_F(MenuContentModelTest, TheFooterShowsTheSettingsAndDoesWhatItSays) {
  desktop.trusted = false;
  auto model = make();
  EXPECT_TRUE(item(*model, FooterItemId::kAccessibilityNotice).shown);
  model->activate(FooterItemId::kQuickPaste);
  EXPECT_FALSE(item(*model, FooterItemId::kQuickPaste).on);
  EXPECT_FALSE(item(*model, FooterItemId::kAccessibilityNotice).shown);
  desktop.trusted = true;
  model->activate(FooterItemId::kQuickPaste);
  EXPECT_FALSE(item(*model, FooterItemId::kAccessibilityNotice).shown);
  model->activate(FooterItemId::kExcludePasswords);
  model->activate(FooterItemId::kAutoApply);
  EXPECT_TRUE(passwords.value());
  EXPECT_FALSE(autoApply.value());

  asked.clear();
  model->activate(FooterItemId::kSync);
  syncing.set(true);
  status.set("at it");
  model->activate(FooterItemId::kSync);
  EXPECT_TRUE(model->content().value().isSyncing);
  EXPECT_EQ(model->content().value().syncStatus, "at it");
  for (const auto id :
       {FooterItemId::kShowOnboarding, FooterItemId::kCheckForUpdates, FooterItemId::kQuit}) {
    model->activate(id);
  }
  EXPECT_EQ(asked, (std::vector<std::string>{"sync", "onboarding", "updates", "quit"}));

  model = make(false);
  EXPECT_FALSE(item(*model, FooterItemId::kCheckForUpdates).shown);
  model->activate(FooterItemId::kCheckForUpdates);
}

}  // namespace
}  // namespace brimlo
