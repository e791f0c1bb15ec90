#include "platform/posix/unix_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace brimlo {
namespace {

// Global, because a signal handler can reach nothing else.
volatile std::sig_atomic_t wakeDescriptor = -1;

void onSignal(int signal) {
  const int savedError = errno;
  const auto number = static_cast<unsigned char>(signal);
  [[maybe_unused]] const ssize_t written = write(wakeDescriptor, &number, 1);
  errno = savedError;
}

}  // namespace

UnixSignals::UnixSignals(DescriptorWatches& watches) {
  std::array<int, 2> ends{-1, -1};
  if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  reader_ = FileDescriptor(ends[0]);
  writer_ = FileDescriptor(ends[1]);
  wakeDescriptor = writer_.get();
  readable_ = watches.whenReadable(reader_.get(), [this] { drain(); });
}

UnixSignals::~UnixSignals() {
  wakeDescriptor = -1;
}

/// Restores the signal's default action when it is destroyed.
class UnixSignals::Source : public SignalSource {
 public:
  Source(UnixSignals& signals, int signal) : signals_(signals), signal_(signal) {}
  ~Source() override {
    std::signal(signal_, SIG_DFL);
    signals_.blocks_.erase(signal_);
  }

 private:
  UnixSignals& signals_;
  int signal_;
};

std::unique_ptr<SignalSource> UnixSignals::make(int signal, std::function<void()> block) {
  struct sigaction current;
  if (sigaction(signal, nullptr, &current) == 0 && current.sa_handler == SIG_IGN) {
    return std::make_unique<SignalSource>();
  }
  blocks_[signal] = std::move(block);
  struct sigaction action {};
  action.sa_handler = onSignal;
  action.sa_flags = SA_RESTART;
  sigaction(signal, &action, nullptr);
  return std::make_unique<Source>(*this, signal);
}

void UnixSignals::drain() {
  std::array<unsigned char, 64> numbers;
  const ssize_t count = read(reader_.get(), numbers.data(), numbers.size());
  for (ssize_t i = 0; i < count; ++i) {
    const auto found = blocks_.find(numbers[static_cast<std::size_t>(i)]);
    if (found == blocks_.end()) continue;
    const auto block = found->second;  // a copy: the block may destroy its own source
    block();
  }
}

}  // namespace brimlo
