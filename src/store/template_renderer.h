#pragma once

#include <optional>
#include <string>

namespace brimlo {

/// What a template's placeholders are filled in from.
struct RenderingContext {
  double nowMs;          ///< milliseconds since 1970
  std::string locale;    ///< a POSIX or ICU locale name, such as "de_DE.UTF-8"
  std::string timeZone;  ///< an Olson name, such as "Europe/Berlin"; empty for the system's
  std::optional<std::string> clipboard;  ///< the pasteboard's text
};

/// `body` with its placeholders filled in: {datetime}, {date+1}, {date-1}, {date}, {time}, {year},
/// {month}, {day}, {weekday}, {uuid} (a fresh one, lower case) and {clipboard}. Dates follow the
/// locale's calendar and medium style, times are HH:mm. Other text in braces stays as it is, and so
/// does everything in the clipboard's text. Never fails; any thread.
std::string renderTemplate(const std::string& body, const RenderingContext& context);

}  // namespace brimlo
