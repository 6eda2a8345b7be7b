// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSet>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

class NoteRowsModel;

/// The notes that are marked in a list. They stay marked through searches and other groupings,
/// until selecting ends.
class NoteSelection : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool isActive READ isActive WRITE setActive NOTIFY changed)
    Q_PROPERTY(int count READ count NOTIFY changed)

public:
    /// The rows must outlive the selection.
    explicit NoteSelection(NoteRowsModel &rows, QObject *parent = nullptr);

    /// While notes are being selected. Leaving forgets all of them.
    [[nodiscard]] bool isActive() const { return isActive_; }
    void setActive(bool active);
    [[nodiscard]] int count() const { return static_cast<int>(selected_.size()); }
    [[nodiscard]] const QSet<QUuid> &marked() const { return selected_; }
    [[nodiscard]] bool contains(const QUuid &id) const { return selected_.contains(id); }

    /// Marks the note of a row, or takes its mark. Begins selecting.
    Q_INVOKABLE void toggle(int row);
    /// Marks everything from the row that was toggled last up to this one; what an earlier call
    /// has marked beyond goes again. Begins selecting.
    Q_INVOKABLE void extendTo(int row);
    /// The next extension starts a new range.
    Q_INVOKABLE void dropAnchor() { anchor_ = -1; }
    /// Marks every note of the list. Begins selecting.
    Q_INVOKABLE void selectAll();

Q_SIGNALS:
    void changed();

private:
    void publish();

    NoteRowsModel &rows_;
    bool isActive_ = false;
    QSet<QUuid> selected_;
    QSet<QUuid> before_; ///< what was marked when the anchor was set
    int anchor_ = -1; ///< a row; -1 without one
};

} // namespace vellumo
