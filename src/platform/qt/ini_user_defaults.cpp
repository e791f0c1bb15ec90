#include "platform/qt/ini_user_defaults.h"

#include <QFile>
#include <QString>
#include <QStringList>

namespace brimlo {
namespace {

QString toQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

IniUserDefaults::IniUserDefaults(const std::string& path, SystemLog& log)
    : log_(log), settings_(QFile::decodeName(path.c_str()), QSettings::IniFormat) {
  if (settings_.status() != QSettings::NoError) {
    log_.write("cannot read all of the settings in " + path);
  }
}

std::optional<bool> IniUserDefaults::boolForKey(std::string_view key) const {
  const QString value = settings_.value(toQt(key)).toString().toLower();
  if (QStringList{"true", "yes", "1"}.contains(value)) return true;
  if (QStringList{"false", "no", "0"}.contains(value)) return false;
  if (!value.isEmpty()) {
    log_.write("the setting " + std::string(key) + " is neither true nor false, and is ignored");
  }
  return std::nullopt;
}

std::optional<std::string> IniUserDefaults::stringForKey(std::string_view key) const {
  const QVariant value = settings_.value(toQt(key));
  return value.isValid() ? std::optional(value.toString().toStdString()) : std::nullopt;
}

void IniUserDefaults::setBool(std::string_view key, bool value) {
  store(key, value);
}

void IniUserDefaults::setString(std::string_view key, const std::string& value) {
  store(key, QString::fromStdString(value));
}

void IniUserDefaults::store(std::string_view key, const QVariant& value) {
  settings_.setValue(toQt(key), value);
  settings_.sync();
  if (settings_.status() != QSettings::NoError) {
    log_.write("cannot save the setting " + std::string(key));
  }
}

}  // namespace brimlo
