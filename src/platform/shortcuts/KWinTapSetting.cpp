// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/shortcuts/KWinTapSetting.h"

#include "platform/shortcuts/DesktopTaps.h"
#include "platform/shortcuts/DesktopTool.h"

#include <QDBusMessage>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

const QStringList place{u"--file"_s, u"kwinrc"_s, u"--group"_s, u"ModifierOnlyShortcuts"_s,
                        u"--key"_s,  u"Alt"_s};

QString reader()
{
    return desktopTool::find({u"kreadconfig6"_s, u"kreadconfig5"_s});
}

QString writer()
{
    return desktopTool::find({u"kwriteconfig6"_s, u"kwriteconfig5"_s});
}

QString ownValue()
{
    return QStringList{DesktopTaps::service(), DesktopTaps::path(), DesktopTaps::interface(),
                       DesktopTaps::method()}
        .join(u',');
}

} // namespace

KWinTapSetting::KWinTapSetting(QDBusConnection bus, const KWinVersion &kwin, QObject *parent)
    : DesktopChange(parent)
    , bus_(std::move(bus))
    , kwin_(kwin)
{
    connect(&kwin_, &KWinVersion::changed, this, &KWinTapSetting::refresh);
}

void KWinTapSetting::refresh()
{
    if (kwin_.number()) { // otherwise its answer follows
        read(false, State::Unknown);
    }
}

void KWinTapSetting::read(bool isAfterWriting, State expected)
{
    const QVersionNumber version = kwin_.number().value_or(QVersionNumber());
    if (version.isNull() || reader().isEmpty() || writer().isEmpty()) {
        settle(State::Unavailable);
        if (isAfterWriting) {
            Q_EMIT finished(false);
        }
        return;
    }
    desktopTool::run(reader(), place, this,
                     [this, isAfterWriting, expected](const std::optional<QByteArray> &output) {
                         const QString value = QString::fromUtf8(output.value_or("")).trimmed();
                         const bool isOwn = value == ownValue();
                         settle(!output || (!isOwn && !readsEntry()) ? State::Unavailable
                                    : value.isEmpty()                ? State::Possible
                                    : isOwn                          ? State::Made
                                                                     : State::Taken);
                         if (isAfterWriting) {
                             const bool isUndone =
                                 output && expected == State::Possible && value.isEmpty();
                             Q_EMIT finished(state_ == expected || isUndone);
                         }
                     });
}

bool KWinTapSetting::readsEntry() const
{
    const auto version = kwin_.number();
    return version && *version < removedIn;
}

bool KWinTapSetting::isOutdated() const
{
    return state_ == State::Made && !readsEntry();
}

void KWinTapSetting::make()
{
    write({ownValue()}, State::Made);
}

void KWinTapSetting::undo()
{
    write({u"--delete"_s}, State::Possible);
}

void KWinTapSetting::write(const QStringList &value, State expected)
{
    // Reads first, since another program may have used the key in the meantime.
    desktopTool::run(
        reader(), place, this, [this, value, expected](const std::optional<QByteArray> &before) {
            const QString found = QString::fromUtf8(before.value_or("")).trimmed();
            if (!before || (!found.isEmpty() && found != ownValue())) {
                read(true, expected);
                return;
            }
            desktopTool::run(
                writer(), place + value, this,
                [this, expected](const std::optional<QByteArray> & /*output*/) {
                    bus_.send(QDBusMessage::createMethodCall(u"org.kde.KWin"_s, u"/KWin"_s,
                                                             u"org.kde.KWin"_s, u"reconfigure"_s));
                    read(true, expected);
                });
        });
}

void KWinTapSetting::settle(State state)
{
    if (state != state_) {
        state_ = state;
        Q_EMIT changed();
    }
}

} // namespace vellumo
