#include "menu/menu_test.h"

namespace brimlo {
namespace {

class MenuContentModelTest : public test::MenuTest {
 protected:
  static std::string shown(const MenuPage& page) {
    const std::string rows =
        page.rows.empty() ? "none" : *page.rows.front().text + ".." + *page.rows.back().text;
    return rows + " [" + page.label + "] " + page.previous.value_or("-") + " " +
           page.next.value_or("-");
  }
};

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
      {60, "-1", "text 1..text 25 [60: 1 to 25, 100 %] - 26 – 50"},
      {60, "737869762948382065", "text 60..text 60 [60: 60 to 60, 100 %] pager.prev -"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.expected);
    fill(each.clips);
    surroundings.variables.clear();
    if (each.page) surroundings.variables["BRIMLO_MENU_PAGE"] = each.page;
    const MenuContentModel model(services());
    EXPECT_EQ(shown(model.content().value().history), each.expected);
    EXPECT_EQ(model.content().value().empty, each.clips == 0 ? "menu.empty" : "");
  }
}

TEST_F(MenuContentModelTest, APageBeyondTheEndLeadsBackStepByStep) {
  fill(30);
  surroundings.variables["BRIMLO_MENU_PAGE"] = "3";
  MenuContentModel model(services());
  for (const std::size_t rows : {1, 5, 25, 25}) {
    model.showPreviousHistoryPage();
    EXPECT_EQ(model.content().value().history.rows.size(), rows);
  }
  for (int i = 0; i < 2; ++i) model.showNextHistoryPage();
  EXPECT_EQ(model.content().value().history.rows.size(), 5U);
}

TEST_F(MenuContentModelTest, ARowSaysWhereItStandsAndWhereItIsFrom) {
  store.add("one\ntwo", "Action", 8);
  store.add("a phone's", "action", 9);
  templates.setTemplates({{"t", "The title\n", "the body", 1}});
  MenuContentModel model(services());
  const auto row = [](const MenuRow& it) { return it.badge + it.symbol + " " + *it.text; };
  const MenuContent& content = model.content().value();
  const auto& rows = content.history.rows;
  EXPECT_EQ(row(rows[0]), "1iphone a phone's");
  EXPECT_EQ(row(rows[1]), "2 one\ntwo");
  EXPECT_EQ(rows[1].text.get(), &store.clips().value()[1]->text) << "a long text is not copied";
  EXPECT_EQ(row(content.templates.rows[0]), "1text.badge.plus The title\n");
  fill(60);
  EXPECT_EQ(rows[8].badge + rows[9].badge, "9·");
  model.showNextHistoryPage();
  EXPECT_EQ(rows[0].badge, "·");
  model.activateClip(8);
  EXPECT_EQ(asked, std::vector<std::string>{"copy text 34"}) << "by the place on the page";
}

TEST_F(MenuContentModelTest, FollowsTheStoresAndCopiesWhatIsShown) {
  fill(1);
  MenuContentModel model(services());
  const MenuContent& content = model.content().value();
  EXPECT_EQ(content.count, "menu.count 1");
  store.add("newer", "manual", 5000);
  EXPECT_EQ(content.count, "menu.count 2");
  templates.setTemplates({{"t", "title", "body", 1}});
  for (const std::size_t position : {0, 2}) model.activateClip(position);
  for (const std::size_t position : {0, 1}) model.activateTemplate(position);
  EXPECT_EQ(asked, (std::vector<std::string>{"copy newer", "copy title"}));
}

TEST_F(MenuContentModelTest, ClearingAsksFirst) {
  fill(30);
  MenuContentModel model(services());
  const MenuContent& content = model.content().value();
  model.showNextHistoryPage();
  int closed = 0;
  model.setOnClose([&] { ++closed; });

  model.activate(FooterItemId::kClearHistory);
  ASSERT_TRUE(content.alert);
  model.escape();
  EXPECT_FALSE(content.alert);
  model.confirmClear();
  EXPECT_EQ(content.history.rows.size(), 5U) << "nothing is cleared, and the page is the same";

  model.activate(FooterItemId::kClearHistory);
  model.confirmClear();
  EXPECT_EQ(store.deletedIds()->size(), 30U);
  EXPECT_EQ(log.lines, std::vector<std::string>{"history cleared"});
  EXPECT_FALSE(content.alert);
  fill(30);
  EXPECT_EQ(content.history.rows.size(), 25U) << "on the first page";
  EXPECT_EQ(closed, 0);
  model.escape();
  EXPECT_EQ(closed, 1);
}

TEST_F(MenuContentModelTest, TheFooterShowsTheSettingsAndDoesWhatItSays) {
  using Id = FooterItemId;
  desktop.trusted = false;
  std::optional<MenuContentModel> model(services());
  const auto item = [&](Id id) {
    const auto& items = model->content().value().footer;
    return *std::find_if(items.begin(), items.end(), [&](auto& each) { return each.id == id; });
  };
  EXPECT_TRUE(item(Id::kAccessibilityNotice).shown);
  for (const Id id : {Id::kQuickPaste, Id::kExcludePasswords, Id::kAutoApply}) {
    const bool on = item(id).on;
    model->activate(id);
    EXPECT_EQ(item(id).on, !on);
  }
  EXPECT_FALSE(item(Id::kAccessibilityNotice).shown) << "the palette is off";
  desktop.trusted = true;
  model->activate(Id::kQuickPaste);
  EXPECT_FALSE(item(Id::kAccessibilityNotice).shown) << "it may type";

  const auto activateAll = [&] {
    for (const Id id : {Id::kSync, Id::kShowOnboarding, Id::kCheckForUpdates, Id::kQuit}) {
      model->activate(id);
    }
    return std::exchange(asked, {});
  };
  EXPECT_EQ(activateAll(), (std::vector<std::string>{"sync", "onboarding", "updates", "quit"}));
  auto withoutUpdates = services();
  withoutUpdates.checkForUpdates = nullptr;
  model.emplace(withoutUpdates);
  syncing.set(true);
  status.set("at it");
  const MenuContent& content = model->content().value();
  EXPECT_TRUE(content.isSyncing && content.syncStatus == "at it");
  EXPECT_FALSE(item(Id::kCheckForUpdates).shown);
  EXPECT_EQ(activateAll(), (std::vector<std::string>{"onboarding", "quit"}));
}

}  // namespace
}  // namespace brimlo
