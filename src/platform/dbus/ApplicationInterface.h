// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QHash>
#include <QObject>
#include <QStringList>
#include <functional>

namespace vellumo {

/// The program on the session bus, as desktops start and address it: org.freedesktop.Application at
/// a path made of its name. Callers are not trusted: what they send is bounded, and what does not
/// fit is answered with an error that repeats none of it.
class ApplicationInterface : public QObject, protected QDBusContext {
    Q_OBJECT

public:
    static constexpr qsizetype mostUrls = 16; ///< in one call
    static constexpr qsizetype longestUrl = 65'536;

    explicit ApplicationInterface(QObject *parent = nullptr);

    /// By name; to be set before offerOn(). They run from the event loop, after the caller has been
    /// answered.
    QHash<QString, std::function<void()>> actions;

    /// Takes calls on this bus, which is open, and asks for the program's name. Never blocks.
    void offerOn(QDBusConnection bus);

    // What the bus calls, and the program's own start.
    void activate();
    void open(const QStringList &urls);
    void activateAction(const QString &name, bool hasParameter);

Q_SIGNALS:
    // The first two are emitted from the event loop, after the caller has been answered.
    void activationRequested();
    void openRequested(const QStringList &urls);
    /// The name belongs to another process.
    void nameTaken();

private:
    void schedule(std::function<void()> work);
    void refuse(const QString &why) const;
};

} // namespace vellumo
