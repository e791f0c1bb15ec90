#include "platform/freedesktop/status_notifier_item.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QImage>
#include <QtEndian>
#include <utility>

#include "platform/freedesktop/activation_token.h"
#include "platform/freedesktop/session_bus.h"

namespace brimlo {

/// A picture as the protocol encodes it: ARGB, big-endian.
struct DbusPicture {
  int width = 0;
  int height = 0;
  QByteArray pixels;
};
using DbusPictures = QList<DbusPicture>;

struct DbusToolTip {
  QString icon;
  DbusPictures pictures;
  QString title;
  QString text;
};

static QDBusArgument& operator<<(QDBusArgument& to, const DbusPicture& picture) {
  to.beginStructure();
  to << picture.width << picture.height << picture.pixels;
  to.endStructure();
  return to;
}

static const QDBusArgument& operator>>(const QDBusArgument& from, DbusPicture& picture) {
  from.beginStructure();
  from >> picture.width >> picture.height >> picture.pixels;
  from.endStructure();
  return from;
}

static QDBusArgument& operator<<(QDBusArgument& to, const DbusToolTip& tip) {
  to.beginStructure();
  to << tip.icon << tip.pictures << tip.title << tip.text;
  to.endStructure();
  return to;
}

static const QDBusArgument& operator>>(const QDBusArgument& from, DbusToolTip& tip) {
  from.beginStructure();
  from >> tip.icon >> tip.pictures >> tip.title >> tip.text;
  from.endStructure();
  return from;
}

namespace {

constexpr const char* kWatcher = "org.kde.StatusNotifierWatcher";
constexpr const char* kWatcherPath = "/StatusNotifierWatcher";
constexpr const char* kItem = "org.kde.StatusNotifierItem";
constexpr const char* kItemPath = "/StatusNotifierItem";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

DbusPictures pictures(const QIcon& icon) {
  DbusPictures all;
  for (const int size : {16, 22, 24, 32, 44, 48, 64}) {
    QImage image = icon.pixmap(QSize(size, size), 1.0).toImage();
    image.convertTo(QImage::Format_ARGB32);
    DbusPicture picture{image.width(), image.height(), {}};
    for (int y = 0; y < image.height(); ++y) {
      const auto* line = reinterpret_cast<const quint32*>(image.constScanLine(y));
      for (int x = 0; x < image.width(); ++x) {
        const quint32 pixel = qToBigEndian(line[x]);
        picture.pixels.append(reinterpret_cast<const char*>(&pixel), sizeof pixel);
      }
    }
    all.append(picture);
  }
  return all;
}

}  // namespace

StatusNotifierItem::StatusNotifierItem(const std::string& title, const std::string& themeIcon,
                                       QIcon icon, SystemLog& log)
    : title_(QString::fromStdString(title)),
      themeIcon_(QString::fromStdString(themeIcon)),
      icon_(std::move(icon)),
      log_(log),
      service_(QString("%1-%2-1").arg(kItem).arg(QCoreApplication::applicationPid())),
      bus_(sessionBus()) {
  if (!bus_) return;
  qDBusRegisterMetaType<DbusPicture>();
  qDBusRegisterMetaType<DbusPictures>();
  qDBusRegisterMetaType<DbusToolTip>();
  if (!bus_->registerVirtualObject(kItemPath, this) || !bus_->registerService(service_)) {
    log_.write("cannot put a tray icon on the session bus: " +
               bus_->lastError().message().toStdString());
    bus_.reset();
    return;
  }
  watcher_ = std::make_unique<QDBusServiceWatcher>(kWatcher, *bus_,
                                                   QDBusServiceWatcher::WatchForOwnerChange);
  connect(watcher_.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
          [this](const QString&, const QString&, const QString& owner) {
            if (owner.isEmpty()) {
              setHosted(false);
            } else {
              announce();
            }
          });
  for (const char* name : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
    hostSignals_.push_back(std::make_unique<DbusSignal>(
        *bus_, DbusSignal::Source{kWatcher, kWatcherPath, kWatcher, name},
        [this](const QDBusMessage&) { askForHost(); }));
  }
}

StatusNotifierItem::~StatusNotifierItem() {
  if (!bus_) return;
  bus_->unregisterObject(kItemPath);
  bus_->unregisterService(service_);
}

void StatusNotifierItem::setOnActivate(std::function<void(const Click&)> onActivate) {
  onActivate_ = std::move(onActivate);
}

void StatusNotifierItem::watchHosted(std::function<void(bool)> onChange) {
  onHostedChange_ = std::move(onChange);
  if (bus_) {
    announce();
  } else {
    setHosted(false);
  }
}

void StatusNotifierItem::announce() {
  QDBusMessage call = QDBusMessage::createMethodCall(kWatcher, kWatcherPath, kWatcher,
                                                     "RegisterStatusNotifierItem");
  call.setAutoStartService(false);
  call << service_;
  auto* reply = new QDBusPendingCallWatcher(bus_->asyncCall(call), this);
  connect(reply, &QDBusPendingCallWatcher::finished, this, [this, reply] {
    reply->deleteLater();
    if (reply->isError()) {
      setHosted(false);
    } else {
      askForHost();
    }
  });
}

void StatusNotifierItem::askForHost() {
  QDBusMessage call = QDBusMessage::createMethodCall(kWatcher, kWatcherPath, kProperties, "Get");
  call.setAutoStartService(false);
  call << QString(kWatcher) << QString("IsStatusNotifierHostRegistered");
  auto* reply = new QDBusPendingCallWatcher(bus_->asyncCall(call), this);
  connect(reply, &QDBusPendingCallWatcher::finished, this, [this, reply] {
    reply->deleteLater();
    const QDBusPendingReply<QDBusVariant> answer = *reply;
    setHosted(answer.isValid() && answer.value().variant().toBool());
  });
}

void StatusNotifierItem::setHosted(bool hosted) {
  if (hosted_ == hosted) return;
  hosted_ = hosted;
  if (onHostedChange_) onHostedChange_(hosted);
}

QString StatusNotifierItem::introspect(const QString& path) const {
  if (path != kItemPath) return {};
  return R"XML(<interface name="org.kde.StatusNotifierItem">
    <property name="Category" type="s" access="read"/>
    <property name="Id" type="s" access="read"/>
    <property name="Title" type="s" access="read"/>
    <property name="Status" type="s" access="read"/>
    <property name="WindowId" type="i" access="read"/>
    <property name="IconName" type="s" access="read"/>
    <property name="IconPixmap" type="a(iiay)" access="read"/>
    <property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
    <property name="ItemIsMenu" type="b" access="read"/>
    <method name="Activate"><arg type="i" direction="in"/><arg type="i" direction="in"/></method>
    <method name="SecondaryActivate">
      <arg type="i" direction="in"/><arg type="i" direction="in"/>
    </method>
    <method name="ContextMenu"><arg type="i" direction="in"/><arg type="i" direction="in"/></method>
    <method name="ProvideXdgActivationToken"><arg type="s" direction="in"/></method>
    <method name="Scroll"><arg type="i" direction="in"/><arg type="s" direction="in"/></method>
    <signal name="NewIcon"/><signal name="NewTitle"/><signal name="NewToolTip"/>
    <signal name="NewStatus"><arg type="s"/></signal>
  </interface>)XML";
}

