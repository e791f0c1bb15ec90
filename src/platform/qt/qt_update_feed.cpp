#include "platform/qt/qt_update_feed.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>
#include <QXmlStreamReader>
#include <chrono>
#include <utility>

namespace brimlo {
namespace {

constexpr qint64 kMostBytes = 1 << 20;
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
    // Before the name goes with the element.
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
      meant = false;  // for those who test what is not out yet
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

/// One reading, which deletes itself.
class QtUpdateFeed::Reading : public QObject {
 public:
  Reading(const QString& address, const QByteArray& userAgent, std::function<void(FeedAnswer)> then)
      : QObject(qApp), then_(std::move(then)) {
    if (!isHttps(address)) {
      QTimer::singleShot(0, this, [this] {
        end(fault(FeedAnswer::Fault::kInsecure, "its address is none of https"));
      });
      return;
    }
    QNetworkRequest request{QUrl(address)};
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setRawHeader("User-Agent", userAgent);
    reply_ = network_.get(request);
    connect(reply_, &QNetworkReply::readyRead, this, [this] {
      if (reply_->bytesAvailable() <= kMostBytes) return;
      end(fault(FeedAnswer::Fault::kMalformed, "it is longer than a feed can be"));
    });
    connect(reply_, &QNetworkReply::finished, this, [this] { finished(); });
    QTimer::singleShot(kPatience, this, [this] {
      end(fault(FeedAnswer::Fault::kUnreachable, "the server takes too long"));
    });
  }

  /// Leaves it be; nobody is told.
  void stop() {
    then_ = nullptr;
    if (reply_) {
      reply_->disconnect(this);
      reply_->abort();
    }
    deleteLater();
  }

 private:
  void finished() {
    const auto error = reply_->error();
    if (error == QNetworkReply::InsecureRedirectError) {
      return end(fault(FeedAnswer::Fault::kInsecure, reply_->errorString()));
    }
    if (error != QNetworkReply::NoError) {
      return end(fault(FeedAnswer::Fault::kUnreachable, reply_->errorString()));
    }
    end(parseUpdateFeed(reply_->readAll()));
  }

  void end(FeedAnswer answer) {
    if (!then_) return;
    const auto then = std::exchange(then_, nullptr);
    stop();
    then(std::move(answer));
  }

  std::function<void(FeedAnswer)> then_;  // null once it was told, or need not be
  QNetworkAccessManager network_;
  QNetworkReply* reply_ = nullptr;
};

QtUpdateFeed::QtUpdateFeed(const std::string& userAgent)
    : userAgent_(QByteArray::fromStdString(userAgent)) {}

QtUpdateFeed::~QtUpdateFeed() {
  if (reading_) reading_->stop();
}

void QtUpdateFeed::read(const std::string& address, std::function<void(FeedAnswer)> then) {
  if (reading_) reading_->stop();
  reading_ = new Reading(QString::fromStdString(address), userAgent_, std::move(then));
}

}  // namespace brimlo
