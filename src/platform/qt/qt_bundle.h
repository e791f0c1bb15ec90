#pragma once

#include <QJsonObject>
#include <QString>

namespace brimlo {

/// The object in a JSON file that is built into the executable; empty where there is no such file.
QJsonObject bundledSettings(const QString& file);

}  // namespace brimlo
