#include "support/relay.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <list>
#include <vector>

namespace brimlo::test {
namespace {

sockaddr_in loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

struct Pair {
  int client, server;
};

}  // namespace

Relay::Relay(int server) : server_(server), listener_(socket(AF_INET, SOCK_STREAM, 0)) {
  sockaddr_in address = loopback(0);
  socklen_t size = sizeof address;
  bind(listener_, reinterpret_cast<sockaddr*>(&address), size);
  listen(listener_, 8);
  getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { run(); });
}

Relay::~Relay() {
  ending_ = true;
  thread_.join();
  close(listener_);
}

void Relay::cutAfter(std::optional<std::size_t> bytes) {
  left_ = bytes ? static_cast<long>(*bytes) : -1;
  waitForTurn();
}

void Relay::waitForTurn() {
  const unsigned now = turns_;
  while (turns_ - now < 2) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void Relay::run() {
  std::list<Pair> pairs;
  const auto closePair = [](const Pair& pair) {
    close(pair.client);
    close(pair.server);
  };
  for (; !ending_; ++turns_) {
    if (cutting_.exchange(false) || left_ == 0) {
      for (const Pair& pair : pairs) closePair(pair);
      pairs.clear();
    }
    std::vector<pollfd> polled{{listener_, POLLIN, 0}};
    for (const Pair& pair : pairs) {
      polled.push_back({pair.client, POLLIN, 0});
      polled.push_back({pair.server, POLLIN, 0});
    }
    poll(polled.data(), polled.size(), 5);
    std::size_t at = 1;
    for (auto pair = pairs.begin(); pair != pairs.end(); at += 2) {
      bool over = false;
      for (const std::size_t side : {at, at + 1}) {
        if (polled[side].revents == 0) continue;
        std::array<char, 16384> bytes;
        std::size_t most = bytes.size();
        if (left_ >= 0) most = std::min<std::size_t>(most, static_cast<std::size_t>(left_.load()));
        if (most == 0) continue;
        const ssize_t count = read(polled[side].fd, bytes.data(), most);
        over = over || count <= 0;
        if (count <= 0 || behavior_ == Behavior::kSilent) continue;
        if (left_ >= 0) left_ -= count;
        const int to = side == at ? pair->server : pair->client;
        for (ssize_t sent = 0; sent < count;) {
          const ssize_t now =
              send(to, bytes.data() + sent, static_cast<std::size_t>(count - sent), MSG_NOSIGNAL);
          if (now <= 0) {
            over = true;
            break;
          }
          sent += now;
        }
      }
      if (over) closePair(*pair);
      pair = over ? pairs.erase(pair) : std::next(pair);
    }
    if (polled[0].revents != 0) {
      const Pair pair{accept(listener_, nullptr, nullptr), socket(AF_INET, SOCK_STREAM, 0)};
      const sockaddr_in address = loopback(server_);
      connect(pair.server, reinterpret_cast<const sockaddr*>(&address), sizeof address);
      pairs.push_back(pair);
    }
  }
  for (const Pair& pair : pairs) closePair(pair);
}

}  // namespace brimlo::test
