// The time from the hotkey's press to the palette on screen, or from a second start's request to
// the menu window on screen, as another client of the X server sees it: the window is mapped, and
// the pixels of its card have their colour. Presses the keys of a US keyboard itself. Needs the
// program running on this display.
//
// usage: brimlo_to_screen ROUNDS [DATA_FOLDER]    with the folder: of the menu window

#include <poll.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>

#include "measure.h"
#include "platform/freedesktop/running_instance.h"

namespace brimlo {
namespace {

constexpr xcb_keycode_t kShift = 50, kSuper = 133, kV = 55, kEscape = 9;
/// A window, and where in it a pixel of its card is, between its texts.
struct Sought {
  std::uint16_t width;
  std::int16_t x;
  std::int16_t y;
  int surface;
};
constexpr Sought kPalette{.width = 500, .x = 250, .y = 77, .surface = 0x262E28};
constexpr Sought kMenu{.width = 344, .x = 160, .y = 30, .surface = 0xFAFBF9};

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Owned = std::unique_ptr<T, Free>;

class Watcher {
 public:
  explicit Watcher(const Sought& sought) : sought_(sought), xcb_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(xcb_) != 0) std::exit(2);
    root_ = xcb_setup_roots_iterator(xcb_get_setup(xcb_)).data->root;
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(xcb_, root_, XCB_CW_EVENT_MASK, &events);
    xcb_flush(xcb_);
  }
  ~Watcher() { xcb_disconnect(xcb_); }

  void stroke(std::initializer_list<xcb_keycode_t> keys) {
    for (const auto key : keys) fake(XCB_KEY_PRESS, key);
    for (auto key = std::rbegin(keys); key != std::rend(keys); ++key) {
      fake(XCB_KEY_RELEASE, *key);
    }
    xcb_flush(xcb_);
  }

  /// Waits for a window as wide as that to be mapped.
  std::optional<xcb_window_t> mapped() {
    for (;;) {
      const Owned<xcb_generic_event_t> event(next());
      if (!event) return std::nullopt;
      if ((event->response_type & 0x7F) != XCB_MAP_NOTIFY) continue;
      const auto window = reinterpret_cast<xcb_map_notify_event_t*>(event.get())->window;
      const Owned<xcb_get_geometry_reply_t> geometry(
          xcb_get_geometry_reply(xcb_, xcb_get_geometry(xcb_, window), nullptr));
      if (!geometry || geometry->width != sought_.width) continue;
      x_ = geometry->x;
      y_ = geometry->y;
      return window;
    }
  }

  /// Waits until the pixel has the card's colour.
  bool painted() {
    for (int attempt = 0; attempt < 20'000; ++attempt) {
      const Owned<xcb_get_image_reply_t> image(
          xcb_get_image_reply(xcb_,
                              xcb_get_image(xcb_, XCB_IMAGE_FORMAT_Z_PIXMAP, root_,
                                            static_cast<std::int16_t>(x_ + sought_.x),
                                            static_cast<std::int16_t>(y_ + sought_.y), 1, 1, ~0U),
                              nullptr));
      if (!image) return false;
      const std::uint8_t* pixel = xcb_get_image_data(image.get());
      if ((pixel[2] << 16 | pixel[1] << 8 | pixel[0]) == sought_.surface) return true;
    }
    return false;
  }

  bool unmapped(xcb_window_t window) {
    for (;;) {
      const Owned<xcb_generic_event_t> event(next());
      if (!event) return false;
      if ((event->response_type & 0x7F) == XCB_UNMAP_NOTIFY &&
          reinterpret_cast<xcb_unmap_notify_event_t*>(event.get())->window == window) {
        return true;
      }
    }
  }

 private:
  void fake(std::uint8_t type, xcb_keycode_t key) {
    xcb_test_fake_input(xcb_, type, key, XCB_CURRENT_TIME, root_, 0, 0, 0);
  }

  /// The next event, or null after five seconds without one.
  xcb_generic_event_t* next() {
    constexpr int kPatienceMs = 5000;
    if (auto* event = xcb_poll_for_event(xcb_)) return event;
    pollfd readable{xcb_get_file_descriptor(xcb_), POLLIN, 0};
    poll(&readable, 1, kPatienceMs);
    return xcb_poll_for_event(xcb_);
  }

  const Sought& sought_;
  xcb_connection_t* xcb_;
  xcb_window_t root_ = XCB_NONE;
  std::int16_t x_ = 0;
  std::int16_t y_ = 0;
};

/// `folder`: of the menu window; null: of the palette.
int measure(int rounds, const char* folder) {
  Watcher watcher(folder ? kMenu : kPalette);
  const std::string socket = folder ? instanceSocketPath(folder) : std::string();
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) {
    const auto begin = std::chrono::steady_clock::now();
    if (folder) {
      askRunningInstance(socket, InstanceRequest{}, std::chrono::seconds(5));
    } else {
      watcher.stroke({kShift, kSuper, kV});
    }
    const auto window = watcher.mapped();
    if (!window || !watcher.painted()) {
      std::fprintf(stderr, "the window did not appear\n");
      return 1;
    }
    times.push_back(
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin)
            .count());
    // A person looks at it; it also has the keyboard by then.
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    watcher.stroke({kEscape});
    if (!watcher.unmapped(*window)) {
      std::fprintf(stderr, "the window did not close\n");
      return 1;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  const double first = times.front();
  std::printf("first %.1f ms, median %.1f ms, worst of the others %.1f ms\n", first, median(times),
              *std::max_element(times.begin() + 1, times.end()));
  return 0;
}

}  // namespace
}  // namespace brimlo

int main(int argc, char** argv) {
  return brimlo::measure(argc > 1 ? std::max(2, std::atoi(argv[1])) : 20,
                         argc > 2 ? argv[2] : nullptr);
}
