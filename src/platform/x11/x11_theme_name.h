#pragma once

#include <xcb/xcb.h>

#include <string>

#include "base/published.h"
#include "platform/x11/x11_connection.h"

namespace brimlo {

/// The name of the desktop's theme, as its settings manager gives it to all X clients
/// ("Net/ThemeName", XSETTINGS); empty where there is none. Main thread.
class X11ThemeName {
 public:
  explicit X11ThemeName(X11Connection& x11);

  const Published<std::string>& value() const { return value_; }

 private:
  void findManager();
  void read();

  X11Connection& x11_;
  xcb_window_t manager_ = XCB_NONE;
  Published<std::string> value_{""};
  Subscription events_;
  Subscription managerChanges_;
};

}  // namespace brimlo
