// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/shortcuts/DesktopTaps.h"

#include "platform/dbus/ApplicationName.h"

#include <QDBusMessage>

using namespace Qt::StringLiterals;

namespace vellumo {

/// The object on the bus.
class DesktopTaps::Receiver final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "app.vellumo.Vellumo.Taps")

public:
    explicit Receiver(DesktopTaps &taps) : taps_(taps) { }

public Q_SLOTS:
    Q_SCRIPTABLE void Tap()
    {
        if (!calledFromDBus() || message().service() == taps_.kwin_.owner()) {
            Q_EMIT taps_.tapped(std::chrono::steady_clock::now());
        } else {
            sendErrorReply(QDBusError::AccessDenied, u"Only KWin reports taps"_s);
        }
    }

private:
    DesktopTaps &taps_;
};

DesktopTaps::DesktopTaps(const QDBusConnection &bus) : bus_(bus), kwin_(bus, u"org.kde.KWin"_s) { }

DesktopTaps::~DesktopTaps()
{
    setOn(false);
}

QString DesktopTaps::service()
{
    return ApplicationName::id + u".Taps"_s;
}

QString DesktopTaps::path()
{
    return ApplicationName::path + u"/Taps"_s;
}

QString DesktopTaps::interface()
{
    return service();
}

QString DesktopTaps::method()
{
    return u"Tap"_s;
}

void DesktopTaps::setOn(bool isOn)
{
    if (isOn == (receiver_ != nullptr)) {
        return;
    }
    const auto call = [this](const QString &name, const QVariantList &arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(
            u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, name);
        message.setArguments(arguments);
        bus_.send(message);
    };
    if (isOn) {
        receiver_ = std::make_unique<Receiver>(*this);
        bus_.registerObject(path(), receiver_.get(), QDBusConnection::ExportScriptableSlots);
        constexpr uint replaceExisting = 2;
        call(u"RequestName"_s, {service(), replaceExisting});
    } else {
        call(u"ReleaseName"_s, {service()});
        bus_.unregisterObject(path());
        receiver_ = nullptr;
    }
}

} // namespace vellumo

#include "DesktopTaps.moc"
