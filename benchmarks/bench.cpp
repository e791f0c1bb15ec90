// Each path of the history beside the limit that the machine sets it, in one process, over the
// same bytes. Both sides take turns, so that neither meets a quieter machine than the other.

#include <fcntl.h>
#include <simdjson.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

#include "measure.h"
#include "platform/posix/posix_file_system.h"
#include "store/clip_store.h"

namespace brimlo {
namespace {

namespace fs = std::filesystem;

class StderrLog : public SystemLog {
 public:
  void write(std::string_view message) override {
    std::fprintf(stderr, "%.*s\n", static_cast<int>(message.size()), message.data());
  }
};

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

void benchHistory(const std::string& folder) {
  StderrLog log;
  PosixFileSystem files;
  ClipStore store(files, log, folder);
  store.replaceAll(ClipList(makeHistory(100'000)));
  std::printf("100,000 clips of 20 to 380 characters, a file of %.1f MB\n",
              static_cast<double>(fs::file_size(store.fileURL())) / 1e6);
  printHeading();
  benchAdd("add a new text", store, folder + "/plain", Folder::kLeft);
  benchLoad(files, log, folder);
  store.replaceAll(ClipList(makeHistory(100)));
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
