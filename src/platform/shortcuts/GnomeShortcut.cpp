// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/shortcuts/GnomeShortcut.h"

#include "platform/shortcuts/Accelerator.h"
#include "platform/shortcuts/DesktopTool.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

const QString listSchema = u"org.gnome.settings-daemon.plugins.media-keys"_s;
const QString listKey = u"custom-keybindings"_s;
const QString entrySchema = listSchema + u".custom-keybinding:"_s;
const QString ownPath =
    u"/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/vellumo/"_s;

/// The first that is free is taken. No desktop has a use for them as it comes.
constexpr std::array candidates{"<Super><Control>e"_L1, "<Super><Alt>e"_L1, "<Super><Control>y"_L1};

QStringList keysIn(const QString &settings)
{
    QStringList result;
    const QStringList values = accelerator::strings(settings);
    for (const QString &value : values) {
        if (value.startsWith(u'<')) {
            result.append(accelerator::readable(value));
        }
    }
    return result;
}

} // namespace

GnomeShortcut::GnomeShortcut(const QDBusConnection &bus, QString command, QObject *parent)
    : DesktopChange(parent)
    , command_(std::move(command))
    , daemon_(bus, u"org.gnome.SettingsDaemon.MediaKeys"_s)
{
    connect(&daemon_, &BusName::ownerChanged, this, &GnomeShortcut::refresh);
}

void GnomeShortcut::run(const QStringList &arguments, std::function<void()> otherwise, Then then)
{
    desktopTool::run(tool_, arguments, this,
                     [otherwise = std::move(otherwise),
                      then = std::move(then)](const std::optional<QByteArray> &output) {
                         if (output) {
                             then(QString::fromUtf8(*output));
                         } else {
                             otherwise();
                         }
                     });
}

void GnomeShortcut::refresh()
{
    const auto otherwise = [this] { settle(State::Unavailable); };
    tool_ = daemon_.owner().isEmpty() ? QString() : desktopTool::find({u"gsettings"_s});
    if (tool_.isEmpty()) {
        otherwise();
        return;
    }
    run({u"get"_s, listSchema, listKey}, otherwise, [this, otherwise](const QString &paths) {
        if (!accelerator::strings(paths).contains(ownPath)) {
            settle(State::Possible);
            return;
        }
        run({u"get"_s, entrySchema + ownPath, u"binding"_s}, otherwise,
            [this](const QString &binding) {
                const QString keys = accelerator::readable(accelerator::strings(binding).value(0));
                settle(keys.isEmpty() ? State::Possible : State::Made, keys);
            });
    });
}

/// Reads a key, or all settings without a schema.
void GnomeShortcut::get(const QString &schema, const QString &key, Then then)
{
    const QStringList arguments =
        schema.isEmpty() ? QStringList{u"list-recursively"_s} : QStringList{u"get"_s, schema, key};
    run(
        arguments, [this] { end(false); }, std::move(then));
}

void GnomeShortcut::set(const QString &schema, const QString &key, const QString &value,
                        std::function<void()> then)
{
    run(
        {u"set"_s, schema, key, accelerator::textOf(value)}, [this] { end(false); },
        [then = std::move(then)](const QString &) { then(); });
}

void GnomeShortcut::make()
{
    get(listSchema, listKey, [this](const QString &list) {
        const QStringList paths = accelerator::strings(list);
        get({}, {}, [this, paths](const QString &all) { // every setting of the desktop
            collect(paths, keysIn(all), [this, paths](const QStringList &taken) {
                const auto isFree = [&taken](QLatin1StringView candidate) {
                    return !taken.contains(accelerator::readable(candidate));
                };
                const auto *const found = std::ranges::find_if(candidates, isFree);
                if (found == candidates.end()) {
                    end(false);
                } else {
                    bind(*found, paths);
                }
            });
        });
    });
}

/// Adds the keys of the user's own shortcuts, which the list of all settings does not have.
void GnomeShortcut::collect(QStringList paths, const QStringList &taken,
                            std::function<void(const QStringList &)> then)
{
    if (paths.isEmpty()) {
        then(taken);
        return;
    }
    const QString path = paths.takeFirst();
    const auto goOn = [this, paths, taken, then = std::move(then)](const QString &binding) {
        collect(paths, taken + keysIn(binding), then);
    };
    run(
        {u"get"_s, entrySchema + path, u"binding"_s}, [goOn] { goOn({}); }, goOn);
}

void GnomeShortcut::bind(const QString &accelerator, const QStringList &paths)
{
    // The list comes last: the daemon reads the entry when its path appears there.
    set(entrySchema + ownPath, u"name"_s, u"vellumo"_s, [this, accelerator, paths] {
        set(entrySchema + ownPath, u"command"_s, command_, [this, accelerator, paths] {
            set(entrySchema + ownPath, u"binding"_s, accelerator, [this, accelerator, paths] {
                QStringList all = paths;
                all.removeAll(ownPath);
                all.append(ownPath);
                setList(all, [this, accelerator] {
                    settle(State::Made, accelerator::readable(accelerator));
                    end(true);
                });
            });
        });
    });
}

void GnomeShortcut::undo()
{
    get(listSchema, listKey, [this](const QString &list) {
        QStringList paths = accelerator::strings(list);
        paths.removeAll(ownPath);
        setList(paths, [this] {
            const auto finish = [this] {
                settle(State::Possible);
                end(true);
            };
            run({u"reset-recursively"_s, entrySchema + ownPath}, finish,
                [finish](const QString &) { finish(); });
        });
    });
}

/// Writes the list of shortcuts and reads it again: the program ends well also when the setting is
/// locked.
void GnomeShortcut::setList(const QStringList &paths, std::function<void()> then)
{
    run(
        {u"set"_s, listSchema, listKey, accelerator::textOf(paths)}, [this] { end(false); },
        [this, paths, then = std::move(then)](const QString &) {
            get(listSchema, listKey, [this, paths, then](const QString &list) {
                const bool isWritten = accelerator::strings(list) == paths;
                if (isWritten) {
                    then();
                } else {
                    end(false);
                }
            });
        });
}

void GnomeShortcut::settle(State state, const QString &keys)
{
    if (state != state_ || keys != keys_) {
        state_ = state;
        keys_ = keys;
        Q_EMIT changed();
    }
}

void GnomeShortcut::end(bool hasSucceeded)
{
    Q_EMIT finished(hasSucceeded);
}

} // namespace vellumo
