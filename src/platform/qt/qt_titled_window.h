#pragma once

#include <QObject>
#include <QWidget>
#include <QWindow>
#include <functional>
#include <memory>
#include <string>

#include "platform/titled_window.h"

namespace brimlo {

/// A Qt window that the window manager frames.
class QtTitledWindow : public TitledWindow, private QObject {
 public:
  /// Has the desktop bring the window to the front, in whatever way the session has for that.
  using Activate = std::function<void(QWindow&)>;

  /// `content` has a fixed size. `title`: shown in the frame and in taskbars.
  QtTitledWindow(std::unique_ptr<QWidget> content, const std::string& title, Activate activate);
  ~QtTitledWindow() override;

  Size contentSize() const override;
  std::optional<Rect> frame() const override;
  void setFrameOrigin(Point origin) override;
  void center() override;
  void setLevel(Level level) override;
  void makeKeyAndOrderFront() override;
  void orderOut() override;
  void setOnWillClose(std::function<void()> onWillClose) override;

 private:
  bool eventFilter(QObject* receiver, QEvent* event) override;

  std::unique_ptr<QWidget> content_;
  Activate activate_;
  std::function<void()> onWillClose_;
  bool comingUp_ = false;
};

}  // namespace brimlo
