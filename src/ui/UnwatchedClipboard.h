// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

/// Text items of Qt Quick ask every new owner of the clipboard what it holds, to keep their
/// canPaste right: a question to another process that blocks, for seconds when the owner hangs,
/// although no paste is wanted. Stops that for one item. Pasting still works.
class UnwatchedClipboard : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *field READ field WRITE setField REQUIRED)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickItem *field() const { return field_; }
    void setField(QQuickItem *field);

private:
    QPointer<QQuickItem> field_;
};

} // namespace vellumo
