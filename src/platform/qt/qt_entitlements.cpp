#include "platform/qt/qt_entitlements.h"

#include <QJsonArray>

#include "platform/qt/qt_bundle.h"

namespace brimlo {

QtEntitlements::QtEntitlements() : values_(bundledSettings("entitlements.json")) {}

std::optional<std::vector<std::string>> QtEntitlements::stringList(std::string_view name) const {
  const QJsonValue value =
      values_.value(QLatin1String(name.data(), static_cast<qsizetype>(name.size())));
  if (!value.isArray()) return std::nullopt;
  std::vector<std::string> strings;
  const QJsonArray array = value.toArray();
  for (const QJsonValueConstRef element : array) {
    if (!element.isString()) return std::nullopt;
    strings.push_back(element.toString().toStdString());
  }
  return strings;
}

}  // namespace brimlo
