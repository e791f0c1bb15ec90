#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/weak_anchor.h"
#include "platform/clock.h"
#include "platform/localized_strings.h"
#include "platform/system_log.h"
#include "platform/timers.h"
#include "platform/titled_window.h"
#include "platform/update_feed.h"
#include "platform/url_opener.h"
#include "platform/user_defaults.h"
#include "updates/updates_view_state.h"

namespace brimlo {

/// What this build was made to do about updates.
struct UpdateSettings {
  std::string feed;  ///< the feed's https address; empty where updates come another way
  bool checksAutomatically = false;
  double intervalSeconds = 86400;  ///< between two automatic checks
};

/// Tells the person about newer versions: when asked, and, where the build says so, by itself. It
/// opens the page where one is downloaded, and installs nothing. Main thread.
class UpdaterModel {
 public:
  using WindowFactory = std::function<std::unique_ptr<TitledWindow>(UpdatesViewState&)>;

  /// All of it outlives the model.
  struct Services {
    const Clock& clock;
    UserDefaults& defaults;
    UpdateFeed& feed;
    SystemLog& log;
    const LocalizedStrings& strings;
    Timers& timers;
    UrlOpener& urls;
    WindowFactory makeWindow;
    UpdateSettings settings;
    std::string version;  ///< of the running program
  };

  /// Starts the automatic checks. The first one is an hour away.
  explicit UpdaterModel(Services services);

  UpdatesViewState& state() { return state_; }

  /// Shows the window and asks the feed.
  void checkForUpdates();

 private:
  enum class Asked { kByThePerson, kByTheClock };

  void checkIfDue();
  void readFeed(Asked asked);
  void take(const FeedAnswer& answer);
  void offer(const FeedItem& item);
  void present(UpdatesContent content);
  void close();
  std::string text(const char* key) const { return services_.strings.text(key); }

  Services services_;
  UpdatesViewState state_;
  std::unique_ptr<TitledWindow> window_;
  bool open_ = false;
  std::unique_ptr<RepeatingTimer> timer_;
  std::optional<Asked> reading_;  // none: no reading is under way
  std::optional<FeedItem> offered_;
  WeakAnchor anchor_;
};

}  // namespace brimlo
