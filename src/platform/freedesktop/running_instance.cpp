#include "platform/freedesktop/running_instance.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <utility>

#include "platform/freedesktop/activation_token.h"

namespace brimlo {
namespace {

constexpr char kDone = 0;

std::optional<sockaddr_un> addressOf(const std::string& path) {
  sockaddr_un address{};
  if (path.size() >= sizeof address.sun_path) return std::nullopt;
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, path.data(), path.size());
  return address;
}

const sockaddr* plain(const sockaddr_un& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

FileDescriptor makeSocket() {
  return FileDescriptor(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

/// FNV-1a, which is the same in every process and build.
std::string nameFor(const std::string& folder) {
  std::uint64_t hash = 14695981039346656037U;
  for (const char byte : folder) {
    hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211U;
  }
  return std::to_string(hash);
}

}  // namespace

std::string instanceSocketPath(const std::string& dataFolder) {
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  const bool usable = runtime && runtime[0] == '/' && access(runtime, W_OK | X_OK) == 0;
  if (!usable) return dataFolder + "/brimlo.socket";
  // The same name for the same folder, however its path is written.
  std::error_code error;
  const auto canonical = std::filesystem::canonical(dataFolder, error);
  return std::string(runtime) + "/brimlo-" + nameFor(error ? dataFolder : canonical.string()) +
         ".socket";
}

bool askRunningInstance(const std::string& path, const InstanceRequest& request,
                        std::chrono::milliseconds patience) {
  const auto address = addressOf(path);
  if (!address) return false;
  const FileDescriptor asking = makeSocket();
  // The kernel picks an address for the answer.
  sockaddr_un own{};
  own.sun_family = AF_UNIX;
  if (bind(asking.get(), plain(own), sizeof own.sun_family) != 0) return false;
  // The action's number, then the token.
  const std::string datagram = static_cast<char>(request.action) + request.activationToken;
  if (sendto(asking.get(), datagram.data(), datagram.size(), 0, plain(*address), sizeof *address) <
      0) {
    return false;
  }
  pollfd waiting{asking.get(), POLLIN, 0};
  if (poll(&waiting, 1, static_cast<int>(patience.count())) != 1) return false;
  char answer = 1;
  return recv(asking.get(), &answer, 1, 0) == 1 && answer == kDone;
}

RunningInstance::RunningInstance(std::string path, DescriptorWatches& watches, SystemLog& log,
                                 std::function<void(const InstanceRequest&)> onRequest)
    : path_(std::move(path)), onRequest_(std::move(onRequest)) {
  const auto address = addressOf(path_);
  FileDescriptor made = makeSocket();
  unlink(path_.c_str());
  if (!address || bind(made.get(), plain(*address), sizeof *address) != 0) {
    log.write("a second start cannot reach this one through " + path_ + ": " +
              (address ? std::strerror(errno) : "the path is too long"));
    return;
  }
  socket_ = std::move(made);
  readable_ = watches.whenReadable(socket_.get(), [this] { serve(); });
}

RunningInstance::~RunningInstance() {
  if (socket_) unlink(path_.c_str());
}

void RunningInstance::serve() {
  std::array<char, 1 + kLongestActivationToken> datagram;
  sockaddr_un from{};
  socklen_t length = sizeof from;
  const ssize_t size = recvfrom(socket_.get(), datagram.data(), datagram.size(), MSG_TRUNC,
                                reinterpret_cast<sockaddr*>(&from), &length);
  if (size < 1 || static_cast<std::size_t>(size) > datagram.size()) return;
  const InstanceRequest request{
      .action = static_cast<InstanceRequest::Action>(datagram[0]),
      .activationToken = std::string(datagram.data() + 1, static_cast<std::size_t>(size) - 1)};
  if (request.action != InstanceRequest::Action::kOpenMenu &&
      request.action != InstanceRequest::Action::kQuickPaste) {
    return;
  }
  sendto(socket_.get(), &kDone, 1, 0, plain(from), length);
  onRequest_(request);
}

}  // namespace brimlo
