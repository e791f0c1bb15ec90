#pragma once

#include <functional>
#include <map>
#include <memory>

#include "platform/descriptor_watches.h"
#include "platform/posix/file_descriptor.h"
#include "platform/signal_sources.h"

namespace brimlo {

/// Unix signals, delivered through a pipe that the main run loop reads. One object a process; it
/// outlives its sources.
class UnixSignals : public SignalSources {
 public:
  /// `watches` outlives the object.
  explicit UnixSignals(DescriptorWatches& watches);
  ~UnixSignals() override;

  std::unique_ptr<SignalSource> make(int signal, std::function<void()> block) override;

 private:
  class Source;
  void drain();

  FileDescriptor reader_;
  FileDescriptor writer_;
  std::map<int, std::function<void()>> blocks_;
  Subscription readable_;
};

}  // namespace brimlo
