// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "support/Program.h"

#include "support/AccessibleTree.h"
#include "support/Waiting.h"
#include <QDir>
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

/// The only field in the panel, in whatever language.
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
    , configHome_(qEnvironmentVariable("HOME") + u'/' + folder + u"/config"_s)
    , dataHome_(qEnvironmentVariable("HOME") + u'/' + folder + u"/data"_s)
{
    QDir().mkpath(configHome_ + u"/vellumo"_s);
    QDir().mkpath(dataHome_);
    setEnvironment(u"XDG_CONFIG_HOME"_s, configHome_);
    setEnvironment(u"XDG_DATA_HOME"_s, dataHome_);
    setSetting(u"accessibilityConsent"_s, u"true"_s);
    setSetting(u"hasCompletedOnboarding"_s, u"true"_s);
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

bool Program::waitForNoPanel(std::chrono::milliseconds time) const
{
    return waitUntil([this] { return !panel().has_value(); }, time);
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

bool Program::waitForText(const QString &text) const
{
    return waitUntil([&] { return panelText().contains(text); });
}

QString Program::panelText() const
{
    QStringList names;
    const auto items = accessibleItems(process_->processIdentifier());
    for (const AccessibleItem &item : items)
        names.append(item.role + u": "_s + item.name);
    return names.join(u'\n');
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

QString Program::notesFile() const
{
    return dataHome_ + u"/vellumo/notes.json"_s;
}

QList<QJsonObject> Program::notes() const
{
    QList<QJsonObject> found;
    QFile file(notesFile());
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

bool Program::waitForNotes(qsizetype count) const
{
    return waitUntil([&] { return notes().size() == count; });
}

void keepSession(const QString &refreshToken, const QString &uid, const QString &email)
{
    const QList<std::pair<QString, QString>> items{
        {u"refreshToken"_s, refreshToken}, {u"uid"_s, uid}, {u"email"_s, email}};
    for (const auto &[account, value] : items)
        outputOf(u"secret-tool"_s,
                 {u"store"_s, u"--label=vellumo"_s, u"service"_s, u"app.vellumo.Vellumo"_s,
                  u"account"_s, account},
                 value.toUtf8(), patience);
}

} // namespace vellumo::test
