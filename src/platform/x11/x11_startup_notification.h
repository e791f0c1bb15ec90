#pragma once

#include <string>

#include "platform/x11/x11_connection.h"

namespace brimlo {

/// Tells launchers that the start called `id` is complete, so that they no longer show that they
/// are waiting for it (Startup Notification Protocol).
void completeStartup(X11Connection& x11, const std::string& id);

}  // namespace brimlo
