#include "platform/x11/x11_startup_notification.h"

#include <algorithm>
#include <cstring>

#include "platform/x11/input_only_window.h"

namespace brimlo {
namespace {

/// The message about `id`, with its terminating NUL. Quotes and backslashes are escaped.
std::string removeMessage(const std::string& id) {
  std::string message = "remove: ID=\"";
  for (const char c : id) {
    if (c == '"' || c == '\\') message += '\\';
    message += c;
  }
  return message + '"' + '\0';
}

}  // namespace

void completeStartup(X11Connection& x11, const std::string& id) {
  const std::string message = removeMessage(id);
  const InputOnlyWindow window(x11, XCB_EVENT_MASK_NO_EVENT);  // identifies the message's pieces
  xcb_client_message_event_t piece{};
  piece.response_type = XCB_CLIENT_MESSAGE;
  piece.format = 8;
  piece.window = window.id();
  piece.type = x11.atoms().startupInfoBegin;
  for (std::size_t at = 0; at < message.size(); at += sizeof piece.data.data8) {
    std::memset(piece.data.data8, 0, sizeof piece.data.data8);
    std::memcpy(piece.data.data8, message.data() + at,
                std::min(message.size() - at, sizeof piece.data.data8));
    xcb_send_event(x11.xcb(), 0, x11.root(), XCB_EVENT_MASK_PROPERTY_CHANGE,
                   reinterpret_cast<const char*>(&piece));
    piece.type = x11.atoms().startupInfo;
  }
  x11.flush();
}

}  // namespace brimlo
