// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

/// Routes input method composition to a text field while another item of the panel has the focus,
/// so that the first key already starts a composition. The field takes the focus after the
/// composition, since a change of the focus would end it. Main thread only.
class CompositionRoute : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *scope READ scope WRITE setScope NOTIFY changed)
    Q_PROPERTY(QQuickItem *field READ field WRITE setField NOTIFY changed)

public:
    using QObject::QObject;

    /// The root of the items whose composition is routed.
    [[nodiscard]] QQuickItem *scope() const { return scope_; }
    void setScope(QQuickItem *scope);
    /// The target; null while typing is not possible.
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
    QPointer<QQuickItem> focused_; ///< the focused item, if it is not a text field
    QMetaObject::Connection window_;
};

} // namespace vellumo
