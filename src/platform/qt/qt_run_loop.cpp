#include "platform/qt/qt_run_loop.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTimer>
#include <utility>

namespace brimlo {
namespace {

class QtTimer : public RepeatingTimer {
 public:
  QtTimer(std::chrono::milliseconds interval, std::function<void()> tick) : tick_(std::move(tick)) {
    timer_.setInterval(interval);
    // The tick may destroy its own timer, so it runs as a copy.
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
      const auto running = tick_;
      running();
    });
    timer_.start();
  }

 private:
  std::function<void()> tick_;
  QTimer timer_;
};

}  // namespace

void QtRunLoop::terminate() {
  QCoreApplication::exit(0);
}

void QtRunLoop::async(std::function<void()> block) {
  QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(block), Qt::QueuedConnection);
}

void QtRunLoop::asyncAfter(std::chrono::milliseconds delay, std::function<void()> block) {
  QTimer::singleShot(delay, Qt::PreciseTimer, QCoreApplication::instance(), std::move(block));
}

std::unique_ptr<RepeatingTimer> QtRunLoop::scheduleRepeating(std::chrono::milliseconds interval,
                                                             std::function<void()> tick) {
  return std::make_unique<QtTimer>(interval, std::move(tick));
}

Subscription QtRunLoop::whenReadable(int descriptor, std::function<void()> onReadable) {
  auto* notifier =
      new QSocketNotifier(descriptor, QSocketNotifier::Read, QCoreApplication::instance());
  QObject::connect(notifier, &QSocketNotifier::activated, notifier, std::move(onReadable));
  return Subscription([notifier] {
    // Deleted later: the subscription may end inside `onReadable`, which the notifier holds.
    notifier->setEnabled(false);
    notifier->deleteLater();
  });
}

}  // namespace brimlo
