#include "menu/menu_content_model.h"

#include <algorithm>
#include <utility>

#include "base/decimal_integer.h"
#include "base/placeholders.h"

namespace brimlo {
namespace {

/// The page that the environment asks for; 0 where it names none, and for one below 0.
std::int64_t pageNamedBy(const std::optional<std::string>& value) {
  const auto page = value ? decimalInteger(*value) : std::nullopt;
  return std::max<std::int64_t>(page.value_or(0), 0);
}

struct Range {
  std::size_t start;  ///< the first row's position in the list
  std::size_t end;    ///< one past the last one's
};

/// The rows on `page` of a list of `count`, which is not 0; beyond the last page, the last row.
Range rangeOf(std::int64_t page, std::size_t count) {
  constexpr auto kSize = static_cast<std::size_t>(MenuContentModel::kPageSize);
  const std::size_t last = count - 1;
  const auto asked = static_cast<std::size_t>(page);
  const std::size_t start = asked > last / kSize ? last : asked * kSize;
  return {start, std::min(start + kSize, count)};
}

}  // namespace

MenuContentModel::MenuContentModel(Services services)
    : services_(std::move(services)),
      historyPage_(pageNamedBy(services_.environment.value("BRIMLO_MENU_PAGE"))) {
  const auto follow = [this](const auto& value) {
    subscriptions_.push_back(value.observeChanges([this](const auto&) { refresh(); }));
  };
  follow(services_.store.clips());
  follow(services_.templateStore.templates());
  follow(services_.quickPasteEnabled);
  follow(services_.excludePasswords);
  follow(services_.autoApply);
  follow(services_.isSyncing);
  follow(services_.syncStatus);
  refresh();
}

void MenuContentModel::activateClip(std::size_t position) {
  if (position >= shownClips_.size()) return;
  const ClipPtr clip = shownClips_[position];  // kept, because the copy makes other rows
  services_.copyClip(*clip);
}

void MenuContentModel::activateTemplate(std::size_t position) {
  if (position >= shownTemplates_.size()) return;
  const Template chosen = shownTemplates_[position];
  services_.copyTemplate(chosen);
}

void MenuContentModel::showPreviousHistoryPage() {
  if (content_.value().history.previous) turn(historyPage_, -1);
}

void MenuContentModel::showNextHistoryPage() {
  if (content_.value().history.next) turn(historyPage_, 1);
}

void MenuContentModel::showPreviousTemplatePage() {
  if (content_.value().templates.previous) turn(templatePage_, -1);
}

void MenuContentModel::showNextTemplatePage() {
  if (content_.value().templates.next) turn(templatePage_, 1);
}

void MenuContentModel::turn(std::int64_t& page, std::int64_t by) {
  page += by;
  refresh();
}

void MenuContentModel::activate(FooterItemId id) {
  const auto& items = content_.value().footer;
  const auto item = std::find_if(items.begin(), items.end(),
                                 [&](const FooterItem& each) { return each.id == id; });
  if (item == items.end() || !item->enabled || !item->shown) return;
  const bool flipped = !item->on;
  switch (id) {
    case FooterItemId::kQuickPaste:
      return services_.setQuickPasteEnabled(flipped);
    case FooterItemId::kExcludePasswords:
      return services_.setExcludePasswords(flipped);
    case FooterItemId::kAutoApply:
      return services_.setAutoApply(flipped);
    case FooterItemId::kSync:
      return services_.syncNow();
    case FooterItemId::kClearHistory:
      showingClearConfirm_ = true;
      return refresh();
    case FooterItemId::kShowOnboarding:
      return services_.showOnboarding();
    case FooterItemId::kCheckForUpdates:
      return services_.checkForUpdates();
    case FooterItemId::kQuit:
      return services_.quit();
    case FooterItemId::kAccessibilityNotice:
    case FooterItemId::kDivider:
      return;
  }
}

void MenuContentModel::confirmClear() {
  if (!std::exchange(showingClearConfirm_, false)) return;
  services_.store.clearAll();
  services_.log.write("history cleared");
  historyPage_ = 0;
  refresh();
}

void MenuContentModel::cancelClear() {
  if (std::exchange(showingClearConfirm_, false)) refresh();
}

void MenuContentModel::escape() {
  if (showingClearConfirm_) return cancelClear();
  if (onClose_) onClose_();
}

void MenuContentModel::refresh() {
  MenuContent content;
  const std::size_t count = services_.store.clips().value().size();
  content.title = text("Brimlo");
  content.count = services_.strings.textWithCount("menu.count", count);
  content.history = historyPage();
  if (count == 0) content.empty = text("menu.empty");
  content.templates = templatesPage();
  content.footer = footer();
  content.syncStatus = services_.syncStatus.value();
  content.isSyncing = services_.isSyncing.value();
  if (showingClearConfirm_) {
    content.alert = {text("alert.clear_title"), text("alert.clear_message"),
                     text("alert.clear_confirm"), text("common.cancel")};
  }
  content_.set(std::move(content));
}

MenuPage MenuContentModel::historyPage() {
  MenuPage page;
  shownClips_.clear();
  const ClipList& clips = services_.store.clips().value();
  if (clips.empty()) return page;
  const auto [start, end] = rangeOf(historyPage_, clips.size());
  for (std::size_t at = start; at < end; ++at) {
    const bool fromPhone = clips[at]->source == "action";
    page.rows.push_back({badge(at), fromPhone ? "iphone" : "", {clips[at], &clips[at]->text}});
    shownClips_.push_back(clips[at]);
  }
  if (clips.size() > kPageSize) {
    page.label =
        filledIn(text("menu.history_range"),
                 {std::to_string(start + 1), std::to_string(end), std::to_string(clips.size())});
  }
  addPager(page, historyPage_, clips.size());
  return page;
}

MenuPage MenuContentModel::templatesPage() {
  MenuPage page;
  shownTemplates_.clear();
  const std::vector<Template>& templates = services_.templateStore.templates().value();
  if (templates.empty()) return page;
  const auto [start, end] = rangeOf(templatePage_, templates.size());
  for (std::size_t at = start; at < end; ++at) {
    page.rows.push_back(
        {badge(at), "text.badge.plus", std::make_shared<const std::string>(templates[at].title)});
    shownTemplates_.push_back(templates[at]);
  }
  page.label = text("menu.templates");
  addPager(page, templatePage_, templates.size());
  return page;
}

std::string MenuContentModel::badge(std::size_t index) const {
  constexpr std::size_t kNumbered = 9;
  if (index >= kNumbered) return "·";
  return filledIn(text("%lld"), {std::to_string(index + 1)});
}

void MenuContentModel::addPager(MenuPage& page, std::int64_t current, std::size_t count) const {
  const auto all = static_cast<std::int64_t>(count);
  const std::int64_t pageCount = (all + kPageSize - 1) / kPageSize;
  if (pageCount < 2) return;
  if (current >= 1) page.previous = text("pager.prev");
  if (current < pageCount - 1) {
    const std::int64_t nextStart = (current + 1) * kPageSize + 1;
    const std::int64_t nextEnd = std::min(nextStart + kPageSize - 1, all);
    page.next = filledIn(text("%lld – %lld"), {std::to_string(nextStart), std::to_string(nextEnd)});
  }
}

std::vector<FooterItem> MenuContentModel::footer() const {
  using Id = FooterItemId;
  using Kind = FooterItemKind;
  const bool quickPaste = services_.quickPasteEnabled.value();
  return {
      {Id::kQuickPaste, Kind::kSwitch, text("footer.quick_paste"), "", quickPaste},
      {.id = Id::kAccessibilityNotice,
       .kind = Kind::kNotice,
       .text = text("footer.ax_required"),
       .symbol = "exclamationmark.triangle.fill",
       .shown = quickPaste && !services_.accessibility.isProcessTrusted()},
      {Id::kExcludePasswords, Kind::kSwitch, text("footer.exclude_passwords"), "",
       services_.excludePasswords.value()},
      {Id::kAutoApply, Kind::kSwitch, text("footer.auto_apply"), "", services_.autoApply.value()},
      {.id = Id::kSync,
       .kind = Kind::kSync,
       .text = text("footer.sync"),
       .symbol = "arrow.triangle.2.circlepath",
       .enabled = !services_.isSyncing.value()},
      {Id::kDivider, Kind::kDivider},
      {Id::kClearHistory, Kind::kCommand, text("footer.clear_history"), "trash"},
      {Id::kShowOnboarding, Kind::kCommand, text("footer.show_onboarding"), "questionmark.circle"},
      {.id = Id::kCheckForUpdates,
       .kind = Kind::kCommand,
       .text = text("footer.check_updates"),
       .symbol = "arrow.down.circle",
       .shown = services_.checkForUpdates != nullptr},
      {Id::kQuit, Kind::kDestructiveCommand, text("footer.quit")},
  };
}

}  // namespace brimlo
