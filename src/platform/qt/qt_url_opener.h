#pragma once

#include <QDesktopServices>
#include <QUrl>

#include "platform/url_opener.h"

namespace brimlo {

class QtUrlOpener : public UrlOpener {
 public:
  void open(const std::string& address) override {
    QDesktopServices::openUrl(QUrl(QString::fromStdString(address), QUrl::StrictMode));
  }
};

}  // namespace brimlo
