// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "driver/Application.h"
#include "driver/Waiting.h"
#include "platform/ConsentPrompting.h"
#include "platform/atspi/AtspiAccessibility.h"
#include "platform/dbus/SessionBus.h"
#include "platform/fake/FakeDesktop.h"
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace vellumo::test {

struct RecordingPrompt : ConsentPrompting {
    void ask(std::function<void(bool)> answered) override
    {
        ++timesAsked;
        answer = std::move(answered);
    }
    int timesAsked = 0;
    std::function<void(bool)> answer;
};

/// An accessibility backend with its consent and prompt.
struct Reader {
    explicit Reader(bool consented)
    {
        if (consented) {
            defaults.setValue(QStringLiteral("accessibilityConsent"), true);
        }
        accessibility = std::make_unique<AtspiAccessibility>(AtspiAccessibility::Collaborators{
            .session = session,
            .defaults = defaults,
            .settings = {.consent = QStringLiteral("accessibilityConsent"),
                         .leftOff = QStringLiteral("accessibilityLeftOff")},
            .prompting = prompt,
            .windowTitle = [](qint64) { return std::optional(QStringLiteral("Peer")); }});
    }
    [[nodiscard]] bool connect() const
    {
        return waitUntil([this] { return accessibility->isConnected(); });
    }

    FakeDefaultsStore defaults;
    RecordingPrompt prompt;
    SessionBus session;
    std::unique_ptr<AtspiAccessibility> accessibility;
};

/// The helper program that shows trees of objects.
class Peer {
public:
    explicit Peer(const QJsonObject &tree) : Peer(QList{tree}) { }

    /// Each tree has a separate connection. The process gets the name, unless it is empty.
    explicit Peer(const QList<QJsonObject> &trees, const QString &name = {})
        : process_({QStringLiteral("peer"), programNamed(name), files(trees), {}, {}})
    {
        process_.launch();
    }

    [[nodiscard]] bool waitUntilReady()
    {
        return waitUntil([this] { return output().contains(u"ready"); });
    }
    [[nodiscard]] QString output() { return process_.standardOutput(); }
    [[nodiscard]] qint64 id() const { return process_.processIdentifier(); }
    void signal(int number) const { process_.signal(number); }

private:
    [[nodiscard]] QString programNamed(const QString &name) const
    {
        const auto program = QStringLiteral(VELLUMO_ATSPI_PEER);
        const QString link = folder_.filePath(name);
        return !name.isEmpty() && QFile::link(program, link) ? link : program;
    }
    [[nodiscard]] QStringList files(const QList<QJsonObject> &trees) const
    {
        QStringList names;
        for (const QJsonObject &tree : trees) {
            names.append(folder_.filePath(QStringLiteral("%1.json").arg(names.size())));
            QFile file(names.constLast());
            if (file.open(QIODevice::WriteOnly)) {
                file.write(QJsonDocument(tree).toJson());
            }
        }
        return names;
    }

    QTemporaryDir folder_;
    Application process_;
};

} // namespace vellumo::test
