// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "pill/NoteListModel.h"
#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <functional>

namespace vellumo {

/// State of the pill and its list. Every change is drawn at once. Main thread only.
class NotesPillModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the entrance's controller")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(QString label READ label NOTIFY countChanged)
    Q_PROPERTY(QObject *rows READ rows CONSTANT)
    Q_PROPERTY(int noteCount READ noteCount NOTIFY notesChanged)
    Q_PROPERTY(QString listTitle READ listTitle NOTIFY notesChanged)
    Q_PROPERTY(qreal listHeight READ listHeight NOTIFY notesChanged)
    Q_PROPERTY(qreal textScale READ textScale WRITE setTextScale NOTIFY notesChanged)
    Q_PROPERTY(bool expanded READ isExpanded NOTIFY expandedChanged)
    Q_PROPERTY(bool showsMenu READ showsMenu NOTIFY expandedChanged)
    Q_PROPERTY(bool highlighted READ isHighlighted NOTIFY highlightedChanged)
    Q_PROPERTY(bool pillHovered READ isPillHovered NOTIFY pillHoveredChanged)

public:
    using QObject::QObject;

    /// Called with the note of a chosen row.
    std::function<void(const ReadingNote &note)> onSelect;

    /// Returns the number on the pill.
    [[nodiscard]] int count() const { return count_; }
    void setCount(int count);
    /// Returns the text on the pill.
    [[nodiscard]] QString label() const;

    /// Returns the list's rows, in this order.
    [[nodiscard]] const QList<ReadingNote> &notes() const { return rows_.notes(); }
    void setNotes(const QList<ReadingNote> &notes);

    enum class Face : quint8 { List, Menu };

    /// Returns whether the panel shows the list, or the menu.
    [[nodiscard]] bool isExpanded() const { return expanded_; }
    void expandInto(Face face);
    void fold();
    /// Returns whether the menu is shown, or was shown last.
    [[nodiscard]] bool showsMenu() const { return face_ == Face::Menu; }

    /// Returns whether the pill is drawn in its attention state.
    [[nodiscard]] bool isHighlighted() const { return highlighted_; }
    void setHighlighted(bool highlighted);

    /// Returns whether the pointer is over the collapsed pill.
    [[nodiscard]] bool isPillHovered() const { return pillHovered_; }
    void setPillHovered(bool hovered);

    [[nodiscard]] QAbstractListModel *rows() { return &rows_; }
    [[nodiscard]] int noteCount() const { return rows_.rowCount(); }
    [[nodiscard]] QString listTitle() const;
    [[nodiscard]] qreal listHeight() const;
    /// Returns the desktop's factor for text, which the view sets; rows are as much higher.
    [[nodiscard]] qreal textScale() const { return textScale_; }
    void setTextScale(qreal scale);
    Q_INVOKABLE void select(int row);

Q_SIGNALS:
    /// Emitted by the view when the user asks for the main window.
    void windowRequested();
    void hidingRequested();
    void quitRequested();
    void countChanged();
    void notesChanged();
    void expandedChanged();
    void highlightedChanged();
    void pillHoveredChanged();

private:
    NoteListModel rows_;
    int count_ = 0;
    qreal textScale_ = 1;
    bool expanded_ = false;
    Face face_ = Face::List;
    bool highlighted_ = false;
    bool pillHovered_ = false;
};

} // namespace vellumo
