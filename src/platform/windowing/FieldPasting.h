// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace vellumo {

class ClipboardText;

/// Pastes into the program's own text fields. The fields themselves would block for seconds when
/// the program that owns the clipboard hangs; this reads the text beside the main thread, and
/// inserts it when it comes.
class FieldPasting : public QObject {
    Q_OBJECT

public:
    /// Sees to every text field of the application. `text` must outlive this object.
    explicit FieldPasting(ClipboardText &text, QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    ClipboardText &text_;
};

} // namespace vellumo
