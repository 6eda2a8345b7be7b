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

/// A reader and a tracker on the real platform, with a desktop, pages,
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

    /// The time for one double tap, plus what a busy machine adds.
    static constexpr std::chrono::milliseconds longestReading =
        ReadingBudget::total + std::chrono::milliseconds(250);
    /// Measures how long it takes to read the selection and its context.
    [[nodiscard]] std::chrono::milliseconds timeOfReading();

    /// Returns whether the platform has noticed that the window's process is in front.
    [[nodiscard]] bool isFrontmost(const Application &application);
    /// Starts the application and brings it to the front.
    [[nodiscard]] bool open(Application &application);

    /// Returns whether the application in front answers questions. On a machine that is too busy,
    /// only the text that it has published can be read.
    [[nodiscard]] bool answers();

    QString writeFile(const QString &name, const QByteArray &content);
    [[nodiscard]] QString folder(const QString &name) const;

    /// Returns every type of the clipboard with its bytes, as another program receives them.
    [[nodiscard]] QList<std::pair<QString, QByteArray>> clipboard();
    /// Returns the text that another program would paste with the middle button.
    [[nodiscard]] QString primary();

    Desktop desktop;
    PageServer pages;

private:
    struct Platform;
    QTemporaryDir files_;
    std::unique_ptr<Platform> platform_;
};

} // namespace vellumo::test
