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
#include <iterator>
#include <random>
#include <thread>

#include "platform/posix/folder_lock.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/unix_signals.h"
#include "platform/posix/worker_thread.h"
#include "platform/qt/qt_run_loop.h"

namespace brimlo {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

std::string contentOf(const fs::path& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

class PosixTest : public testing::Test {
 protected:
  PosixTest() {
    std::string name = (fs::temp_directory_path() / "brimlo-test-XXXXXX").string();
    folder = mkdtemp(name.data());
  }
  ~PosixTest() override { fs::remove_all(folder); }

  std::error_code write(const std::string& content) {
    return files.replace(path(), [&](ByteSink& sink) { sink.append(content); });
  }
  std::string path() const { return folder / "clips.json"; }

  fs::path folder;
  PosixFileSystem files;
};

TEST_F(PosixTest, FoldersAndFilesAreTheirOwnersAlone) {
  const fs::path deep = folder / "a/b/BrimloMac";
  for (int round = 0; round < 2; ++round) {
    EXPECT_FALSE(files.createPrivateFolder(deep));
    EXPECT_EQ(fs::status(deep).permissions(), fs::perms(0700));
    fs::permissions(deep, fs::perms(0755));
  }
  std::ofstream(folder / "file") << "x";
  EXPECT_TRUE(files.createPrivateFolder(folder / "file/BrimloMac"));

  if (geteuid() == 0) {  // a folder that another user has put there
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
  EXPECT_EQ(fs::status(path()).permissions(), fs::perms(0600));
  EXPECT_EQ(contentOf(path()), "new");
}

TEST_F(PosixTest, ReadsRegularFilesOnlyAndNeverWaits) {
  const std::string content = std::string("a\0b", 3) + std::string(5'000'000, 'x');
  EXPECT_FALSE(write(content));
  EXPECT_EQ(files.read(path()).contents->view(), content);
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  std::ofstream(folder / "huge") << "x";
  fs::resize_file(folder / "huge", std::uintmax_t{5} << 30);
  const std::pair<const char*, std::errc> cases[] = {{"none", std::errc::no_such_file_or_directory},
                                                     {"", std::errc::is_a_directory},
                                                     {"pipe", std::errc::invalid_argument},
                                                     {"huge", std::errc::file_too_large}};
  for (const auto& [name, error] : cases) EXPECT_EQ(files.read(folder / name).error, error) << name;
}

TEST_F(PosixTest, TakesOverTheReplacedFileWhileItIsAsItWasWritten) {
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

TEST_F(PosixTest, WhatIsSetAsideKeepsANameOfItsOwn) {
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

TEST_F(PosixTest, AFullDiskOrAMissingFolderLeavesTheOldFile) {
  EXPECT_FALSE(write("old"));
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before;
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small{100'000, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  EXPECT_TRUE(write(std::string(200'000, 'x')));
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(contentOf(path()), "old");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
  fs::remove_all(folder);
  EXPECT_EQ(write("new"), std::errc::no_such_file_or_directory);
}

TEST_F(PosixTest, AKillAtAnyMomentLeavesTheOldOrTheNewFileWhole) {
  const std::string contents[] = {std::string(3'000'000, 'a'), std::string(2'000'000, 'b')};
  EXPECT_FALSE(write(contents[0]));
  std::mt19937 random(2);
  for (int round = 0; round < 25; ++round) {
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

TEST_F(PosixTest, AFolderIsLockedOnceUntilItsHolderEndsInAnyWay) {
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

TEST(WorkerThread, RunsInOrderAndIsLeftBehindOnlyWhenItHangs) {
  std::string order;
  std::promise<void> hang, hanging;
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
  EXPECT_EQ(order, "abc");
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

}  // namespace
}  // namespace brimlo
