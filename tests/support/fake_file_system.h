#pragma once

#include <cerrno>
#include <cstring>
#include <map>
#include <string>
#include <utility>

#include "platform/file_system.h"
#include "support/journal.h"

namespace brimlo::test {

/// Files in memory, in one flat folder, on a disk that fails when told.
class FakeFileSystem : public FileSystem, public Journaling {
 public:
  std::optional<std::string> applicationSupportFolder() const override { return "/support"; }
  std::string temporaryFolder() const override { return "/temporary"; }
  std::error_code createPrivateFolder(const std::string&) override { return {}; }

  ReadResult read(const std::string& path) const override {
    note("read " + path.substr(path.rfind('/') + 1));
    const auto fault = unreadable.find(path);
    if (fault != unreadable.end()) return {std::nullopt, std::make_error_code(fault->second)};
    if (!files.contains(path))
      return {std::nullopt, std::error_code(ENOENT, std::generic_category())};
    const std::string& bytes = files.at(path);
    FileContents contents;
    contents.size = bytes.size();
    const std::size_t room = contents.size + FileContents::kPadding;
    contents.bytes.reset(static_cast<char*>(std::calloc(room, 1)));
    std::memcpy(contents.bytes.get(), bytes.data(), contents.size);
    return {std::move(contents), {}};
  }

  std::error_code replace(const std::string& path,
                          const std::function<void(ByteSink&)>& produce) override {
    const auto old = files.find(path), before = written_.find(path);
    const bool untouched =
        old != files.end() && before != written_.end() && old->second == before->second;
    Sink sink;
    if (untouched) sink.old = &old->second;
    produce(sink);
    if (diskFull) return std::make_error_code(std::errc::no_space_on_device);
    copiedOver = sink.copiedOver;
    files[path] = written_[path] = std::move(sink.bytes);
    unreadable.erase(path);
    ++writes;
    return {};
  }

  AsideResult setAside(const std::string& path) override {
    if (!files.contains(path) && !unreadable.contains(path)) return {};
    files[path + ".damaged"] = files[path];
    files.erase(path);
    unreadable.erase(path);
    return {path + ".damaged", {}};
  }

  std::map<std::string, std::string> files;
  std::map<std::string, std::errc> unreadable;
  bool diskFull = false;
  int writes = 0;
  bool copiedOver = false;  ///< whether the last write took over what was there

 private:
  struct Sink : ByteSink {
    void append(std::string_view more) override { bytes += more; }
    bool appendFromReplaced(std::size_t offset) override {
      if (old) bytes += old->substr(offset);
      return copiedOver = old != nullptr;
    }
    const std::string* old = nullptr;  // what stands there, where it was written by `replace`
    std::string bytes;
    bool copiedOver = false;
  };
  std::map<std::string, std::string> written_;
};

}  // namespace brimlo::test
