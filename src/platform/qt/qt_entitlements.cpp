#include "platform/qt/qt_entitlements.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace brimlo {

QtEntitlements::QtEntitlements() {
  QFile file(":/entitlements.json");
  if (file.open(QIODevice::ReadOnly)) values_ = QJsonDocument::fromJson(file.readAll()).object();
}

std::optional<std::vector<std::string>> QtEntitlements::stringList(std::string_view name) const {
  const QJsonValue value =
      values_.value(QLatin1String(name.data(), static_cast<qsizetype>(name.size())));
  if (!value.isArray()) return std::nullopt;
  std::vector<std::string> strings;
  for (const QJsonValue& element : value.toArray()) {
    if (!element.isString()) return std::nullopt;
    strings.push_back(element.toString().toStdString());
  }
  return strings;
}

}  // namespace brimlo
