// What the palette costs before and between what the X server does, with 100,000 clips.

#include <QApplication>
#include <QImage>
#include <cstdlib>
#include <cstring>

#include "measure.h"
#include "palette/filter_run.h"
#include "palette/quick_paste_controller.h"
#include "palette/quick_paste_view.h"
#include "support/fake_panel.h"
#include "support/fakes.h"

namespace brimlo {
namespace {

void benchFilter(const ClipList& clips) {
  const QuickPasteSnapshot snapshot{clips};
  std::size_t ours = 0, limit = 0;
  report("one filter keystroke, 3 letters", 60, 2, {[&] {
           FilterRun run(snapshot, "clb", "en_US", {});
           run.advance([] { return false; });
           ours += run.matches().clips->size();
         }},
         {[&] {
           for (const ClipPtr& clip : clips) {
             limit += memmem(clip->text.data(), clip->text.size(), "clb", 3) != nullptr;
           }
         }});
  if (ours != limit) std::abort();
}

/// Opening it and moving about in it, into an image in place of the screen.
void benchView(const ClipList& clips) {
  test::FakeRunLoop loop;
  test::FakeLog log;
  test::FakeSurroundings surroundings;
  test::FakeEventMonitors events;
  test::WindowRecord panel;
  QuickPasteController controller({.clock = loop,
                                   .environment = surroundings,
                                   .events = events,
                                   .log = log,
                                   .queue = loop,
                                   .screens = surroundings,
                                   .locale = "en_US",
                                   .makePanel = [&](QuickPasteViewState&) {
                                     return std::make_unique<test::FakeWindow>(panel);
                                   }});
  controller.setClipsProvider([&] { return clips; });
  const test::FakeStrings strings;
  const test::FakePasteboard pasteboard(loop);
  QuickPasteView view(controller.state(), strings, pasteboard);
  view.resize(view.sizeHint());
  view.setAttribute(Qt::WA_DontShowOnScreen);
  view.show();
  std::vector<ClipPtr> copy;
  report("open the palette, 100,000 clips", 40, 50, {[&] { controller.present(); }},
         {[&] { copy = std::vector<ClipPtr>(clips.begin(), clips.end()); }, [&] { copy = {}; }});
  QImage screen(view.size(), QImage::Format_ARGB32_Premultiplied);
  std::int64_t row = 0;
  std::vector<double> frames;
  for (int frame = 0; frame < 400; ++frame) {
    frames.push_back(milliseconds([&] {
      row += 97;  // so that every row in sight is a new one
      controller.state().selectedIndex.set(row);
      controller.state().keyboardNavTick.set(controller.state().keyboardNavTick.value() + 1);
      QCoreApplication::processEvents();
      view.render(&screen);
    }));
  }
  std::printf("%-34s %10.3f ms %10.3f ms\n", "a frame of the list, all rows new", median(frames),
              1000.0 / 60);
}

}  // namespace
}  // namespace brimlo

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const brimlo::ClipList clips(brimlo::makeHistory(100'000));
  brimlo::benchFilter(clips);
  brimlo::benchView(clips);
}
