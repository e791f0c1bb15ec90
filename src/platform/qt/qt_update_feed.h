#pragma once

#include <QByteArray>
#include <QPointer>
#include <QString>
#include <string>

#include "platform/update_feed.h"

namespace brimlo {

/// Feeds over HTTPS, in the form of an RSS 2.0 channel whose items have a version and, as they
/// like, a title for it, a description and a link (an "appcast"). Nothing is kept between two
/// readings, and nothing is sent but the request.
class QtUpdateFeed : public UpdateFeed {
 public:
  /// `program`: `brimlo-fetch`, which does the fetching in a process of its own. `userAgent`: what
  /// it calls itself to the server. Needs the running `QCoreApplication`.
  QtUpdateFeed(const std::string& program, const std::string& userAgent);
  ~QtUpdateFeed() override;

  void read(const std::string& address, std::function<void(FeedAnswer)> then) override;

 private:
  class Reading;

  QString program_;
  QString userAgent_;
  QPointer<Reading> reading_;  // null once it has ended
};

/// Where `brimlo-fetch` is: where it is installed, or beside the executable that runs.
std::string fetchProgram();

/// What `feed` offers to this platform. Its elements are known by their local names.
FeedAnswer parseUpdateFeed(const QByteArray& feed);

}  // namespace brimlo
