#include "platform/freedesktop/desktop_appearance.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

#include "platform/freedesktop/session_bus.h"

namespace brimlo {
namespace {

constexpr const char* kService = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kInterface = "org.freedesktop.portal.Settings";
constexpr const char* kNamespace = "org.freedesktop.appearance";
constexpr const char* kKey = "color-scheme";
constexpr uint kNoPreference = 0;
constexpr uint kPreferDark = 1;

}  // namespace

DesktopAppearance::DesktopAppearance(const Published<std::string>& themeName)
    : themeName_(themeName) {
  themeChanges_ = themeName_.observe([this](const std::string&) { publish(); });
  qGuiApp->installEventFilter(this);
  const auto bus = sessionBus();
  if (!bus) return;
  changes_ = std::make_unique<DbusSignal>(
      *bus, DbusSignal::Source{kService, kPath, kInterface, "SettingChanged"},
      [this](const QDBusMessage& message) {
        const QVariantList what = message.arguments();
        if (what.size() == 3 && what[0] == kNamespace && what[1] == kKey) take(what[2]);
      });
  QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kInterface, "Read");
  call << QString(kNamespace) << QString(kKey);
  auto* reply = new QDBusPendingCallWatcher(bus->asyncCall(call), this);
  connect(reply, &QDBusPendingCallWatcher::finished, this, [this, reply] {
    const QDBusPendingReply<QDBusVariant> answer = *reply;
    if (answer.isValid()) take(QVariant::fromValue(answer.value()));
    reply->deleteLater();
  });
}

bool DesktopAppearance::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange) publish();
  return false;
}

/// `scheme`: a number in a variant; "Read" wraps that in another variant.
void DesktopAppearance::take(const QVariant& scheme) {
  QVariant inner = scheme;
  while (inner.canConvert<QDBusVariant>()) inner = inner.value<QDBusVariant>().variant();
  scheme_ = inner.toUInt();
  publish();
}

void DesktopAppearance::publish() {
  const QPalette palette = QGuiApplication::palette();
  const bool darkToolkit =
      palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
  const QString theme = QString::fromStdString(themeName_.value());
  // By convention: "Adwaita-dark", "Greybird-dark", "Arc-Dark".
  const bool darkTheme = theme.contains("dark", Qt::CaseInsensitive);
  const bool dark = scheme_ != kNoPreference ? scheme_ == kPreferDark
                    : theme.isEmpty()        ? darkToolkit
                                             : darkTheme;
  value_.set(dark ? Appearance::kDark : Appearance::kLight);
}

}  // namespace brimlo
