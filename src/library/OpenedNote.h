// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "library/ExchangeModel.h"
#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <optional>

namespace vellumo {

class BilingualText;
class NotesLibrary;
class PageHosting;

/// View model of a note's page. Follows the library, so that new follow-ups appear. Shown texts are
/// plain and of bounded length; copy() copies the whole note.
class OpenedNote : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(QString noteId READ noteId NOTIFY changed)
    Q_PROPERTY(QString sourceText READ sourceText NOTIFY changed)
    Q_PROPERTY(QString translation READ translation NOTIFY changed)
    Q_PROPERTY(QString explanation READ explanation NOTIFY changed)
    Q_PROPERTY(QString origin READ origin NOTIFY changed)
    Q_PROPERTY(bool hasPage READ hasPage NOTIFY changed)
    Q_PROPERTY(QString pageError READ pageError NOTIFY changed)
    Q_PROPERTY(bool isShortened READ isShortened NOTIFY changed)
    Q_PROPERTY(QObject *exchanges READ exchanges CONSTANT)

public:
    /// All references must outlive this object.
    OpenedNote(NotesLibrary &library, PageHosting &host, BilingualText &texts,
               QObject *parent = nullptr);

    /// Opens the note in a row of the library's list, or of its newest notes.
    Q_INVOKABLE void openRow(int row);
    Q_INVOKABLE void openLatest(int row);
    /// Opens a note of the library; does nothing if it has none with this id.
    void openNote(const QUuid &id);
    Q_INVOKABLE void close();
    /// Opens the note that is this far from the open one in the library's list; does nothing where
    /// there is none.
    Q_INVOKABLE void step(int by);

    [[nodiscard]] bool isOpen() const { return entry_.has_value(); }
    /// Returns the id of the open note; empty without one.
    [[nodiscard]] QString noteId() const { return entry_ ? entry_->note.id.toString() : QString(); }
    /// Returns the context of the open note, if any.
    [[nodiscard]] std::optional<ReadingContext> context() const
    {
        return entry_ ? std::optional(entry_->context) : std::nullopt;
    }
    [[nodiscard]] QString sourceText() const;
    [[nodiscard]] QString translation() const;
    [[nodiscard]] QString explanation() const;
    /// Returns where and when it was read.
    [[nodiscard]] QString origin() const;
    /// Returns whether it was read on a page that can be opened.
    [[nodiscard]] bool hasPage() const;
    /// Returns a text with the address of a page that could not be opened; empty otherwise.
    [[nodiscard]] QString pageError() const;
    /// Returns whether a shown text is cut.
    [[nodiscard]] bool isShortened() const;
    [[nodiscard]] QAbstractItemModel *exchanges() { return &exchanges_; }

    Q_INVOKABLE void askFurther();
    Q_INVOKABLE void copy();
    Q_INVOKABLE void openPage();

    // For a note of the library that need not be open, by its id.
    Q_INVOKABLE void copyNote(const QString &id);
    [[nodiscard]] Q_INVOKABLE bool hasPageOf(const QString &id) const;
    /// Opens the note if its page cannot be opened, to show the address.
    Q_INVOKABLE void openPageOf(const QString &id);

    /// Returns the whole note as plain text for the clipboard.
    [[nodiscard]] static QString asText(const NoteWithContext &entry);

Q_SIGNALS:
    void changed();
    /// Emitted when another note is opened, not when the open one has changed.
    void opened();

private:
    void open(const NoteWithContext *entry);
    [[nodiscard]] const NoteWithContext *find(const QString &id) const;
    void follow();

    NotesLibrary &library_;
    PageHosting &host_;
    BilingualText &texts_;
    std::optional<NoteWithContext> entry_;
    bool isPageUnopened_ = false; ///< no browser could be opened
    ExchangeModel exchanges_;
};

} // namespace vellumo
