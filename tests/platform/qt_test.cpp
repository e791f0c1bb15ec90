#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/qt/ini_user_defaults.h"
#include "platform/qt/qt_strings.h"
#include "support/fakes.h"

namespace brimlo {
namespace {

std::string contentOf(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(IniUserDefaults, WritesThroughAndReadsWhatIsEditedByHand) {
  const QTemporaryDir temporary;
  const std::filesystem::path folder = temporary.path().toStdString();
  const std::string ini = folder / "defaults.ini";
  test::FakeLog log;
  {
    IniUserDefaults defaults(ini, log);
    EXPECT_EQ(defaults.boolForKey("a"), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(ini));
    defaults.setBool("a", false);
    defaults.setBool("b", true);
    EXPECT_EQ(contentOf(ini), "[General]\na=false\nb=true\n");
  }
  std::ofstream(ini) << "[General]\na=YES\nb=0\nc=perhaps\nother=kept\n[Else]\na=false\n";
  IniUserDefaults defaults(ini, log);
  EXPECT_EQ(defaults.boolForKey("a"), true);
  EXPECT_EQ(defaults.boolForKey("b"), false);
  EXPECT_EQ(defaults.boolForKey("c"), std::nullopt);
  EXPECT_TRUE(log.has("the setting c is neither"));
  defaults.setBool("a", true);
  EXPECT_NE(contentOf(ini).find("other=kept"), std::string::npos);
  std::filesystem::create_directory(folder / "folder.ini");
  IniUserDefaults(folder / "folder.ini", log).setBool("a", true);
  EXPECT_TRUE(log.has("cannot save the setting a"));
}

TEST(QtStrings, FindsATextAndShowsTheKeyOfAMissingOne) {
  const QtStrings strings;
  EXPECT_EQ(strings.text("sync.status.idle"), "Not synced yet");
  EXPECT_EQ(strings.text("no.such.key"), "no.such.key");
  EXPECT_EQ(strings.textWithCount("sync.status.done", 1), "Synced, 1 clip");
  EXPECT_EQ(strings.textWithCount("sync.status.done", 100'000), "Synced, 100,000 clips");
}

}  // namespace
}  // namespace brimlo
