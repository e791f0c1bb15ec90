#include "platform/posix/syslog_log.h"

#include <syslog.h>
#include <unistd.h>

#include <string>

namespace brimlo {

SyslogLog::SyslogLog() {
  openlog("brimlo", LOG_PID, LOG_USER);
}

SyslogLog::~SyslogLog() {
  closelog();
}

void SyslogLog::write(std::string_view message) {
  std::string line = "[BrimloMac] ";
  line += message;
  syslog(LOG_INFO, "%s", line.c_str());
  line += '\n';
  // Standard error may be closed; the line is in the system's log all the same.
  [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, line.data(), line.size());
}

}  // namespace brimlo
