// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

/// Stops a text item of Qt Quick from querying each new owner of the clipboard to update canPaste.
/// The query blocks, for seconds if the owner hangs, although nothing is pasted. Pasting still
/// works.
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
