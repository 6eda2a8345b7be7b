// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "driver/Program.h"

#include "driver/AccessibleTree.h"
#include "driver/Keyring.h"
#include "driver/Waiting.h"
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QSettings>

namespace vellumo::test {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int narrowestPanel = 500;
constexpr int widestPanel = 620;
constexpr int lowestTopOfPanel = 40;

/// Returns the only field in the panel, in any language.
bool isFollowUpField(const AccessibleItem &item)
{
    return item.role == "text"_L1 || item.role == "entry"_L1;
}

} // namespace

Program::Program(const Desktop &desktop, QString path)
    : desktop_(desktop)
    , path_(std::move(path))
    , configHome_(qEnvironmentVariable("XDG_CONFIG_HOME"))
    , dataHome_(qEnvironmentVariable("XDG_DATA_HOME"))
{
}

Program::Program(const Desktop &desktop, QString path, const QString &folder)
    : desktop_(desktop)
    , path_(std::move(path))
    , folder_(qEnvironmentVariable("HOME") + u'/' + folder)
    , configHome_(folder_ + u"/config"_s)
    , dataHome_(folder_ + u"/data"_s)
{
    QDir().mkpath(configHome_ + u"/vellumo"_s);
    QDir().mkpath(dataHome_);
    setEnvironment(u"XDG_CONFIG_HOME"_s, configHome_);
    setEnvironment(u"XDG_DATA_HOME"_s, dataHome_);
    setSetting(u"accessibilityConsent"_s, u"true"_s);
    setSetting(u"hasCompletedOnboarding"_s, u"true"_s);
    setSetting(u"askedForLoginStart"_s, u"true"_s);
    setSetting(u"preferredOutputLanguage"_s, u"English"_s);
}

void Program::setSetting(const QString &key, const QString &value)
{
    QSettings settings(configHome_ + u"/vellumo/vellumo.ini"_s, QSettings::IniFormat);
    settings.setValue(key, value);
}

void Program::setEnvironment(const QString &name, const QString &value)
{
    environment_.append({name, value});
}

std::unique_ptr<Application> Program::another(const QStringList &arguments) const
{
    QStringList command = wrapper_ + QStringList{path_} + arguments;
    const QString program = command.takeFirst();
    auto process = std::make_unique<Application>(
        Application::Command{u"vellumo"_s, program, command, u"vellumo"_s});
    for (const auto &[name, value] : environment_)
        process->setEnvironment(name, value);
    return process;
}

std::optional<int> Program::startAgain(const QStringList &arguments) const
{
    const auto second = another(arguments);
    if (!second->launch() || !second->waitForEnd(20s) || second->crashed()
        || !second->standardOutput().isEmpty()) {
        qWarning().noquote() << arguments << second->standardOutput() << second->errorOutput();
        return std::nullopt;
    }
    return second->exitCode();
}

bool Program::launch(const QStringList &arguments)
{
    process_ = another(arguments);
    return process_->launch();
}

bool Program::start(const QStringList &arguments)
{
    return launch(arguments) && waitUntil([this] {
               return process_->standardOutput().contains("vellumo: ready"_L1)
                   || !process_->isRunning();
           })
        && process_->isRunning();
}

QString Program::report() const
{
    return process_->standardOutput() + process_->errorOutput() + panelText()
        + u"\nnotes: %1"_s.arg(notes().size());
}

QByteArray Program::allThatIsKept() const
{
    QByteArray everything = (process_->standardOutput() + process_->errorOutput()).toUtf8();
    QDirIterator files(folder_, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(file.fileName()));
        everything += file.readAll();
    }
    return everything;
}

std::optional<WindowId> Program::panel() const
{
    const QList<WindowId> windows = desktop_.windows(u"vellumo"_s);
    for (const WindowId window : windows) {
        const QRect place = desktop_.geometry(window);
        if (place.width() >= narrowestPanel && place.width() <= widestPanel
            && place.top() <= lowestTopOfPanel)
            return window;
    }
    return std::nullopt;
}

std::optional<WindowId> Program::waitForPanel(std::chrono::milliseconds time) const
{
    if (!waitUntil([this] { return panel().has_value(); }, time))
        return std::nullopt;
    return panel();
}

