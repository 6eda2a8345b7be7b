// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ConsentPrompting.h"
#include "platform/atspi/AtspiAccessibility.h"
#include "platform/fake/FakeDesktop.h"
#include "support/Application.h"
#include "support/Waiting.h"
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

/// Consent, prompt and the accessibility made of them.
struct Reader {
    explicit Reader(bool consented)
    {
        if (consented) {
            defaults.setValue(QStringLiteral("accessibilityConsent"), true);
        }
        accessibility = std::make_unique<AtspiAccessibility>(
            defaults, prompt, [](qint64) { return std::optional(QStringLiteral("Peer")); });
    }
    [[nodiscard]] bool connect() const
    {
        return waitUntil([this] { return accessibility->isConnected(); });
    }

    FakeDefaultsStore defaults;
    RecordingPrompt prompt;
    std::unique_ptr<AtspiAccessibility> accessibility;
};

/// The helper program, showing one tree of objects.
class Peer {
public:
    explicit Peer(const QJsonObject &tree)
    {
        QFile file(folder_.filePath(QStringLiteral("tree.json")));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(QJsonDocument(tree).toJson());
        }
        file.close();
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
    QTemporaryDir folder_;
    Application process_{{QStringLiteral("peer"),
                          QStringLiteral(VELLUMO_ATSPI_PEER),
                          {folder_.filePath(QStringLiteral("tree.json"))},
                          {},
                          {}}};
};

} // namespace vellumo::test
