#pragma once

#include "platform/system_log.h"

namespace brimlo {

/// Each line goes to `syslog(3)` and to standard error.
class SyslogLog : public SystemLog {
 public:
  SyslogLog();
  ~SyslogLog() override;

  void write(std::string_view message) override;
};

}  // namespace brimlo
