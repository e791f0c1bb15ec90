#pragma once

#include <QByteArray>
#include <QPointer>
#include <string>

#include "platform/update_feed.h"

namespace brimlo {

/// Feeds over HTTPS, in the form of an RSS 2.0 channel whose items have a version and, as they
/// like, a title for it, a description and a link (an "appcast"). Nothing is kept between two
/// readings, and nothing is sent but the request.
class QtUpdateFeed : public UpdateFeed {
 public:
  /// `userAgent`: what the program calls itself to the server.
  explicit QtUpdateFeed(const std::string& userAgent);
  ~QtUpdateFeed() override;

  void read(const std::string& address, std::function<void(FeedAnswer)> then) override;

 private:
  class Reading;

  QByteArray userAgent_;
  QPointer<Reading> reading_;  // null once it has ended
};

/// What `feed` offers to this platform. Its elements are known by their local names.
FeedAnswer parseUpdateFeed(const QByteArray& feed);

}  // namespace brimlo
