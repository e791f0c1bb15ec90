#include <gtest/gtest.h>

#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>

#include "platform/qt/qt_update_feed.h"

namespace brimlo {
namespace {

std::string said(const FeedAnswer& answer) {
  if (answer.fault == FeedAnswer::Fault::kMalformed) return "malformed";
  if (answer.fault == FeedAnswer::Fault::kInsecure) return "insecure";
  if (answer.fault == FeedAnswer::Fault::kUnreachable) return "unreachable";
  std::string all;
  for (const FeedItem& item : answer.items) {
    all += item.version + "|" + item.displayVersion + "|" + item.notes + "|" + item.page + "\n";
  }
  return all;
}

std::string channel(const std::string& content) {
  return R"(<?xml version="1.0"?><rss version="2.0" xmlns:a="urn:a"><channel>)" + content +
         "</channel></rss>";
}

TEST(ParseUpdateFeed, TakesWhatMakesSense) {
  const std::pair<std::string, const char*> cases[] = {
      {channel("<title>T</title><item><title>t</title><a:version>12</a:version>"
               "<a:shortVersionString>1.2</a:shortVersionString><link>https://x/y</link>"
               "<description><![CDATA[<b>new</b>]]></description></item>"),
       "12|1.2|<b>new</b>|https://x/y\n"},
      {channel("<link>https://home/</link><item>"
               "<enclosure url='https://f' a:version=' 1.3 ' length='1'/></item>"),
       "1.3|1.3||https://home/\n"},
      {channel("<item><a:version>1</a:version><link>http://plain/</link></item>"), "1|1||\n"},
      {channel("<item><a:version>1</a:version><link>javascript:alert()</link></item>"), "1|1||\n"},
      {channel("<item><title>no version</title></item>"), ""},
      {channel("<item><a:version>2</a:version><a:channel>beta</a:channel></item>"), ""},
      {channel("<item><enclosure a:version='2' a:os='windows'/></item>"), ""},
      {channel(""), ""},
      {"", "malformed"},
      {"<html><body>Log in</body></html>", "malformed"},
      {"<rss version='2.0'></rss>", "malformed"},
      {channel("<item>").substr(0, 90), "malformed"},
      {"<!DOCTYPE r [<!ENTITY a 'aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa'>"
       "<!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'>"
       "<!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;'>]>"
       "<rss><channel><item><version>&c;</version></item></channel></rss>",
       "malformed"},
  };
  for (const auto& [feed, expected] : cases) {
    EXPECT_EQ(said(parseUpdateFeed(QByteArray::fromStdString(feed))), expected) << feed;
  }
}

/// What is read with `script` in place of the program that fetches.
std::string readWith(const std::string& script) {
  const QTemporaryDir folder;
  const QString program = folder.filePath("fetch");
  QFile file(program);
  if (!script.empty() && file.open(QIODevice::WriteOnly)) {
    file.write(QByteArray::fromStdString("#!/bin/sh\n" + script + "\n"));
    file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    file.close();
  }
  QtUpdateFeed feed(program.toStdString(), "agent");
  QEventLoop loop;
  std::string answer;
  feed.read("https://x/", [](const FeedAnswer&) { FAIL() << "another reading replaced it"; });
  feed.read("https://y/", [&](const FeedAnswer& given) {
    answer = said(given);
    loop.quit();
  });
  loop.exec();
  return answer;
}

TEST(UpdateFeed, TellsHowTheFetchingEnded) {
  const std::string feed = channel("<item><version>3</version></item>");
  EXPECT_EQ(readWith("test \"$1 $2\" = 'https://y/ agent' && echo '" + feed + "'"), "3|3||\n");
  EXPECT_EQ(readWith("exit 4"), "insecure");
  EXPECT_EQ(readWith("echo '" + feed + "'; exit 3"), "unreachable");
  EXPECT_EQ(readWith("exit 5"), "malformed");
  EXPECT_EQ(readWith("kill -9 $$"), "unreachable");
  EXPECT_EQ(readWith(""), "unreachable");
}

}  // namespace
}  // namespace brimlo