bool Program::dismissPanel() const
{
    return waitUntil([this] {
        if (panel())
            desktop_.doubleTap();
        return waitForNoPanel(3s);
    });
}

bool Program::waitForAnswer() const
{
    return waitUntil([this] {
        const auto items = accessibleItems(process_->processIdentifier());
        return std::any_of(items.begin(), items.end(), isFollowUpField);
    });
}

QString Program::panelText() const
{
    QStringList names;
    const auto items = accessibleItems(process_->processIdentifier());
    for (const AccessibleItem &item : items)
        names.append(item.role + u": "_s + item.name);
    return names.join(u'\n');
}

std::optional<QRect> Program::find(const QString &name, const QString &role) const
{
    const auto items = accessibleItems(process_->processIdentifier());
    for (const AccessibleItem &item : items) {
        const bool isOfRole = role.isEmpty() ? item.role != "label"_L1 : item.role.endsWith(role);
        if (isOfRole && item.name == name)
            return item.extents;
    }
    return std::nullopt;
}

std::optional<QRect> Program::waitFor(const QString &name, const QString &role) const
{
    std::optional<QRect> place;
    const bool rests = waitUntil([&] {
        const auto before = std::exchange(place, find(name, role));
        return place && place == before;
    });
    return rests ? place : std::nullopt;
}

bool Program::click(const QString &name, const QString &role) const
{
    std::optional<QRect> place;
    const bool canBeClicked = waitUntil([&] {
        const auto before = std::exchange(place, find(name, role));
        // an element is announced before a slow window manager has mapped its window
        return place && place == before
            && desktop_.windows(u"vellumo"_s).contains(desktop_.windowAt(place->center()));
    });
    if (canBeClicked)
        desktop_.click(place->center());
    return canBeClicked;
}

bool Program::ask(const QString &question) const
{
    const auto hasKeyboard = [this] { return desktop_.activeWindow() == panel(); };
    const bool isReady = waitUntil([&] {
        const auto items = accessibleItems(process_->processIdentifier());
        const auto field = std::find_if(items.begin(), items.end(), isFollowUpField);
        if (field == items.end())
            return false;
        desktop_.click(field->extents.center()); // in vain while the panel still grows
        return waitUntil(hasKeyboard, 1s);
    });
    if (!isReady)
        return false;
    desktop_.type(question);
    desktop_.tap(Key::Return);
    return true;
}

QList<QJsonObject> Program::notesIn(const QString &path)
{
    QList<QJsonObject> found;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return found;
    const QJsonObject store = QJsonDocument::fromJson(file.readAll()).object();
    const QJsonArray buckets = store.value("buckets"_L1).toArray();
    for (const QJsonValue &bucket : buckets) {
        const QJsonArray notes = bucket["notes"_L1].toArray();
        for (const QJsonValue &value : notes) {
            QJsonObject note = value.toObject();
            note.insert("context"_L1, bucket["context"_L1]);
            found.append(note);
        }
    }
    return found;
}

bool Program::waitForPlace(const QString &text) const
{
    return waitUntil([&] {
        const auto open = openNote();
        return !open.isEmpty()
            && open.constFirst()["context"_L1]["displayName"_L1].toString().contains(text);
    });
}

bool Program::writeNotes(const QJsonArray &notes) const
{
    const QJsonObject context{{u"key"_s, u"web-url:https://a.test/"_s},
                              {u"displayName"_s, u"a.test"_s},
                              {u"source"_s, u"webURL"_s}};
    const QJsonObject bucket{{u"context"_s, context}, {u"notes"_s, notes}};
    const QJsonDocument content(QJsonObject{{u"buckets"_s, QJsonArray{bucket}}});
    QFile file(notesFile());
    return QDir().mkpath(dataHome_ + u"/vellumo"_s) && file.open(QIODevice::WriteOnly)
        && file.write(content.toJson()) > 0;
}

void keepSession(const QString &refreshToken, const QString &uid, const QString &email)
{
    Keyring::store(u"refreshToken"_s, refreshToken.toUtf8());
    Keyring::store(u"uid"_s, uid.toUtf8());
    Keyring::store(u"email"_s, email.toUtf8());
}

} // namespace vellumo::test
