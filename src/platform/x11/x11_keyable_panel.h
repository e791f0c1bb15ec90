#pragma once

#include <QObject>
#include <QRegion>
#include <QWidget>
#include <functional>
#include <memory>

#include "platform/keyable_panel.h"
#include "platform/x11/x11_window_server.h"

namespace brimlo {

/// A panel in an override-redirect window. No window manager manages it: so it comes up at once,
/// above everything and on every desktop, and no taskbar or pager lists it; and it has to take the
/// input focus by itself.
class X11KeyablePanel : public KeyablePanel, private QObject {
 public:
  /// `opaqueShape`: the part of `content` that is shown where no compositing manager runs. `server`
  /// outlives the panel.
  X11KeyablePanel(std::unique_ptr<QWidget> content, std::function<QRegion()> opaqueShape,
                  X11WindowServer& server);
  ~X11KeyablePanel() override;

  void prepare() override;
  Size fittingSize() const override;
  void setContentSize(Size size) override;
  void setOnFittingSizeChange(std::function<void()> onChange) override;
  Size contentSize() const override;
  std::optional<Rect> frame() const override;
  void setFrameOrigin(Point origin) override;
  void makeKeyAndOrderFront() override;
  void orderOut() override;
  bool isVisible() const override;
  bool isComposing() const override;
  WindowId windowId() const override;
  void setOnResignKey(std::function<void()> onResignKey) override;

 private:
  bool eventFilter(QObject* receiver, QEvent* event) override;
  xcb_window_t number() const;
  void takeKeyboard();

  std::unique_ptr<QWidget> content_;
  std::function<QRegion()> opaqueShape_;
  X11WindowServer& server_;
  std::function<void()> onResignKey_;
  std::function<void()> onFittingSizeChange_;
  bool composing_ = false;
};

}  // namespace brimlo
