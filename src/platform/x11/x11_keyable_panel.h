#pragma once

#include <QObject>
#include <QRegion>
#include <QWidget>
#include <functional>
#include <memory>

#include "platform/keyable_panel.h"
#include "platform/x11/window_server.h"

namespace brimlo {

/// A panel in a Qt window that the window manager leaves alone: so it comes up at once, above
/// everything and on every desktop, and no taskbar or pager lists it. The window server gives it
/// the keyboard.
class QtKeyablePanel : public KeyablePanel, private QObject {
 public:
  /// `opaqueShape`: the part of `content` to show where the desktop cannot blend the rest with what
  /// is behind it. `server` outlives the panel.
  QtKeyablePanel(std::unique_ptr<QWidget> content, std::function<QRegion()> opaqueShape,
                 WindowServer& server);
  ~QtKeyablePanel() override;

  /// Makes its window and draws its content once, so that its first showing takes no longer than
  /// the later ones.
  void prepare();

  Size fittingSize() const override;
  void setContentSize(Size size) override;
  void setOnFittingSizeChange(std::function<void()> onChange) override;
  Rect frame() const override;
  void setFrameOrigin(Point origin) override;
  void makeKeyAndOrderFront() override;
  void orderOut() override;
  bool isVisible() const override;
  bool isComposing() const override;
  std::uint64_t windowNumber() const override;
  void setOnResignKey(std::function<void()> onResignKey) override;

 private:
  bool eventFilter(QObject* receiver, QEvent* event) override;
  void takeKeyboard();

  std::unique_ptr<QWidget> content_;
  std::function<QRegion()> opaqueShape_;
  WindowServer& server_;
  std::function<void()> onResignKey_;
  std::function<void()> onFittingSizeChange_;
  bool composing_ = false;
};

}  // namespace brimlo
