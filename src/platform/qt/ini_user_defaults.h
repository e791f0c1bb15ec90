#pragma once

#include <QSettings>
#include <string>

#include "platform/system_log.h"
#include "platform/user_defaults.h"

namespace brimlo {

/// The settings in section "General" of an INI file. Written Booleans are "true" and "false";
/// "yes", "no", "1" and "0" are read too, in any case, for files edited by hand.
class IniUserDefaults : public UserDefaults {
 public:
  /// `path`: the file, which need not exist; the first write creates it.
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
