#include "platform/qt/qt_bundle.h"

#include <QFile>
#include <QJsonDocument>

namespace brimlo {

QJsonObject bundledSettings(const QString& file) {
  QFile bundled(":/" + file);
  if (!bundled.open(QIODevice::ReadOnly)) return {};
  return QJsonDocument::fromJson(bundled.readAll()).object();
}

}  // namespace brimlo
