#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <random>
#include <sstream>
#include <thread>

#include "platform/freedesktop/xsettings.h"
#include "platform/posix/folder_lock.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/unix_signals.h"
#include "platform/posix/worker_thread.h"
#include "platform/qt/ini_user_defaults.h"
#include "platform/qt/qt_entitlements.h"
#include "platform/qt/qt_run_loop.h"
#include "platform/qt/qt_strings.h"
#include "support/fakes.h"

namespace brimlo {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

std::string contentOf(const fs::path& path) {
  std::ostringstream content;
  content << std::ifstream(path).rdbuf();
  return content.str();
}

unsigned modeOf(const fs::path& path) {
  return static_cast<unsigned>(fs::status(path).permissions());
}

class LinuxTest : public testing::Test {
 protected:
  LinuxTest() {
    std::string name = (fs::temp_directory_path() / "brimlo-test-XXXXXX").string();
    folder = mkdtemp(name.data());
  }
  ~LinuxTest() override { fs::remove_all(folder); }

  std::error_code write(const std::string& content) {
    return files.replace(path(), [&](ByteSink& sink) { sink.append(content); });
  }
  std::string path() const { return folder / "clips.json"; }

  fs::path folder;
  PosixFileSystem files;
};

TEST_F(LinuxTest, FoldersAndFilesAreTheirOwnersAlone) {
  const fs::path deep = folder / "a/b/BrimloMac";
  EXPECT_FALSE(files.createPrivateFolder(deep));
  EXPECT_EQ(modeOf(deep), 0700u);
  fs::permissions(deep, fs::perms(0755));
  EXPECT_FALSE(files.createPrivateFolder(deep));
  EXPECT_EQ(modeOf(deep), 0700u);
  std::ofstream(folder / "file") << "x";
  EXPECT_TRUE(files.createPrivateFolder(folder / "file"));
  EXPECT_TRUE(files.createPrivateFolder(folder / "file/BrimloMac"));

  if (geteuid() == 0) {  // a trap laid in a folder that all can write to
    fs::create_directory(folder / "trap");
    std::ofstream(folder / "trap/clips.json") << "[]";
    ASSERT_EQ(chown((folder / "trap").c_str(), 12345, 12345), 0);
    EXPECT_EQ(files.createPrivateFolder(folder / "trap"), std::errc::permission_denied);
    EXPECT_TRUE(files.read(folder / "trap/clips.json").error);
    EXPECT_TRUE(files.replace(folder / "trap/clips.json", [](ByteSink&) {}));
    EXPECT_EQ(FolderLock(folder / "trap").state(), FolderLock::State::kUnavailable);
  }

  std::ofstream(path()) << "old";
  fs::permissions(path(), fs::perms(0644));
  EXPECT_FALSE(write("new"));
  EXPECT_EQ(modeOf(path()), 0600u);
  EXPECT_EQ(contentOf(path()), "new");
}

TEST_F(LinuxTest, ReadsRegularFilesOnlyAndNeverWaits) {
  EXPECT_EQ(files.read(path()).error, std::errc::no_such_file_or_directory);
  const std::string content = std::string("a\0b", 3) + std::string(5'000'000, 'x');
  EXPECT_FALSE(write(content));
  EXPECT_EQ(files.read(path()).contents->view(), content);
  EXPECT_EQ(files.read(folder).error, std::errc::is_a_directory);
  const std::string pipe = folder / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_TRUE(files.read(pipe).error);
  const std::string huge = folder / "huge";
  std::ofstream(huge) << "x";
  fs::resize_file(huge, std::uintmax_t{5} << 30);
  EXPECT_EQ(files.read(huge).error, std::errc::file_too_large);
}

TEST_F(LinuxTest, TakesOverTheReplacedFileWhileItIsAsItWasWritten) {
  const auto grow = [&](bool expected) {
    return files.replace(path(), [&](ByteSink& sink) {
      sink.append("new ");
      EXPECT_EQ(sink.appendFromReplaced(1), expected);
    });
  };
  std::ofstream(path()) << "not ours";
  EXPECT_FALSE(grow(false));
  EXPECT_FALSE(grow(true));
  EXPECT_EQ(contentOf(path()), "new ew ");
  std::ofstream(path(), std::ios::in) << "N";  // in place, the size as before
  EXPECT_FALSE(grow(false));
  fs::remove(path());
  EXPECT_FALSE(grow(false));
  const std::string large(10'000'000, 'x');
  EXPECT_FALSE(write(large));
  EXPECT_FALSE(grow(true));
  EXPECT_EQ(contentOf(path()), "new " + large.substr(1));
}

TEST_F(LinuxTest, WhatIsSetAsideKeepsANameOfItsOwn) {
  EXPECT_EQ(files.setAside(path()).path, "");
  std::vector<std::string> names;
  for (const std::string content : {"first", "second"}) {
    std::ofstream(path()) << content;
    names.push_back(files.setAside(path()).path);
    EXPECT_EQ(contentOf(names.back()), content);
    EXPECT_EQ(names.back().rfind(path() + ".damaged-", 0), 0u);
  }
  EXPECT_NE(names[0], names[1]);
  fs::create_directory(path());
  EXPECT_TRUE(fs::is_directory(files.setAside(path()).path));
}

TEST_F(LinuxTest, AFullDiskOrAMissingFolderLeavesTheOldFile) {
  EXPECT_FALSE(write("old"));
  rlimit before;
  getrlimit(RLIMIT_FSIZE, &before);
  const auto disposition = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit = before;
  limit.rlim_cur = 100'000;
  setrlimit(RLIMIT_FSIZE, &limit);
  EXPECT_TRUE(write(std::string(200'000, 'x')));
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, disposition);
  EXPECT_EQ(contentOf(path()), "old");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
  fs::remove_all(folder);
  EXPECT_EQ(write("new"), std::errc::no_such_file_or_directory);
}

TEST_F(LinuxTest, AKillAtAnyMomentLeavesTheOldOrTheNewFileWhole) {
  const std::string contents[] = {std::string(3'000'000, 'a'), std::string(2'000'000, 'b')};
  EXPECT_FALSE(write(contents[0]));
  std::mt19937 random(2);
  for (int round = 0; round < 40; ++round) {
    const pid_t child = fork();
    if (child == 0) {
      for (int i = 1;; ++i) std::ignore = write(contents[i % 2]);
    }
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 20'000));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    const std::string found = contentOf(path());
    ASSERT_TRUE(found == contents[0] || found == contents[1]) << found.size();
  }
  EXPECT_FALSE(write("after"));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
}

TEST_F(LinuxTest, AFolderIsLockedOnceUntilItsHolderEndsInAnyWay) {
  const pid_t child = fork();
  if (child == 0) {
    const FolderLock held(folder);
    std::ofstream(folder / "ready") << "x";
    pause();
  }
  while (!fs::exists(folder / "ready")) std::this_thread::yield();
  EXPECT_EQ(FolderLock(folder).state(), FolderLock::State::kHeldByAnother);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  EXPECT_EQ(FolderLock(folder).state(), FolderLock::State::kHeld);
  EXPECT_EQ(FolderLock(folder / "none").state(), FolderLock::State::kUnavailable);
}

TEST_F(LinuxTest, SettingsAreWrittenThroughAndHandWrittenOnesUnderstood) {
  const std::string ini = folder / "defaults.ini";
  test::FakeLog log;
  {
    IniUserDefaults defaults(ini, log);
    EXPECT_EQ(defaults.boolForKey("a"), std::nullopt);
    EXPECT_FALSE(fs::exists(ini));
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
  fs::create_directory(folder / "folder.ini");
  IniUserDefaults(folder / "folder.ini", log).setBool("a", true);
  EXPECT_TRUE(log.has("cannot save the setting a"));
}

TEST(QtEntitlements, ThisBuildMaySync) {
  const QtEntitlements entitlements;
  EXPECT_EQ(entitlements.stringList("com.apple.developer.icloud-services"),
            std::vector<std::string>{"CloudKit"});
  EXPECT_EQ(entitlements.stringList("another"), std::nullopt);
}

TEST(WorkerThread, RunsInOrderAndIsLeftBehindOnlyWhenItHangs) {
  std::string order;
  std::promise<void> hang, hanging;
  {
    WorkerThread worker;
    for (const char* letter : {"a", "b", "c"}) worker.async([&order, letter] { order += letter; });
    worker.async([&] {
      hanging.set_value();
      hang.get_future().wait();
    });
    worker.async([&order] { order += "dropped"; });
    hanging.get_future().wait();
    EXPECT_EQ(worker.finish(50ms), WorkerThread::Ending::kHanging);
    hang.set_value();
    EXPECT_EQ(worker.finish(5s), WorkerThread::Ending::kDone);
  }
  EXPECT_EQ(order, "abc");
}

TEST(QtStrings, FindsATextAndShowsTheKeyOfAMissingOne) {
  const QtStrings strings;
  EXPECT_EQ(strings.text("sync.status.idle"), "Not synced yet");
  EXPECT_EQ(strings.text("no.such.key"), "no.such.key");
  EXPECT_EQ(strings.textWithCount("sync.status.done", 1), "Synced, 1 clip");
  EXPECT_EQ(strings.textWithCount("sync.status.done", 100'000), "Synced, 100,000 clips");
}

TEST(UnixSignals, RunTheirBlocksOnTheRunLoopAndLeaveIgnoredOnesAlone) {
  std::signal(SIGHUP, SIG_IGN);
  std::vector<int> seen;
  QtRunLoop runLoop;
  UnixSignals signals(runLoop);
  {
    std::vector<std::unique_ptr<SignalSource>> sources;
    for (const int signal : {SIGHUP, SIGUSR1, SIGUSR2}) {
      sources.push_back(signals.make(signal, [&, signal] {
        seen.push_back(signal);
        if (signal == SIGUSR1) sources[1].reset();
      }));
      raise(signal);
    }
    EXPECT_TRUE(seen.empty());
    QCoreApplication::processEvents();
  }
  EXPECT_EQ(seen, (std::vector{SIGUSR1, SIGUSR2}));
  struct sigaction now;
  sigaction(SIGUSR2, nullptr, &now);
  EXPECT_EQ(now.sa_handler, SIG_DFL);
  std::signal(SIGHUP, SIG_DFL);
}

TEST(XsettingsText, ReadsBothByteOrdersAndNothingBroken) {
  using namespace std::string_literals;
  const std::string little =
      "\0\0\0\0\7\0\0\0\3\0\0\0"s +                  // little-endian, the serial, three settings
      "\0\0\3\0Dpi\0\0\0\0\0\x60\0\0\0"s +           // a number
      "\2\0\1\0C\0\0\0\0\0\0\0\1\2\3\4\5\6\7\10"s +  // a colour
      "\1\0\4\0Name\0\0\0\0\5\0\0\0Night\0\0\0"s;
  const std::string big = "\1\0\0\0\0\0\0\7\0\0\0\1"s + "\1\0\0\4Name\0\0\0\0\0\0\0\5Night\0\0\0"s;
  EXPECT_EQ(xsettingsText(little, "Name"), "Night");
  EXPECT_EQ(xsettingsText(big, "Name"), "Night");
  EXPECT_EQ(xsettingsText(little, "Dpi"), "");
  EXPECT_EQ(xsettingsText(little, "Nam"), "");
  for (std::size_t size = 0; size + 3 < little.size(); ++size) {
    EXPECT_EQ(xsettingsText(little.substr(0, size), "Name"), "") << size;
  }
  std::string endless = little;
  endless.replace(8, 4, "\xff\xff\xff\xff");
  EXPECT_EQ(xsettingsText(endless, "Other"), "");
}

}  // namespace
}  // namespace brimlo
