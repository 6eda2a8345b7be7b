// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

/// Leads what an input method composes to a text field while another item of the panel has the
/// keyboard, so that the first letter already begins a composition. The field takes the focus when
/// the composition is over: before, that would end it. Main thread only.
class CompositionRoute : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *scope READ scope WRITE setScope NOTIFY changed)
    Q_PROPERTY(QQuickItem *field READ field WRITE setField NOTIFY changed)

public:
    using QObject::QObject;

    /// Items below it are served.
    [[nodiscard]] QQuickItem *scope() const { return scope_; }
    void setScope(QQuickItem *scope);
    /// Null while nothing can be typed.
    [[nodiscard]] QQuickItem *field() const { return field_; }
    void setField(QQuickItem *field);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void changed();

private:
    void followWindow();
    void followFocus();

    QPointer<QQuickItem> scope_;
    QPointer<QQuickItem> field_;
    QPointer<QQuickItem> focused_; ///< has the keyboard and is no field
    QMetaObject::Connection window_;
};

} // namespace vellumo
