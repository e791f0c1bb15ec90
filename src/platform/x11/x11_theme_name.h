#pragma once

#include <xcb/xcb.h>

#include <string>
#include <string_view>

#include "base/published.h"
#include "platform/x11/x11_connection.h"

namespace brimlo {

/// The name of the desktop's theme, as its settings daemon tells all X clients ("Net/ThemeName",
/// XSETTINGS); empty where there is none. Main thread.
class X11ThemeName {
 public:
  explicit X11ThemeName(X11Connection& x11);

  const Published<std::string>& value() const { return value_; }

 private:
  void handle(const xcb_generic_event_t& event);
  void findManager();
  void read();

  X11Connection& x11_;
  xcb_atom_t selection_;
  xcb_atom_t settings_;
  xcb_window_t manager_ = XCB_NONE;
  Published<std::string> value_{""};
};

/// The text called `name` in `settings`, the property of a settings manager; empty where it has
/// none, or makes no sense.
std::string xsettingsText(std::string_view settings, std::string_view name);

}  // namespace brimlo
