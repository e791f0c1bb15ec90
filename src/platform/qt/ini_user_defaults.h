#pragma once

#include <QSettings>
#include <string>

#include "platform/system_log.h"
#include "platform/user_defaults.h"

namespace brimlo {

/// The settings in an INI file, section "General": "true" and "false", and, for files written by
/// hand, "yes", "no", "1" and "0", in any case.
class IniUserDefaults : public UserDefaults {
 public:
  /// `path`: the file, which need not exist; it is first created by a write.
  IniUserDefaults(const std::string& path, SystemLog& log);

  std::optional<bool> boolForKey(std::string_view key) const override;
  std::optional<std::string> stringForKey(std::string_view key) const override;
  void setBool(std::string_view key, bool value) override;
  void setString(std::string_view key, const std::string& value) override;

 private:
  void store(std::string_view key, const QVariant& value);

  SystemLog& log_;
  QSettings settings_;
};

}  // namespace brimlo
