// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/MutterInput.h"

#include "driver/Waiting.h"
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QThread>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace vellumo::test {

namespace {

QVariantList call(const QString &service, const QString &path, const QString &interface,
                  const QString &method, const QVariantList &arguments = {})
{
    auto message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message, QDBus::Block, 5000).arguments();
}

} // namespace

MutterInput::MutterInput()
{
    const QString service = u"org.gnome.Mutter.RemoteDesktop"_s;
    const auto made =
        call(service, u"/org/gnome/Mutter/RemoteDesktop"_s, service, u"CreateSession"_s);
    session_ = made.value(0).value<QDBusObjectPath>().path();
    call(service, session_, service + u".Session"_s, u"Start"_s);
    // The device exists from its first key on, and the shell needs a moment to give it the focus.
    press(KEY_F24);
    release(KEY_F24);
    QThread::msleep(400);
}

bool MutterInput::closeOverview()
{
    const QString service = u"org.gnome.Shell"_s;
    const QString path = u"/org/gnome/Shell"_s;
    const QString properties = u"org.freedesktop.DBus.Properties"_s;
    return waitUntil([&] {
        call(service, path, properties, u"Set"_s,
             {service, u"OverviewActive"_s, QVariant::fromValue(QDBusVariant(false))});
        const auto value =
            call(service, path, properties, u"Get"_s, {service, u"OverviewActive"_s});
        return !value.isEmpty() && !value.constFirst().value<QDBusVariant>().variant().toBool();
    });
}

bool MutterInput::switchExtension(bool isOn)
{
    const auto answer =
        call(u"org.gnome.Shell"_s, u"/org/gnome/Shell"_s, u"org.gnome.Shell.Extensions"_s,
             isOn ? u"EnableExtension"_s : u"DisableExtension"_s, {u"vellumo@vellumo.app"_s});
    return answer.value(0).toBool();
}

void MutterInput::notify(quint32 key, bool isPress) const
{
    const bool isButton = key >= BTN_MOUSE && key < BTN_JOYSTICK;
    call(u"org.gnome.Mutter.RemoteDesktop"_s, session_, u"org.gnome.Mutter.RemoteDesktop.Session"_s,
         isButton ? u"NotifyPointerButton"_s : u"NotifyKeyboardKeycode"_s,
         {isButton ? QVariant(static_cast<int>(key)) : QVariant(key), isPress});
}

void MutterInput::chord(quint32 modifier, quint32 key) const
{
    press(modifier);
    press(key);
    release(key);
    release(modifier);
}

void MutterInput::doubleTap() const
{
    for (int i = 0; i < 2; ++i) {
        press(KEY_LEFTALT);
        QThread::msleep(30);
        release(KEY_LEFTALT);
        QThread::msleep(90);
    }
}

} // namespace vellumo::test
