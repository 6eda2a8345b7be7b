// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSet>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

class NoteRowsModel;

/// The selected notes of a list, kept by id: they stay selected when the list is searched or
/// regrouped, until selection mode ends.
class NoteSelection : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool isActive READ isActive WRITE setActive NOTIFY changed)
    Q_PROPERTY(int count READ count NOTIFY changed)

public:
    /// The rows must outlive the selection.
    explicit NoteSelection(NoteRowsModel &rows, QObject *parent = nullptr);

    /// Returns whether selection mode is on. Turning it off clears the selection.
    [[nodiscard]] bool isActive() const { return isActive_; }
    void setActive(bool active);
    [[nodiscard]] int count() const { return static_cast<int>(selected_.size()); }
    [[nodiscard]] const QSet<QUuid> &ids() const { return selected_; }
    [[nodiscard]] bool contains(const QUuid &id) const { return selected_.contains(id); }

    /// Toggles the note of a row and makes it the anchor. Turns selection mode on.
    Q_INVOKABLE void toggle(int row);
    /// Selects the range from the anchor to this row, in place of the range of the previous call.
    /// Without an anchor this row becomes it. Turns selection mode on.
    Q_INVOKABLE void extendTo(int row);
    /// Forgets the anchor, so that the next extendTo() starts a new range.
    Q_INVOKABLE void dropAnchor() { anchor_ = -1; }
    /// Selects one note, which need not be in the list, in place of the others. Turns selection
    /// mode on.
    void selectOnly(const QUuid &id);
    /// Selects all notes of the list. Turns selection mode on.
    Q_INVOKABLE void selectAll();

Q_SIGNALS:
    void changed();

private:
    void publish();

    NoteRowsModel &rows_;
    bool isActive_ = false;
    QSet<QUuid> selected_;
    QSet<QUuid> before_; ///< the selection when the anchor was set
    int anchor_ = -1; ///< a row; -1 without one
};

} // namespace vellumo
