#include "store/template_renderer.h"

#include <unicode/calendar.h>
#include <unicode/dtfmtsym.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

#include "base/uuid.h"

namespace brimlo {
namespace {

void replaceAll(std::string& text, std::string_view placeholder, std::string_view value) {
  for (std::size_t at = text.find(placeholder); at != std::string::npos;
       at = text.find(placeholder, at + value.size())) {
    text.replace(at, placeholder.size(), value);
  }
}

/// The locale of a POSIX name; US English for "C" and "POSIX", which stand for no language.
icu::Locale localeFrom(const std::string& name) {
  const std::string language = name.substr(0, name.find_first_of(".@"));
  if (language.empty() || language == "C" || language == "POSIX") return icu::Locale::getUS();
  return icu::Locale::createCanonical(name.c_str());
}

/// One moment as a locale and a time zone write it.
class Moment {
 public:
  explicit Moment(const RenderingContext& context)
      : now_(context.nowMs), locale_(localeFrom(context.locale)) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::TimeZone> zone(
        context.timeZone.empty()
            ? icu::TimeZone::createDefault()
            : icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(context.timeZone)));
    calendar_.reset(icu::Calendar::createInstance(*zone, locale_, status));
    if (U_FAILURE(status)) calendar_.reset();
    date_.reset(icu::DateFormat::createDateInstance(icu::DateFormat::kMedium, locale_));
    dateTime_.reset(icu::DateFormat::createDateTimeInstance(icu::DateFormat::kMedium,
                                                            icu::DateFormat::kShort, locale_));
    status = U_ZERO_ERROR;
    time_ = std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString(u"HH:mm"), locale_, status);
    for (icu::DateFormat* format :
         std::initializer_list<icu::DateFormat*>{date_.get(), dateTime_.get(), time_.get()}) {
      if (format) format->setTimeZone(*zone);
    }
  }

  std::string date() const { return formatted(date_.get(), now_); }
  std::string time() const { return formatted(time_.get(), now_); }
  std::string dateTime() const { return formatted(dateTime_.get(), now_); }

  /// The date `days` calendar days from now.
  std::string dateAfter(std::int32_t days) const {
    UErrorCode status = U_ZERO_ERROR;
    UDate other = now_;
    if (calendar_) {
      calendar_->setTime(now_, status);
      calendar_->add(UCAL_DATE, days, status);
      other = calendar_->getTime(status);
    }
    return formatted(date_.get(), U_SUCCESS(status) ? other : now_);
  }

  std::int32_t component(UCalendarDateFields field) const {
    UErrorCode status = U_ZERO_ERROR;
    if (!calendar_) return 0;
    calendar_->setTime(now_, status);
    return calendar_->get(field, status);
  }

  std::string weekday() const {
    const auto* format = dynamic_cast<const icu::SimpleDateFormat*>(date_.get());
    if (!format) return {};
    std::int32_t count = 0;
    const icu::UnicodeString* names = format->getDateFormatSymbols()->getShortWeekdays(count);
    const std::int32_t day = component(UCAL_DAY_OF_WEEK);  // 1 is Sunday, as in the list
    return day >= 1 && day < count ? utf8(names[day]) : std::string();
  }

 private:
  static std::string utf8(const icu::UnicodeString& text) {
    std::string result;
    return text.toUTF8String(result);
  }
  static std::string formatted(const icu::DateFormat* format, UDate when) {
    icu::UnicodeString text;
    return format ? utf8(format->format(when, text)) : std::string();
  }

  UDate now_;
  icu::Locale locale_;
  std::unique_ptr<icu::Calendar> calendar_;
  std::unique_ptr<icu::DateFormat> date_;
  std::unique_ptr<icu::DateFormat> dateTime_;
  std::unique_ptr<icu::SimpleDateFormat> time_;
};

std::string lowerCase(std::string uuid) {
  std::transform(uuid.begin(), uuid.end(), uuid.begin(),
                 [](char c) { return c >= 'A' && c <= 'F' ? static_cast<char>(c | 0x20) : c; });
  return uuid;
}

}  // namespace

std::string renderTemplate(const std::string& body, const RenderingContext& context) {
  const Moment moment(context);
  // The clipboard comes last, so that placeholders in its text are not filled in.
  const std::pair<std::string_view, std::string> values[] = {
      {"{datetime}", moment.dateTime()},
      {"{date+1}", moment.dateAfter(1)},
      {"{date-1}", moment.dateAfter(-1)},
      {"{date}", moment.date()},
      {"{time}", moment.time()},
      {"{year}", std::to_string(moment.component(UCAL_YEAR))},
      {"{month}", std::to_string(moment.component(UCAL_MONTH) + 1)},
      {"{day}", std::to_string(moment.component(UCAL_DATE))},
      {"{weekday}", moment.weekday()},
      {"{uuid}", lowerCase(makeUuid())},
      {"{clipboard}", context.clipboard.value_or("")},
  };
  std::string text = body;
  for (const auto& [placeholder, value] : values) replaceAll(text, placeholder, value);
  return text;
}

}  // namespace brimlo
