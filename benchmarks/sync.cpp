// What the sync costs with 100,000 clips on both sides. The server is that of
// tests/support/postgres.py.

#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <deque>
#include <filesystem>
#include <fstream>
#include <unordered_map>

#include "measure.h"
#include "platform/cloud/mirrored_database.h"
#include "platform/cloud/postgres_store.h"
#include "platform/cloud/sqlite_store.h"
#include "support/fake_cloud.h"
#include "support/fakes.h"
#include "sync/sync_scheduler.h"

namespace brimlo {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kClips = 100'000;

void benchMerge() {
  const ClipList overlay(makeHistory(kClips));
  std::vector<ClipPtr> clips;
  for (const ClipPtr& clip : overlay) clips.push_back(std::make_shared<Clip>(*clip));
  std::shuffle(clips.begin(), clips.end(), std::mt19937(5));
  const ClipList base(std::move(clips));
  ClipList merged;
  std::unordered_map<std::string_view, const Clip*> table;
  report("merge of 100,000 with 100,000", 20, 2,
         {[&] { merged = mergeClips(base, overlay, {}); }, [&] { merged = ClipList(); }},
         {[&] {
            table.reserve(base.size() + overlay.size());
            for (const ClipPtr& clip : base) table[clip->id] = clip.get();
            for (const ClipPtr& clip : overlay) table[clip->id] = clip.get();
          },
          [&] { table = {}; }});
}

/// Bytes that went through this process's TCP connections, in both directions.
std::size_t tcpBytes() {
  std::size_t bytes = 0;
  for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
    tcp_info info{};
    socklen_t size = sizeof info;
    const int fd = std::atoi(entry.path().filename().c_str());
    if (getsockopt(fd, IPPROTO_TCP, TCP_INFO, &info, &size) != 0) continue;
    bytes += info.tcpi_bytes_acked + info.tcpi_bytes_received;
  }
  return bytes;
}

/// Bytes that this process read and wrote by system calls on files.
std::size_t fileBytes() {
  std::ifstream io("/proc/self/io");
  std::string key;
  std::size_t value = 0, bytes = 0;
  while (io >> key >> value) {
    if (key == "rchar:" || key == "wchar:") bytes += value;
  }
  return bytes;
}

/// Takes every save without doing it: what a run costs besides.
class NoFiles : public FileSystem {
 public:
  std::optional<std::string> applicationSupportFolder() const override { return std::nullopt; }
  std::string temporaryFolder() const override { return "/nowhere"; }
  std::error_code createPrivateFolder(const std::string&) override { return {}; }
  ReadResult read(const std::string&) const override {
    return {std::nullopt, std::make_error_code(std::errc::no_such_file_or_directory)};
  }
  std::error_code replace(const std::string&, const std::function<void(ByteSink&)>&) override {
    return {};
  }
  AsideResult setAside(const std::string&) override { return {}; }
};

/// A machine with its history, whose main thread is watched.
class Machine {
 public:
  explicit Machine(CloudDatabase& cloud)
      : scheduler_({background_, cloud, entitlements_, log_, loop_, strings_}, store, templates_) {}

  struct Cost {
    double run = 0;   // all of it, milliseconds
    double main = 0;  // the longest stretch on the main thread
  };
  Cost sync() {
    Cost cost;
    const auto onMain = [&](const std::function<void()>& work) {
      const double time = milliseconds(work);
      cost.main = std::max(cost.main, time);
      cost.run += time;
    };
    onMain([&] { scheduler_.syncNow(1e12); });
    while (scheduler_.isSyncing().value()) {
      cost.run += milliseconds([&] { background_.run(); });
      onMain([&] { loop_.drain(); });
    }
    background_.run();
    if (!log_.has("sync ok")) std::printf("  %s\n", log_.lines.back().c_str());
    log_.lines.clear();
    return cost;
  }

 private:
  NoFiles files_;
  test::FakeBackground background_;
  test::FakeEntitlements entitlements_;
  test::FakeLog log_;
  test::FakeRunLoop loop_;
  test::FakeStrings strings_;

 public:
  ClipStore store{files_, log_, "/nowhere"};

 private:
  TemplateStore templates_{files_, log_, "/nowhere"};
  SyncScheduler scheduler_;
};

void print(const char* what, const Machine::Cost& cost, std::size_t bytes) {
  std::printf("  %-32s %10.1f ms, longest on the main thread %6.2f ms, %10zu bytes\n", what,
              cost.run, cost.main, bytes);
  std::fflush(stdout);
}

void benchRuns(const char* name, const std::function<std::unique_ptr<CloudDatabase>()>& connect,
               std::size_t (*moved)()) {
  std::printf("\nsync runs with 100,000 clips on %s (main thread: to stay under 5 ms)\n", name);
  const auto here = connect(), there = connect();
  Machine machine(*here), other(*there);
  machine.store.replaceAll(ClipList(makeHistory(kClips)));
  const auto run = [&](const char* what, Machine& running) {
    const std::size_t before = moved();
    const Machine::Cost cost = running.sync();
    print(what, cost, moved() - before);
  };
  run("the first, everything pushed", machine);
  run("another machine's first", other);
  std::vector<double> times, mains;
  const std::size_t before = moved();
  constexpr int kRounds = 20;
  for (int i = 0; i < kRounds; ++i) {
    const Machine::Cost cost = machine.sync();
    times.push_back(cost.run);
    mains.push_back(cost.main);
  }
  print("nothing new (median)", {median(times), median(mains)}, (moved() - before) / kRounds);
  other.store.add("a new text", "manual", 1.9e12);
  run("one clip pushed", other);
  run("one clip pulled", machine);
}

}  // namespace
}  // namespace brimlo

/// usage: brimlo_sync_bench FOLDER   (works in a folder of its own below it; PGHOST, PGPORT: a
/// server)
int main(int argc, char** argv) {
  using namespace brimlo;
  std::printf("\n");
  printHeading();
  benchMerge();

  test::FakeLog log;
  const auto folder = fs::absolute(argc > 1 ? argv[1] : ".") / "bench-data";
  fs::create_directories(folder);
  const auto nothing = [] { return std::vector<RecordPtr>(); };
  benchRuns(
      "SQLite",
      [&] {
        return std::make_unique<MirroredDatabase>(
            std::make_unique<SqliteStore>(folder / "sync.sqlite", nothing, log), log);
      },
      fileBytes);
  fs::remove_all(folder);
  benchRuns(
      "PostgreSQL, over TCP",
      [&] {
        return std::make_unique<MirroredDatabase>(
            std::make_unique<PostgresStore>(
                std::vector<std::pair<std::string, std::string>>{{"host", "127.0.0.1"},
                                                                 {"port", std::getenv("PGPORT")},
                                                                 {"user", "postgres"},
                                                                 {"dbname", "postgres"},
                                                                 {"password", "postgres"}},
                PostgresPatience{}, log),
            log);
      },
      tcpBytes);
  for (const std::string& line : log.lines) std::printf("%s\n", line.c_str());
}
