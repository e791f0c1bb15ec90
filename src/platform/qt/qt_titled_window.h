#pragma once

#include <QObject>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "platform/titled_window.h"
#include "platform/workspace.h"

namespace brimlo {

/// A window in a Qt window that the window manager frames.
class QtTitledWindow : public TitledWindow, private QObject {
 public:
  /// `content` has a fixed size. `title`: what the desktop calls the window. `workspace` outlives
  /// it.
  QtTitledWindow(std::unique_ptr<QWidget> content, const std::string& title, Workspace& workspace);
  ~QtTitledWindow() override;

  Rect frame() const override;
  void setFrameOrigin(Point origin) override;
  void center() override;
  void setLevel(Level level) override;
  void makeKeyAndOrderFront() override;
  void orderOut() override;
  void setOnWillClose(std::function<void()> onWillClose) override;

 private:
  bool eventFilter(QObject* receiver, QEvent* event) override;
  void activate();

  std::unique_ptr<QWidget> content_;
  Workspace& workspace_;
  std::function<void()> onWillClose_;
  bool comingUp_ = false;
};

}  // namespace brimlo
