#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <utility>

#include "platform/session.h"
#include "support/fake_panel.h"
#include "support/fakes.h"

namespace brimlo::test {

/// A session made of fakes, which outlive it.
class FakeSession : public Session {
 public:
  struct Parts {
    FakeDesktop& desktop;
    FakeEventMonitors& events;
    FakeHotKeys& hotKeys;
    FakePasteboard& pasteboard;
    FakeSurroundings& surroundings;
  };
  explicit FakeSession(const Parts& parts) : parts_(parts) {}

  Accessibility& accessibility() override { return parts_.desktop; }
  KeyEventPoster& keyEvents() override { return parts_.desktop; }
  EventMonitors& eventMonitors() override { return parts_.events; }
  HotKeys& hotKeys() override { return parts_.hotKeys; }
  Pasteboard& pasteboard() override { return parts_.pasteboard; }
  Screens& screens() override { return parts_.surroundings; }
  Workspace& workspace() override { return parts_.desktop; }
  const Published<Appearance>& appearance() const override { return appearance_; }
  void useActivationToken(const std::string&) override {}
  void setOnEnd(std::function<void(End)>) override {}
  void handOver(std::chrono::milliseconds) override {}

 private:
  Parts parts_;
  Published<Appearance> appearance_{Appearance::kLight};
};

}  // namespace brimlo::test
