#pragma once

#include <QJsonObject>
#include <QString>

namespace brimlo {

/// The settings in a JSON file that is built into the executable; none where it is not there.
QJsonObject bundledSettings(const QString& file);

}  // namespace brimlo
