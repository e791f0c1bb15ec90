#pragma once

#include <QByteArray>
#include <QPointer>
#include <QString>
#include <string>

#include "platform/update_feed.h"

namespace brimlo {

/// Reads feeds over HTTPS: RSS 2.0 channels whose items have a version, and optionally a display
/// version, a description and a link (an "appcast"). Nothing is kept between two readings, and
/// nothing but the request is sent.
class QtUpdateFeed : public UpdateFeed {
 public:
  /// `program`: the path of `brimlo-fetch`, which is run to fetch a feed. `userAgent`: sent to the
  /// server. Needs the running `QCoreApplication`.
  QtUpdateFeed(const std::string& program, const std::string& userAgent);
  ~QtUpdateFeed() override;

  void read(const std::string& address, std::function<void(FeedAnswer)> then) override;

 private:
  class Reading;

  QString program_;
  QString userAgent_;
  QPointer<Reading> reading_;  // deletes itself when it ends
};

/// The path of `brimlo-fetch`: where it is installed, or else beside the running executable.
std::string fetchProgram();

/// The items of `feed` for this platform. Elements are matched by their local names, whatever their
/// namespace.
FeedAnswer parseUpdateFeed(const QByteArray& feed);

}  // namespace brimlo