/// All but "IconPixmap", which takes time to draw and is seldom asked for.
QVariantMap StatusNotifierItem::plainProperties() const {
  const DbusToolTip tip{{}, {}, title_, {}};
  return {{"Category", "ApplicationStatus"},
          {"Id", "brimlo"},
          {"Title", title_},
          {"Status", "Active"},
          {"WindowId", 0},
          {"IconName", themeIcon_},
          {"ToolTip", QVariant::fromValue(tip)},
          {"ItemIsMenu", false}};
}

bool StatusNotifierItem::handleMessage(const QDBusMessage& message,
                                       const QDBusConnection& connection) {
  if (message.type() != QDBusMessage::MethodCallMessage || message.path() != kItemPath)
    return false;
  const QVariantList arguments = message.arguments();
  const QString member = message.member();
  const bool aboutItem = !arguments.empty() && arguments[0] == kItem;
  if (message.interface() == kProperties && member == "GetAll" && aboutItem) {
    QVariantMap all = plainProperties();
    all["IconPixmap"] = QVariant::fromValue(pictures(icon_));
    return connection.send(message.createReply(QVariant(all)));
  }
  if (message.interface() == kProperties && member == "Get" && aboutItem && arguments.size() == 2) {
    const QString name = arguments[1].toString();
    const QVariant value =
        name == "IconPixmap" ? QVariant::fromValue(pictures(icon_)) : plainProperties().value(name);
    if (!value.isValid()) return false;
    return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(value))));
  }
  if (message.interface() != kItem && !message.interface().isEmpty()) return false;
  // The item has no context menu: a click with either button opens the window.
  const bool activates =
      (member == "Activate" || member == "ContextMenu") && message.signature() == "ii";
  const bool givesToken = member == "ProvideXdgActivationToken" && message.signature() == "s";
  const bool known = activates || givesToken || member == "SecondaryActivate" || member == "Scroll";
  if (!known) return false;
  connection.send(message.createReply());
  if (givesToken) {
    activationToken_ = arguments[0].toString().toStdString();
    if (activationToken_.size() > kLongestActivationToken) activationToken_.clear();
  }
  if (activates && onActivate_) {
    onActivate_({arguments[0].toInt(), arguments[1].toInt(),
                 std::exchange(activationToken_, std::string())});
  }
  return true;
}

}  // namespace brimlo

Q_DECLARE_METATYPE(brimlo::DbusPicture)
Q_DECLARE_METATYPE(brimlo::DbusToolTip)
