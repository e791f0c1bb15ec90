#include "palette/quick_paste_controller.h"

#include <algorithm>
#include <utility>

#include "base/unicode_text.h"
#include "platform/key_codes.h"

namespace brimlo {
namespace {

constexpr std::int64_t kPage = 8;

QuickPasteSection other(QuickPasteSection section) {
  return section == QuickPasteSection::kClips ? QuickPasteSection::kTemplates
                                              : QuickPasteSection::kClips;
}

std::int64_t count(const QuickPasteItems& items) {
  return static_cast<std::int64_t>(items.size());
}

/// `value` between `low` and `high`. Where `low` is greater than `high`, `high` counts.
double clamped(double value, double low, double high) {
  return std::min(std::max(value, low), high);
}

}  // namespace

QuickPasteController::QuickPasteController(const Services& services) : services_(services) {
  state_.onConfirm = anchor_.guard([this](std::int64_t row) { confirmItem(row); });
  state_.onHover = anchor_.guard([this](std::int64_t row) { state_.selectedIndex.set(row); });
  state_.onSectionChange =
      anchor_.guard([this](QuickPasteSection section) { setSection(section); });
  screensChange_ = services_.screens.observeChanges(anchor_.guard([this] { screensChanged(); }));
  querySubscription_ =
      state_.query.observeDistinct([this](const std::string& query) { queryChanged(query); });
}

void QuickPasteController::setClipsProvider(std::function<ClipList()> provider) {
  clipsProvider_ = std::move(provider);
}

void QuickPasteController::setTemplatesProvider(std::function<std::vector<Template>()> provider) {
  templatesProvider_ = std::move(provider);
}

void QuickPasteController::setOnConfirm(std::function<void(const Clip&)> onConfirm) {
  onConfirm_ = std::move(onConfirm);
}

void QuickPasteController::setOnConfirmTemplate(std::function<void(const Template&)> onConfirm) {
  onConfirmTemplate_ = std::move(onConfirm);
}

void QuickPasteController::present() {
  const bool onTemplates = services_.environment.value("BRIMLO_QP_SECTION") == "templates";
  beginPresentation(clipsProvider_ ? clipsProvider_() : ClipList(),
                    templatesProvider_ ? templatesProvider_() : std::vector<Template>(),
                    onTemplates ? QuickPasteSection::kTemplates : QuickPasteSection::kClips,
                    services_.environment.value("BRIMLO_QP_QUERY"));
  KeyablePanel& panel = ensurePanel();
  positionPanel(panel);
  installMonitors();
  panel.makeKeyAndOrderFront();
  state_.focusRequest.set(state_.focusRequest.value() + 1);
  const std::optional<Rect> frame = panel.frame();
  services_.log.write("quick-paste palette presented (" +
                      std::to_string(state_.items.value().size()) +
                      " items) frame=" + (frame ? toString(*frame) : "?") +
                      " visible=" + (panel.isVisible() ? "true" : "false"));
}

void QuickPasteController::prepare() {
  if (!panel_) ensurePanel().prepare();
}

void QuickPasteController::dismiss() {
  filter_.reset();
  removeMonitors();
  if (panel_) panel_->orderOut();
}

void QuickPasteController::confirmItem(std::int64_t row) {
  if (row < 0 || row >= count(state_.items.value())) return;
  const QuickPasteItem item = state_.items.value()[static_cast<std::size_t>(row)];
  // First, so that the application that was in front has the keyboard back.
  dismiss();
  if (const ClipPtr clip = item.clip()) {
    if (onConfirm_) onConfirm_(*clip);
  } else if (onConfirmTemplate_) {
    onConfirmTemplate_(*item.shownTemplate());
  }
}

void QuickPasteController::beginPresentation(ClipList clips, const std::vector<Template>& templates,
                                             QuickPasteSection section,
                                             const std::optional<std::string>& query) {
  std::vector<TemplatePtr> shared;
  shared.reserve(templates.size());
  for (const Template& each : templates) shared.push_back(std::make_shared<const Template>(each));
  filter_.reset();
  matches_ = {};
  snapshot_ = {std::move(clips),
               std::make_shared<const std::vector<TemplatePtr>>(std::move(shared))};
  state_.query.set("");
  state_.section.set(section);
  applyFilter("");
  state_.selectedIndex.set(0);
  if (query && !query->empty()) {
    state_.query.set(*query);
    finishFilter();
  }
}

void QuickPasteController::applyFilter(const std::string& query) {
  filter_.reset();
  FilterRun run(snapshot_, query, services_.locale, matches_);
  run.advance([] { return false; });
  publishMatches(run.matches());
}

void QuickPasteController::setSection(QuickPasteSection section) {
  if (section == state_.section.value()) return;
  state_.section.set(section);
  applyFilter(state_.query.value());
  selectFirst();
}

void QuickPasteController::moveSelection(std::int64_t step) {
  finishFilter();
  const std::int64_t rows = count(state_.items.value());
  if (rows == 0) return;
  const std::int64_t row = std::min(state_.selectedIndex.value() + step, rows - 1);
  state_.selectedIndex.set(std::max<std::int64_t>(row, 0));
  state_.keyboardNavTick.set(state_.keyboardNavTick.value() + 1);
}

bool QuickPasteController::handleKeyDown(const KeyDownEvent& event) {
  const bool composing = panel_ && panel_->isComposing();
  switch (event.keyCode) {
    case key_code::kReturn:
    case key_code::kKeypadEnter:
      if (composing) return false;
      finishFilter();
      confirmItem(state_.selectedIndex.value());
      return true;
    case key_code::kTab:
      if (composing) return false;
      setSection(other(state_.section.value()));
      return true;
    case key_code::kEscape:
      if (composing) return false;
      dismiss();
      return true;
    case key_code::kPageUp:
    case key_code::kPageDown:
      moveSelection(event.keyCode == key_code::kPageUp ? -kPage : kPage);
      return true;
    case key_code::kLeftArrow:
    case key_code::kRightArrow:
      if (composing || !state_.query.value().empty()) return false;
      moveSelection(event.keyCode == key_code::kLeftArrow ? -kPage : kPage);
      return true;
    case key_code::kDownArrow:
    case key_code::kUpArrow:
      if (composing) return false;
      moveSelection(event.keyCode == key_code::kDownArrow ? 1 : -1);
      return true;
    default:
      break;
  }
  const bool shortcut =
      (event.modifierFlags & (modifier_flag::kCommand | modifier_flag::kControl)) != 0;
  if (shortcut || composing || !state_.query.value().empty()) return false;
  const std::optional<std::int64_t> number = wholeNumber(event.charactersIgnoringModifiers);
  if (!number || *number < 1 || *number > count(state_.items.value())) return false;
  confirmItem(*number - 1);
  return true;
}

void QuickPasteController::queryChanged(const std::string& query) {
  filter_ = std::make_shared<FilterRun>(snapshot_, query, services_.locale, matches_);
  workOnFilter();
}

void QuickPasteController::workOnFilter() {
  constexpr double kSliceMs = 4;
  const double begin = services_.clock.nowMs();
  const bool over = filter_->advance([&] {
    const double spent = services_.clock.nowMs() - begin;
    return spent >= kSliceMs || spent < 0;
  });
  if (over) return finishFilter();
  services_.queue.async(anchor_.guard([this, run = std::weak_ptr<FilterRun>(filter_)] {
    const auto current = run.lock();
    if (current && current == filter_) workOnFilter();
  }));
}

void QuickPasteController::finishFilter() {
  const std::shared_ptr<FilterRun> run = std::exchange(filter_, nullptr);
  if (!run) return;
  run->advance([] { return false; });
  publishMatches(run->matches());
  selectFirst();
}

void QuickPasteController::publishMatches(const QuickPasteMatches& matches) {
  matches_ = matches;
  const QuickPasteItems clips(snapshot_.allClips, matches_.clips);
  const QuickPasteItems templates(snapshot_.allTemplates, matches_.templates);
  state_.clipCount.set(count(clips));
  state_.templateCount.set(count(templates));
  state_.items.set(state_.section.value() == QuickPasteSection::kClips ? clips : templates);
  const std::int64_t rows = count(state_.items.value());
  if (state_.selectedIndex.value() >= rows) {
    state_.selectedIndex.set(std::max<std::int64_t>(rows - 1, 0));
  }
}

void QuickPasteController::selectFirst() {
  state_.selectedIndex.set(0);
  state_.keyboardNavTick.set(state_.keyboardNavTick.value() + 1);
}

KeyablePanel& QuickPasteController::ensurePanel() {
  if (panel_) return *panel_;
  panel_ = services_.makePanel(state_);
  constexpr Size kWithoutContent{500, 460};
  constexpr double kSmallest = 100;
  const Size fitting = panel_->fittingSize();
  panel_->setContentSize(std::min(fitting.width, fitting.height) < kSmallest ? kWithoutContent
                                                                             : fitting);
  panel_->setOnResignKey(anchor_.guard([this] {
    if (autoDismissOnResign_) dismiss();
  }));
  return *panel_;
}

void QuickPasteController::positionPanel(KeyablePanel& panel) const {
  const Size size = panel.contentSize();
  if (debugCenterOnPrimary_) {
    if (const auto primary = primaryScreen(services_.screens)) {
      return panel.setFrameOrigin(originCentered(size, primary->visibleFrame));
    }
  }
  const std::optional<Point> pointer = services_.screens.pointerLocation();
  auto screen = screenAt(pointer, services_.screens);
  if (!screen) screen = services_.screens.mainScreen();
  if (!screen) return;
  if (!pointer) return panel.setFrameOrigin(originCentered(size, screen->visibleFrame));
  // The pointer is on the title row, so that it selects none of the rows.
  constexpr double kAbovePointer = 40, kMargin = 8;
  const Rect& visible = screen->visibleFrame;
  panel.setFrameOrigin({clamped(pointer->x - size.width / 2, visible.minX() + kMargin,
                                visible.maxX() - size.width - kMargin),
                        clamped(pointer->y - size.height + kAbovePointer, visible.minY() + kMargin,
                                visible.maxY() - size.height - kMargin)});
}

void QuickPasteController::screensChanged() {
  if (!panel_ || !panel_->isVisible()) return;
  const std::optional<Rect> frame = panel_->frame();
  const std::vector<Screen> screens = services_.screens.screens();
  const bool inSight =
      frame && std::any_of(screens.begin(), screens.end(), [&](const Screen& each) {
        return each.frame.minX() <= frame->minX() && frame->maxX() <= each.frame.maxX() &&
               each.frame.minY() <= frame->minY() && frame->maxY() <= each.frame.maxY();
      });
  if (!inSight) positionPanel(*panel_);
}

void QuickPasteController::installMonitors() {
  removeMonitors();
  keyMonitor_ = services_.events.addLocalKeyDownMonitor(
      [this](const KeyDownEvent& event) { return handleKeyDown(event); });
  globalClickMonitor_ = services_.events.addGlobalMouseDownMonitor([this] { dismissSoon(); });
  localClickMonitor_ = services_.events.addLocalMouseDownMonitor([this](WindowId window) {
    if (panel_ && window != panel_->windowId()) dismissSoon();
  });
}

void QuickPasteController::removeMonitors() {
  keyMonitor_.reset();
  globalClickMonitor_.reset();
  localClickMonitor_.reset();
}

void QuickPasteController::dismissSoon() {
  // Later, so that the click reaches its window first.
  services_.queue.async(anchor_.guard([this] { dismiss(); }));
}

}  // namespace brimlo
