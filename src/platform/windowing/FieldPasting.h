// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace vellumo {

class ClipboardText;

/// Pastes into the program's own text fields. The fields themselves would block for seconds if the
/// clipboard's owner hangs; this class reads the text on another thread and inserts it when it
/// arrives.
class FieldPasting : public QObject {
    Q_OBJECT

public:
    /// Handles all text fields of the application. `text` must outlive this object.
    explicit FieldPasting(ClipboardText &text, QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    ClipboardText &text_;
};

} // namespace vellumo
