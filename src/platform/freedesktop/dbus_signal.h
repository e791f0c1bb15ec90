#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <functional>
#include <utility>

namespace brimlo {

/// Calls a function for every arrival of one D-Bus signal, as long as the object exists. Main
/// thread.
class DbusSignal : public QObject {
  Q_OBJECT

 public:
  struct Source {
    QString service;
    QString path;
    QString interface;
    QString name;
  };
  DbusSignal(QDBusConnection bus, const Source& source,
             std::function<void(const QDBusMessage&)> onSignal)
      : onSignal_(std::move(onSignal)) {
    bus.connect(source.service, source.path, source.interface, source.name, this,
                SLOT(received(QDBusMessage)));
  }

 private:
  Q_SLOT void received(const QDBusMessage& message) { onSignal_(message); }

  std::function<void(const QDBusMessage&)> onSignal_;
};

}  // namespace brimlo
