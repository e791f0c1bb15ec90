#pragma once

#include <QApplication>
#include <QRegion>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "platform/keyable_panel.h"
#include "platform/qt/qt_run_loop.h"
#include "platform/qt/qt_strings.h"
#include "platform/session.h"
#include "platform/titled_window.h"

namespace brimlo {

/// A session whose windows are Qt's: the base of every kind of session. It owns the toolkit's
/// application object, which is made when the session is opened and ends last.
class QtSession : public Session, private QObject {
 public:
  QtRunLoop& runLoop() { return runLoop_; }
  const LocalizedStrings& strings() const { return strings_; }

  /// Serves events until the application is told to terminate. Returns its exit status.
  int run() { return QApplication::exec(); }

  /// A panel that shows `content`. `opaqueShape`: the part of it to show where the desktop cannot
  /// blend the rest with what is behind it.
  virtual std::unique_ptr<KeyablePanel> makePanel(std::unique_ptr<QWidget> content,
                                                  std::function<QRegion()> opaqueShape) = 0;

  /// A window with a frame that shows `content`, which has a fixed size, under `title`.
  virtual std::unique_ptr<TitledWindow> makeWindow(std::unique_ptr<QWidget> content,
                                                   const std::string& title) = 0;

  void setOnEnd(std::function<void(End)> onEnd) override { onEnd_ = std::move(onEnd); }

 protected:
  /// `platform`: Qt's name for the kind of display. `argc` and `argv` outlive the session.
  QtSession(const char* platform, int& argc, char** argv);

  /// Says that the session has ended.
  void end(End how);

 private:
  bool eventFilter(QObject* receiver, QEvent* event) override;

  QApplication application_;
  QtRunLoop runLoop_;
  QtStrings strings_;
  std::function<void(End)> onEnd_;
};

}  // namespace brimlo
