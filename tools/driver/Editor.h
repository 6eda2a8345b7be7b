// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "driver/Application.h"
#include <QTemporaryDir>
#include <optional>

namespace vellumo::test {

/// A text editor with one sentence, which gets selected.
class Editor {
public:
    Editor(const Desktop &desktop, QString sentence);

    /// Starts it, brings it to the front and selects the sentence.
    bool open();
    bool selectAll() { return select(sentence_.size(), Key::A); }
    bool selectNothing() { return select(0, Key::Home); }

    [[nodiscard]] Application &process() { return *process_; }
    [[nodiscard]] WindowId window() const { return window_; }

private:
    /// Presses a key with Control until so many characters are selected.
    bool select(qsizetype characters, quint8 controlKey);

    const Desktop &desktop_;
    QString sentence_;
    QTemporaryDir folder_;
    std::optional<Application> process_;
    WindowId window_ = 0;
};

} // namespace vellumo::test
