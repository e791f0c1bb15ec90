#include "platform/linux/unix_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace brimlo {
namespace {

// A signal handler has nothing but globals to reach.
volatile std::sig_atomic_t wakeDescriptor = -1;

void onSignal(int signal) {
  const int savedError = errno;
  const auto number = static_cast<unsigned char>(signal);
  [[maybe_unused]] const ssize_t written = write(wakeDescriptor, &number, 1);
  errno = savedError;
}

}  // namespace

UnixSignals::UnixSignals() {
  std::array<int, 2> ends{-1, -1};
  if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  reader_ = FileDescriptor(ends[0]);
  writer_ = FileDescriptor(ends[1]);
  wakeDescriptor = writer_.get();
  readable_ = std::make_unique<QSocketNotifier>(reader_.get(), QSocketNotifier::Read);
  QObject::connect(readable_.get(), &QSocketNotifier::activated, readable_.get(),
                   [this] { drain(); });
}

UnixSignals::~UnixSignals() {
  for (const Handler& handler : handlers_) std::signal(handler.signal, SIG_DFL);
  wakeDescriptor = -1;
}

void UnixSignals::handle(int signal, std::function<void()> block) {
  struct sigaction current;
  if (sigaction(signal, nullptr, &current) == 0 && current.sa_handler == SIG_IGN) return;
  handlers_.push_back({signal, std::move(block)});
  struct sigaction action {};
  action.sa_handler = onSignal;
  action.sa_flags = SA_RESTART;
  sigaction(signal, &action, nullptr);
}

void UnixSignals::drain() {
  std::array<unsigned char, 64> numbers;
  const ssize_t count = read(reader_.get(), numbers.data(), numbers.size());
  for (ssize_t i = 0; i < count; ++i) {
    for (std::size_t h = 0; h < handlers_.size(); ++h) {
      if (handlers_[h].signal == numbers[static_cast<std::size_t>(i)]) handlers_[h].block();
    }
  }
}

}  // namespace brimlo
