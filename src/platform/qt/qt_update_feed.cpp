#include "platform/qt/qt_update_feed.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTimer>
#include <QUrl>
#include <QXmlStreamReader>
#include <chrono>
#include <utility>

#include "fetch/fetch_status.h"

namespace brimlo {
namespace {

constexpr std::chrono::seconds kPatience{20};

bool isHttps(const QString& address) {
  const QUrl url(address, QUrl::StrictMode);
  return url.isValid() && url.scheme() == "https" && !url.host().isEmpty();
}

FeedItem readItem(QXmlStreamReader& xml, bool& meant) {
  FeedItem item;
  while (xml.readNextStartElement()) {
    const auto name = xml.name();
    if (name == u"enclosure") {
      const QXmlStreamAttributes attributes = xml.attributes();
      for (const QXmlStreamAttribute& each : attributes) {
        const std::string value = each.value().toString().trimmed().toStdString();
        if (each.name() == u"version" && item.version.empty()) item.version = value;
        if (each.name() == u"shortVersionString" && item.displayVersion.empty()) {
          item.displayVersion = value;
        }
        if (each.name() == u"os") meant &= value == "linux";
      }
      xml.skipCurrentElement();
      continue;
    }
    const bool known = name == u"version" || name == u"shortVersionString" ||
                       name == u"description" || name == u"link" || name == u"channel";
    if (!known) {
      xml.skipCurrentElement();
      continue;
    }
    // Decided before reading the text, which invalidates `name`.
    std::string* const to = name == u"version"              ? &item.version
                            : name == u"shortVersionString" ? &item.displayVersion
                            : name == u"description"        ? &item.notes
                            : name == u"link"               ? &item.page
                                                            : nullptr;
    const std::string value =
        xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed().toStdString();
    if (to) {
      *to = value;
    } else {
      meant = false;  // a channel for pre-releases
    }
  }
  if (item.displayVersion.empty()) item.displayVersion = item.version;
  if (!isHttps(QString::fromStdString(item.page))) item.page.clear();
  return item;
}

FeedAnswer fault(FeedAnswer::Fault what, const QString& detail) {
  return {.fault = what, .detail = detail.toStdString()};
}

}  // namespace

FeedAnswer parseUpdateFeed(const QByteArray& feed) {
  QXmlStreamReader xml(feed);
  FeedAnswer answer;
  QString channelPage;
  bool isFeed = false;
  if (xml.readNextStartElement() && xml.name() == u"rss") {
    while (xml.readNextStartElement()) {
      if (xml.name() != u"channel") {
        xml.skipCurrentElement();
        continue;
      }
      isFeed = true;
      while (xml.readNextStartElement()) {
        if (xml.name() == u"item") {
          bool meant = true;
          FeedItem item = readItem(xml, meant);
          if (meant && !item.version.empty()) answer.items.push_back(std::move(item));
        } else if (xml.name() == u"link") {
          channelPage = xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
        } else {
          xml.skipCurrentElement();
        }
      }
    }
  }
  if (xml.hasError()) return fault(FeedAnswer::Fault::kMalformed, xml.errorString());
  if (!isFeed) return fault(FeedAnswer::Fault::kMalformed, "it is no feed");
  for (FeedItem& item : answer.items) {
    if (item.page.empty() && isHttps(channelPage)) item.page = channelPage.toStdString();
  }
  return answer;
}

/// One reading. Deletes itself when it has ended.
class QtUpdateFeed::Reading : public QObject {
 public:
  Reading(const QString& program, const QStringList& arguments,
          std::function<void(FeedAnswer)> then)
      : QObject(qApp), then_(std::move(then)) {
    connect(&fetch_, &QProcess::finished, this, [this] { finished(); });
    connect(&fetch_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
      if (error == QProcess::FailedToStart) unreachable(fetch_.errorString());
    });
    QTimer::singleShot(kPatience, this, [this] { unreachable("the server takes too long"); });
    fetch_.start(program, arguments, QIODevice::ReadOnly);
  }

  /// Ends it without an answer.
  void stop() {
    then_ = nullptr;
    fetch_.disconnect(this);
    if (fetch_.state() == QProcess::NotRunning) return deleteLater();
    connect(&fetch_, &QProcess::finished, this, &QObject::deleteLater);
    connect(&fetch_, &QProcess::errorOccurred, this, &QObject::deleteLater);
    fetch_.kill();
  }

 private:
  void finished() {
    const QString said = QString::fromUtf8(fetch_.readAllStandardError()).simplified();
    if (fetch_.exitStatus() != QProcess::NormalExit) return unreachable("it was killed");
    switch (fetch_.exitCode()) {
      case 0:
        return end(parseUpdateFeed(fetch_.readAllStandardOutput()));
      case static_cast<int>(FetchStatus::kInsecure):
        return end(fault(FeedAnswer::Fault::kInsecure, said));
      case static_cast<int>(FetchStatus::kTooLong):
        return end(fault(FeedAnswer::Fault::kMalformed, said));
      default:
        return unreachable(said);
    }
  }

  void unreachable(const QString& why) { end(fault(FeedAnswer::Fault::kUnreachable, why)); }

  void end(FeedAnswer answer) {
    if (!then_) return;
    const auto then = std::exchange(then_, nullptr);
    stop();
    then(std::move(answer));
  }

  std::function<void(FeedAnswer)> then_;  // null once it has been called or is no longer wanted
  QProcess fetch_;
};

QtUpdateFeed::QtUpdateFeed(const std::string& program, const std::string& userAgent)
    : program_(QString::fromStdString(program)), userAgent_(QString::fromStdString(userAgent)) {}

QtUpdateFeed::~QtUpdateFeed() {
  if (reading_) reading_->stop();
}

void QtUpdateFeed::read(const std::string& address, std::function<void(FeedAnswer)> then) {
  if (reading_) reading_->stop();
  reading_ = new Reading(program_, {QString::fromStdString(address), userAgent_}, std::move(then));
}

std::string fetchProgram() {
  const QDir here(QCoreApplication::applicationDirPath());
  const QString installed = here.absoluteFilePath("../libexec/brimlo/brimlo-fetch");
  return (QFile::exists(installed) ? installed : here.absoluteFilePath("brimlo-fetch"))
      .toStdString();
}

}  // namespace brimlo
