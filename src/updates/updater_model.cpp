#include "updates/updater_model.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "base/placeholders.h"
#include "updates/version.h"

namespace brimlo {
namespace {

constexpr const char* kLastCheckKey = "updatesLastCheck";  // milliseconds since 1970
constexpr const char* kSkippedKey = "updatesSkippedVersion";
constexpr std::chrono::hours kBetweenLooks{1};

const char* messageOf(FeedAnswer::Fault fault) {
  switch (fault) {
    case FeedAnswer::Fault::kInsecure:
      return "updates.insecure";
    case FeedAnswer::Fault::kMalformed:
      return "updates.malformed";
    case FeedAnswer::Fault::kUnreachable:
    case FeedAnswer::Fault::kNone:
      break;
  }
  return "updates.unreachable";
}

}  // namespace

UpdaterModel::UpdaterModel(Services services) : services_(std::move(services)) {
  state_.onClose = anchor_.guard([this] { close(); });
  state_.onSkip = anchor_.guard([this] {
    if (offered_) services_.defaults.setString(kSkippedKey, offered_->version);
    close();
  });
  state_.onOpenPage = anchor_.guard([this] {
    if (offered_ && !offered_->page.empty()) services_.urls.open(offered_->page);
    close();
  });
  if (services_.settings.feed.empty() || !services_.settings.checksAutomatically) return;
  timer_ =
      services_.timers.scheduleRepeating(kBetweenLooks, anchor_.guard([this] { checkIfDue(); }));
}

void UpdaterModel::checkForUpdates() {
  if (services_.settings.feed.empty()) return present({.message = text("updates.packages")});
  present({.message = text("updates.checking"), .busy = true});
  readFeed(Asked::kByThePerson);
}

void UpdaterModel::checkIfDue() {
  const std::string stored = services_.defaults.stringForKey(kLastCheckKey).value_or("0");
  double last = 0;
  std::from_chars(stored.data(), stored.data() + stored.size(), last);
  const double since = services_.clock.nowMs() - last;
  // A last check in the future means that the clock was set back: it does not count.
  if (since >= 0 && since < services_.settings.intervalSeconds * 1000) return;
  if (!reading_) readFeed(Asked::kByTheClock);
}

void UpdaterModel::readFeed(Asked asked) {
  reading_ = asked;
  const auto now = static_cast<std::int64_t>(services_.clock.nowMs());
  services_.defaults.setString(kLastCheckKey, std::to_string(now));
  services_.feed.read(services_.settings.feed,
                      anchor_.guard([this](const FeedAnswer& answer) { take(answer); }));
}

void UpdaterModel::take(const FeedAnswer& answer) {
  const bool asked = std::exchange(reading_, std::nullopt) == Asked::kByThePerson;
  if (answer.fault != FeedAnswer::Fault::kNone) {
    services_.log.write("cannot read the update feed: " + answer.detail);
    if (asked) present({.message = text(messageOf(answer.fault))});
    return;
  }
  const auto newest = std::max_element(answer.items.begin(), answer.items.end(),
                                       [](const FeedItem& a, const FeedItem& b) {
                                         return compareVersions(a.version, b.version) < 0;
                                       });
  const bool newer =
      newest != answer.items.end() && compareVersions(newest->version, services_.version) > 0;
  if (!newer) {
    if (asked) present({.message = filledIn(text("updates.latest"), {services_.version})});
    return;
  }
  if (!asked && services_.defaults.stringForKey(kSkippedKey) == newest->version) return;
  offer(*newest);
}

void UpdaterModel::offer(const FeedItem& item) {
  offered_ = item;
  services_.log.write("version " + item.displayVersion + " is out");
  present({.message = filledIn(text("updates.available"), {item.displayVersion, services_.version}),
           .notes = item.notes,
           .offersSkip = true,
           .offersPage = !item.page.empty()});
}

void UpdaterModel::present(UpdatesContent content) {
  if (!content.offersSkip) offered_.reset();
  state_.content.set(std::move(content));
  if (!window_) {
    window_ = services_.makeWindow(state_);
    window_->setOnWillClose(anchor_.guard([this] { close(); }));
  }
  if (!std::exchange(open_, true)) window_->center();
  window_->makeKeyAndOrderFront();
}

void UpdaterModel::close() {
  // An answer that comes later is treated like that of an automatic check.
  if (reading_ == Asked::kByThePerson) reading_ = Asked::kByTheClock;
  open_ = false;
  if (window_) window_->orderOut();
}

}  // namespace brimlo
