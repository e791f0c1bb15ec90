// Each path of the history beside the limit that the machine sets it, in one process, over the
// same bytes. Both sides take turns, so that neither meets a quieter machine than the other.

#include <fcntl.h>
#include <simdjson.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <sstream>
#include <thread>

#include "base/text_search.h"
#include "base/uuid.h"
#include "platform/linux/posix_file_system.h"
#include "store/clip_store.h"

namespace brimlo {
namespace {

namespace fs = std::filesystem;

double milliseconds(const std::function<void()>& work) {
  const auto begin = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin)
      .count();
}

double median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
  return values[values.size() / 2];
}

struct Side {
  std::function<void()> work;
  std::function<void()> cleanUp = [] {};  // not timed
};

void report(const char* name, int rounds, double allowed, const Side& ours, const Side& limit) {
  // What a side leaves to the background is over before the other begins.
  const auto settle = [] { std::this_thread::sleep_for(std::chrono::milliseconds(30)); };
  std::vector<double> oursMs, limitMs;
  for (int round = 0; round <= rounds; ++round) {
    limitMs.push_back(milliseconds(limit.work));
    limit.cleanUp();
    settle();
    oursMs.push_back(milliseconds(ours.work));
    ours.cleanUp();
    settle();
    if (round == 0) {  // warms up what both use
      limitMs.clear();
      oursMs.clear();
    }
  }
  const double ratio = median(oursMs) / median(limitMs);
  std::printf("%-34s %10.3f ms %10.3f ms %7.2f  (to reach: %.2f)%s\n", name, median(oursMs),
              median(limitMs), ratio, allowed, ratio <= allowed ? "" : "  MISSED");
  std::fflush(stdout);
}

class StderrLog : public SystemLog {
 public:
  void write(std::string_view message) override {
    std::fprintf(stderr, "%.*s\n", static_cast<int>(message.size()), message.data());
  }
};

/// A text of 20 to 380 characters as people copy them: words, addresses, code, other scripts.
std::string makeText(std::mt19937& random) {
  static constexpr std::string_view kWords[] = {
      "the",     "quick", "clipboard", "history",  "https://example.org/a?b=1",
      "SELECT",  "*",     "FROM",      "users",    "const auto value = lookup(key);",
      "and",     "of",    "meeting",   "tomorrow", "\"quoted\"",
      "return;", "\n",    "\t",        "café",     "日本語"};
  const std::size_t length = 20 + random() % 361;
  std::string text = std::to_string(random()) + " ";
  const bool ascii = random() % 10 != 0;
  while (text.size() < length) {
    text += kWords[random() % (std::size(kWords) - (ascii ? 2 : 0))];
    text += ' ';
  }
  return text;
}

std::vector<ClipPtr> makeHistory(std::size_t count) {
  std::mt19937 random(7);
  std::vector<ClipPtr> clips;
  for (std::size_t i = 0; i < count; ++i) {
    clips.push_back(std::make_shared<Clip>(Clip{
        makeUuid(), makeText(random), 1.7e12 - static_cast<double>(i) * 1000.25, "manual", {}}));
  }
  return clips;
}

std::string contentOf(const std::string& path) {
  std::ostringstream content;
  content << std::ifstream(path, std::ios::binary).rdbuf();
  return content.str();
}

enum class Folder { kLeft, kSynced };

void plainReplace(const std::string& path, const std::string& bytes, Folder folder) {
  const std::string temporary = path + ".new";
  const int fd = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  for (std::size_t at = 0; at < bytes.size();) {
    const ssize_t written = write(fd, bytes.data() + at, bytes.size() - at);
    if (written < 0) std::abort();
    at += static_cast<std::size_t>(written);
  }
  if (fdatasync(fd) != 0) std::abort();
  close(fd);
  fs::rename(temporary, path);
  if (folder == Folder::kLeft) return;
  const int parent = open(fs::path(path).parent_path().c_str(), O_RDONLY | O_DIRECTORY);
  if (fsync(parent) != 0) std::abort();
  close(parent);
}

/// What a program does that trusts the file to be its own: parses, copies each text out, no more.
std::vector<ClipPtr> bareParse(const std::string& path) {
  std::vector<ClipPtr> clips;
  simdjson::padded_string json = simdjson::padded_string::load(path);
  simdjson::ondemand::parser parser;
  simdjson::ondemand::document document = parser.iterate(json);
  for (simdjson::ondemand::object object : document.get_array()) {
    auto clip = std::make_shared<Clip>();
    clip->id = std::string_view(object["id"]);
    clip->text = std::string_view(object["text"]);
    clip->savedAt = object["savedAt"];
    clip->source = std::string_view(object["source"]);
    clips.push_back(std::move(clip));
  }
  return clips;
}

/// `folder`: whether the limit syncs the folder as well. Beside many bytes that is nothing; beside
/// few it is half of the time, and no work of ours.
void benchAdd(const char* name, ClipStore& store, const std::string& path, Folder folder) {
  const std::string bytes = contentOf(store.fileURL());
  double now = 1.8e12;
  report(name, 30, 1.5, {[&] {
           store.add("new text " + std::to_string(now), "manual", now);
           ++now;
         }},
         {[&] { plainReplace(path, bytes, folder); }});
}

void benchLoad(FileSystem& files, SystemLog& log, const std::string& folder) {
  std::optional<ClipStore> loaded;
  std::vector<ClipPtr> parsed;
  report("load at start", 20, 1.25,
         {[&] { loaded.emplace(files, log, folder); }, [&] { loaded.reset(); }},
         {[&] { parsed = bareParse(folder + "/clips.json"); }, [&] { parsed = {}; }});
}

void benchFilter(const ClipStore& store) {
  const ClipList clips = store.clips().value();
  std::size_t ours = 0, limit = 0;
  const CaseInsensitiveSearch search("clb", "en_US");
  report("one filter keystroke, 3 letters", 40, 2, {[&] {
           for (const ClipPtr& clip : clips) ours += search.foundIn(clip->text);
         }},
         {[&] {
           for (const ClipPtr& clip : clips) {
             limit += memmem(clip->text.data(), clip->text.size(), "clb", 3) != nullptr;
           }
         }});
  if (ours != limit) std::abort();
}

void benchHistory(const std::string& folder) {
  StderrLog log;
  PosixFileSystem files;
  ClipStore store(files, log, folder);
  store.replaceAll(makeHistory(100'000));
  std::printf("100,000 clips of 20 to 380 characters, a file of %.1f MB\n",
              static_cast<double>(fs::file_size(store.fileURL())) / 1e6);
  std::printf("%-34s %13s %13s %7s\n", "", "ours", "limit", "ratio");
  benchAdd("add a new text", store, folder + "/plain", Folder::kLeft);
  benchLoad(files, log, folder);
  benchFilter(store);
  store.replaceAll(makeHistory(100));
  benchAdd("add a new text to 100 clips", store, folder + "/plain", Folder::kSynced);
}

}  // namespace
}  // namespace brimlo

/// usage: brimlo_bench FOLDER   (works in a folder of its own below it)
int main(int argc, char** argv) {
  const auto folder = brimlo::fs::absolute(argc > 1 ? argv[1] : ".") / "bench-data";
  brimlo::fs::create_directories(folder);
  brimlo::benchHistory(folder);
  brimlo::fs::remove_all(folder);
}
