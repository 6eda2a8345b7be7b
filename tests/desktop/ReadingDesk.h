// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "capture/AccessibilitySelectionReader.h"
#include "capture/ContextTracker.h"
#include "capture/ReadingBudget.h"
#include "driver/Application.h"
#include "driver/Desktop.h"
#include "driver/PageServer.h"
#include <QTemporaryDir>

namespace vellumo::test {

/// A reader and a tracker over the real platform, with what a test of them needs: a desktop, pages,
/// files and the clipboard.
class ReadingDesk {
public:
    ReadingDesk();
    ~ReadingDesk();
    ReadingDesk(const ReadingDesk &) = delete;
    ReadingDesk &operator=(const ReadingDesk &) = delete;
    ReadingDesk(ReadingDesk &&) = delete;
    ReadingDesk &operator=(ReadingDesk &&) = delete;

    [[nodiscard]] std::optional<QString> read();
    [[nodiscard]] std::optional<ReadingContext> context();

    /// What one double tap may cost, and what a busy machine adds to it.
    static constexpr std::chrono::milliseconds longestReading =
        ReadingBudget::total + std::chrono::milliseconds(250);
    /// How long it takes to read the selection and its context, whatever they are.
    [[nodiscard]] std::chrono::milliseconds timeOfReading();

    /// Whether the platform has noticed that the window's process is in front.
    [[nodiscard]] bool isFrontmost(const Application &application);
    /// Starts the application and brings it to the front.
    [[nodiscard]] bool open(Application &application);

    /// Whether the application in front answers questions: on a machine that is too busy for that,
    /// only the text that it has published is left to be read.
    [[nodiscard]] bool answers();

    QString writeFile(const QString &name, const QByteArray &content);
    [[nodiscard]] QString folder(const QString &name) const;

    /// Every type of the clipboard with its bytes, as another program receives them.
    [[nodiscard]] QList<std::pair<QString, QByteArray>> clipboard();
    /// Text of the selection that another program would paste with the middle button.
    [[nodiscard]] QString primary();

    Desktop desktop;
    PageServer pages;

private:
    struct Platform;
    QTemporaryDir files_;
    std::unique_ptr<Platform> platform_;
};

} // namespace vellumo::test
