// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "driver/Application.h"
#include "driver/Waiting.h"
#include <QJsonArray>
#include <QJsonObject>
#include <memory>

namespace vellumo::test {

/// The built vellumo with separate data and settings, driven as by a user.
class Program {
public:
    /// `path` is the executable. Settings and data are those of the desktop's user.
    Program(const Desktop &desktop, QString path);
    /// With separate settings and data in a folder of this name, onboarded and with consent.
    Program(const Desktop &desktop, QString path, const QString &folder);

    void setSetting(const QString &key, const QString &value);
    void setEnvironment(const QString &name, const QString &value);
    /// Starts the program through a command, such as one that changes what it finds on the disk.
    /// Program and arguments are appended.
    void setWrapper(const QStringList &command) { wrapper_ = command; }

    /// Starts it and waits until it listens for double taps. Without other arguments its main
    /// window stays closed.
    bool start(const QStringList &arguments = inBackground());
    /// Starts it without waiting for anything.
    bool launch(const QStringList &arguments = inBackground());
    [[nodiscard]] static QStringList inBackground() { return {QStringLiteral("--background")}; }

    /// Another process of the same user, with the same settings and data; not yet launched.
    [[nodiscard]] std::unique_ptr<Application> another(const QStringList &arguments = {}) const;
    /// Runs the program once more to its end. Returns its exit status, or nothing if it crashed or
    /// printed something.
    [[nodiscard]] std::optional<int> startAgain(const QStringList &arguments = {}) const;

    [[nodiscard]] bool hasStarted() const { return process_ != nullptr; }
    [[nodiscard]] Application &process() { return *process_; }
    /// Returns what it has printed and what it shows, for the log of a failed test.
    [[nodiscard]] QString report() const;
    /// Returns the folder with its settings and data.
    [[nodiscard]] QString folder() const { return folder_; }
    /// Returns the content of every file there, and what the process has printed.
    [[nodiscard]] QByteArray allThatIsKept() const;

    /// Returns the result panel: the visible window at the top edge of the screen.
    [[nodiscard]] std::optional<WindowId> panel() const;
    [[nodiscard]] std::optional<WindowId>
    waitForPanel(std::chrono::milliseconds time = patience) const;
    [[nodiscard]] bool waitForNoPanel(std::chrono::milliseconds time = patience) const
    {
        return waitUntil([this] { return !panel().has_value(); }, time);
    }
    /// Double-taps until no panel is there.
    [[nodiscard]] bool dismissPanel() const;
    /// Waits until the panel shows an answer, which is when follow-ups can be asked.
    [[nodiscard]] bool waitForAnswer() const;
    /// Waits until something that the panel shows contains the text.
    [[nodiscard]] bool waitForText(const QString &text) const
    {
        return waitUntil([&] { return panelText().contains(text); });
    }
    /// Returns all accessible elements of the panel, one on each line.
    [[nodiscard]] QString panelText() const;
    /// Returns where the element of this name is on the screen. `role` is the end of its role;
    /// without one, labels do not count.
    [[nodiscard]] std::optional<QRect> find(const QString &name, const QString &role = {}) const;
    /// Waits until it rests in one place.
    [[nodiscard]] std::optional<QRect> waitFor(const QString &name, const QString &role = {}) const;
    /// Clicks it once it rests in one place with no other program's window over it.
    [[nodiscard]] bool click(const QString &name, const QString &role = {}) const;
    /// Clicks the follow-up field of the panel, types the question and submits it.
    bool ask(const QString &question) const;

    [[nodiscard]] QString notesFile() const
    {
        return dataHome_ + QStringLiteral("/vellumo/notes.json");
    }
    /// Returns every note in the file, each with its "context" beside its fields.
    [[nodiscard]] QList<QJsonObject> notes() const { return notesIn(notesFile()); }
    /// Returns the note that the program keeps while its panel is open.
    [[nodiscard]] QList<QJsonObject> openNote() const
    {
        return notesIn(dataHome_ + QStringLiteral("/vellumo/open-note.json"));
    }
    [[nodiscard]] bool waitForNotes(qsizetype count) const
    {
        return waitUntil([&] { return notes().size() == count; });
    }
    /// Waits until the note of the open panel is filed under a name with this text.
    [[nodiscard]] bool waitForPlace(const QString &text) const;
    /// Makes a file with these notes, all of the page https://a.test/.
    [[nodiscard]] bool writeNotes(const QJsonArray &notes) const;

private:
    [[nodiscard]] static QList<QJsonObject> notesIn(const QString &path);

    const Desktop &desktop_;
    QString path_;
    QStringList wrapper_;
    QString folder_;
    QString configHome_;
    QString dataHome_;
    QList<std::pair<QString, QString>> environment_;
    std::unique_ptr<Application> process_;
};

/// Stores a session in the desktop's keyring, as after an earlier sign-in.
void keepSession(const QString &refreshToken, const QString &uid, const QString &email);

} // namespace vellumo::test
