#pragma once

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <limits>
#include <optional>
#include <thread>

namespace brimlo::test {

/// Stands between a client, one at a time, and a server on this machine, on a thread of its own,
/// and fails on demand. Must outlive its clients: the destructor waits for them to disconnect.
class Relay {
 public:
  /// `server`: its TCP port.
  explicit Relay(int server) : server_(loopback(server)) {
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    bind(listener_, reinterpret_cast<sockaddr*>(&address), size);
    listen(listener_, 8);
    getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] {
      for (int client; (client = accept(listener_, nullptr, nullptr)) >= 0;) serve(client);
    });
  }
  ~Relay() {
    shutdown(listener_, SHUT_RDWR);
    thread_.join();
    close(listener_);
  }

  int port() const { return port_; }

  /// While silent, takes bytes and does not pass them on.
  void setSilent(bool silent) { silent_ = silent; }

  /// Cuts the connection, and every later one at once, when this many further bytes have passed, in
  /// either direction; with none, cuts nothing.
  void cutAfter(std::optional<std::size_t> bytes) { left_ = bytes.value_or(kNoCut); }

 private:
  static constexpr std::size_t kNoCut = std::numeric_limits<std::size_t>::max();

  static sockaddr_in loopback(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
  }

  void serve(int client) {
    const std::array pair = {client, socket(AF_INET, SOCK_STREAM, 0)};
    connect(pair[1], reinterpret_cast<const sockaddr*>(&server_), sizeof server_);
    while (left_ != 0 && pass(pair[0], pair[1]) && pass(pair[1], pair[0])) {
      std::array polled = {pollfd{pair[0], POLLIN, 0}, pollfd{pair[1], POLLIN, 0}};
      poll(polled.data(), polled.size(), -1);
    }
    for (const int side : pair) close(side);
  }

  /// Passes on what has come. False when that was the end.
  bool pass(int from, int to) {
    std::array<char, 16384> bytes;
    const ssize_t count =
        recv(from, bytes.data(), std::min(bytes.size(), left_.load()), MSG_DONTWAIT);
    if (count <= 0) return count < 0 && errno == EAGAIN;
    if (silent_) return true;
    if (left_ != kNoCut) left_ -= static_cast<std::size_t>(count);
    const ssize_t sent = send(to, bytes.data(), static_cast<std::size_t>(count), MSG_NOSIGNAL);
    return sent == count && left_ != 0;
  }

  sockaddr_in server_;
  int listener_ = socket(AF_INET, SOCK_STREAM, 0);
  int port_ = 0;
  std::atomic<bool> silent_ = false;
  std::atomic<std::size_t> left_ = kNoCut;  // bytes before the cut
  std::thread thread_;
};

}  // namespace brimlo::test
