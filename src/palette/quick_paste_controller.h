#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/geometry.h"
#include "base/published.h"
#include "base/weak_anchor.h"
#include "palette/filter_run.h"
#include "palette/quick_paste_view_state.h"
#include "platform/clock.h"
#include "platform/environment.h"
#include "platform/event_monitors.h"
#include "platform/keyable_panel.h"
#include "platform/main_queue.h"
#include "platform/screens.h"
#include "platform/system_log.h"

namespace brimlo {

/// The palette: fills it, puts it on screen, follows the keyboard, takes it away, and hands on what
/// was chosen.
///
/// A filter over a long history is worked on in slices between events. Until it is done the rows
/// of the last one stay; a filter typed meanwhile replaces it, and a key that acts on the rows
/// finishes it first. So the outcome is that of filtering at once. Main thread.
class QuickPasteController {
 public:
  using PanelFactory = std::function<std::unique_ptr<KeyablePanel>(QuickPasteViewState&)>;

  /// All of it outlives the controller.
  struct Services {
    const Clock& clock;
    const Environment& environment;
    EventMonitors& events;
    SystemLog& log;
    MainQueue& queue;
    Screens& screens;
    std::string locale;      ///< the user's, as the filter compares letters: a POSIX locale name
    PanelFactory makePanel;  ///< makes the panel with the palette's view in it, at first showing
  };

  explicit QuickPasteController(const Services& services);

  QuickPasteViewState& state() { return state_; }

  /// Gives the rows at each opening; without a provider there are none.
  void setClipsProvider(std::function<ClipList()> provider);
  void setTemplatesProvider(std::function<std::vector<Template>()> provider);
  /// What is done with a chosen row, after the palette has closed.
  void setOnConfirm(std::function<void(const Clip&)> onConfirm);
  void setOnConfirmTemplate(std::function<void(const Template&)> onConfirm);
  /// Whether the palette closes when it loses the keyboard. True at first.
  void setAutoDismissOnResign(bool enabled) { autoDismissOnResign_ = enabled; }
  /// Whether it opens in the middle of the primary screen, not at the pointer. False at first.
  void setDebugCenterOnPrimary(bool enabled) { debugCenterOnPrimary_ = enabled; }

  /// Opens the palette, freshly filled; opens it anew when it is open. `BRIMLO_QP_SECTION` set to
  /// "templates" opens that section, `BRIMLO_QP_QUERY` is its first filter.
  void present();

  /// Makes the panel in advance, where it was not made yet, so that the first presentation takes no
  /// longer than the later ones.
  void prepare();

  /// Closes it. Does nothing when it is closed.
  void dismiss();

  /// Closes it and hands on the item in `row`; does nothing where there is no such row.
  void confirmItem(std::int64_t row);

  /// What the list does, without a panel on screen.
  void beginPresentation(ClipList clips, const std::vector<Template>& templates,
                         QuickPasteSection section, const std::optional<std::string>& query);
  void applyFilter(const std::string& query);
  void setSection(QuickPasteSection section);
  void moveSelection(std::int64_t step);

  /// Acts on a key. Returns whether the event ends here.
  bool handleKeyDown(const KeyDownEvent& event);

 private:
  void queryChanged(const std::string& query);
  void workOnFilter();
  void finishFilter();
  void publishMatches(const QuickPasteMatches& matches);
  void selectFirst();
  KeyablePanel& ensurePanel();
  void positionPanel(KeyablePanel& panel) const;
  void screensChanged();
  void installMonitors();
  void removeMonitors();
  void dismissSoon();

  Services services_;
  QuickPasteViewState state_;
  std::unique_ptr<KeyablePanel> panel_;
  std::unique_ptr<EventMonitor> keyMonitor_;
  std::unique_ptr<EventMonitor> globalClickMonitor_;
  std::unique_ptr<EventMonitor> localClickMonitor_;
  QuickPasteSnapshot snapshot_;
  QuickPasteMatches matches_;          // in the snapshot; the last ones published
  std::shared_ptr<FilterRun> filter_;  // under way; null otherwise
  std::function<ClipList()> clipsProvider_;
  std::function<std::vector<Template>()> templatesProvider_;
  std::function<void(const Clip&)> onConfirm_;
  std::function<void(const Template&)> onConfirmTemplate_;
  bool autoDismissOnResign_ = true;
  bool debugCenterOnPrimary_ = false;
  Subscription querySubscription_;
  Subscription screensChange_;
  WeakAnchor anchor_;
};

}  // namespace brimlo
