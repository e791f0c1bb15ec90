#include <gtest/gtest.h>

#include "store/template_renderer.h"
#include "store/template_store.h"
#include "support/fake_file_system.h"
#include "support/fakes.h"

namespace brimlo {
namespace {

using namespace std::string_literals;

TEST(TemplateStore, LoadsSortedStablyAndSavesWhatTheFileIsNotKnownToHold) {
  test::FakeFileSystem files;
  test::FakeLog log;
  std::string& file = files.files["/data/templates.json"];
  const auto make = [&] { return TemplateStore(files, log, "/data"); };
  const std::string older = R"({"id":"a","title":"t\n","body":"{date}","createdAt":1})";
  const std::string equal = R"({"x":0,"createdAt":1,"body":"","title":"","id":"b"})";
  const std::string newer = R"({"id":"c","title":"","body":"","createdAt":2.5})";
  file = "[" + older + "," + equal + "," + newer + "]";
  TemplateStore store = make();
  std::string order;
  for (const Template& each : store.templates().value()) order += each.id;
  EXPECT_EQ(order, "cab");
  store.save();
  EXPECT_EQ(files.writes, 1) << "another order";
  make().save();
  store.setTemplates({store.templates().value()[1]});
  EXPECT_EQ(files.writes, 1);
  store.save();
  EXPECT_EQ(file, "[" + older + "]");
  files.diskFull = true;
  store.setTemplates({});
  store.save();
  files.diskFull = false;
  store.setTemplates(make().templates().value());
  store.save();
  EXPECT_EQ(files.writes, 3) << "what a failed save left there is not known";
}

// 2024-03-15 13:05:09 UTC, a Friday.
constexpr double kFriday = 1710507909000;

std::string rendered(const std::string& body, const std::string& locale = "en_US.UTF-8",
                     double nowMs = kFriday, const std::string& zone = "UTC",
                     std::optional<std::string> clipboard = std::nullopt) {
  return renderTemplate(body, {nowMs, locale, zone, std::move(clipboard)});
}

TEST(TemplateRenderer, WritesDatesAsTheLocaleDoes) {
  struct Case {
    const char *locale, *date, *weekday, *time;
  };
  const Case cases[] = {
      {"en_US.UTF-8", "Mar 15, 2024", "Fri", "13:05"},
      {"de_DE.UTF-8", "15.03.2024", "Fr.", "13:05"},
      {"ja_JP.UTF-8", "2024/03/15", "金", "13:05"},
      {"ar_EG.UTF-8", "١٥\u200f/٠٣\u200f/٢٠٢٤", "الجمعة", "١٣:٠٥"},
      {"C.UTF-8", "Mar 15, 2024", "Fri", "13:05"},
      {"POSIX", "Mar 15, 2024", "Fri", "13:05"},
      {"", "Mar 15, 2024", "Fri", "13:05"},
      {"no-such_LOCALE", "Mar 15, 2024", "Fri", "13:05"},
  };
  for (const auto& [locale, date, weekday, time] : cases) {
    EXPECT_EQ(rendered("{date}|{weekday}|{time}|{year} {month} {day}", locale),
              date + ("|"s + weekday) + "|" + time + "|2024 3 15");
  }
  EXPECT_EQ(rendered("{datetime}"), "Mar 15, 2024, 1:05\u202fPM");
  EXPECT_EQ(rendered("{datetime}", "de_DE"), "15.03.2024, 13:05");
  EXPECT_EQ(rendered("{year}", "th_TH"), "2567");
}

TEST(TemplateRenderer, CountsDaysByTheCalendarOnBothSidesOfMidnightAndOfAClockChange) {
  struct Case {
    double nowMs;
    const char *zone, *expected;
  };
  const Case cases[] = {
      {1709251199000, "UTC", "28.02.2024 29.02.2024 01.03.2024 23:59"},  // a leap day's end
      {1709251200000, "UTC", "29.02.2024 01.03.2024 02.03.2024 00:00"},
      // Berlin: the night of 2024-03-31 has 23 hours, that of 2024-10-27 has 25.
      {1711837800000, "Europe/Berlin", "29.03.2024 30.03.2024 31.03.2024 23:30"},
      {1711923000000, "Europe/Berlin", "31.03.2024 01.04.2024 02.04.2024 00:10"},
      {1729980600000, "Europe/Berlin", "26.10.2024 27.10.2024 28.10.2024 00:10"},
      {1730069400000, "Europe/Berlin", "26.10.2024 27.10.2024 28.10.2024 23:50"},
  };
  for (const auto& [nowMs, zone, expected] : cases) {
    EXPECT_EQ(rendered("{date-1} {date} {date+1} {time}", "de_DE", nowMs, zone), expected);
  }
}

TEST(TemplateRenderer, ReplacesEveryPlaceholderAndNothingElse) {
  EXPECT_EQ(rendered("{day}{day} {Day} { day } {} {date+2} <{clipboard}> {day"),
            "1515 {Day} { day } {} {date+2} <> {day");
  EXPECT_EQ(rendered("{clipboard}|{clipboard}", "en", kFriday, "UTC", "{time}{clipboard}"),
            "{time}{clipboard}|{time}{clipboard}");
  const std::string twice = rendered("{uuid} {uuid}");
  EXPECT_EQ(twice.size(), 73u);
  EXPECT_EQ(twice.substr(0, 36), twice.substr(37));
  EXPECT_EQ(twice.find_first_not_of("0123456789abcdef- "), std::string::npos);
  EXPECT_NE(rendered("{uuid}"), rendered("{uuid}"));
}

}  // namespace
}  // namespace brimlo
