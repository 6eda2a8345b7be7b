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

/// One note as a page shows it. Follows the library, so that what is asked meanwhile appears.
/// Everything shown is plain and of bounded length; what is copied is whole.
class OpenedNote : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(QString sourceText READ sourceText NOTIFY changed)
    Q_PROPERTY(QString translation READ translation NOTIFY changed)
    Q_PROPERTY(QString explanation READ explanation NOTIFY changed)
    Q_PROPERTY(QString origin READ origin NOTIFY changed)
    Q_PROPERTY(bool hasPage READ hasPage NOTIFY changed)
    Q_PROPERTY(QString pageError READ pageError NOTIFY changed)
    Q_PROPERTY(bool isShortened READ isShortened NOTIFY changed)
    Q_PROPERTY(QObject *exchanges READ exchanges CONSTANT)

public:
    /// What is handed over must outlive this object.
    OpenedNote(NotesLibrary &library, PageHosting &host, BilingualText &texts,
               QObject *parent = nullptr);

    /// Opens the note in a row of the library's list, or of its latest notes.
    Q_INVOKABLE void openRow(int row);
    Q_INVOKABLE void openLatest(int row);
    Q_INVOKABLE void close();

    [[nodiscard]] bool isOpen() const { return entry_.has_value(); }
    /// Absent without an open note.
    [[nodiscard]] std::optional<ReadingContext> context() const
    {
        return entry_ ? std::optional(entry_->context) : std::nullopt;
    }
    [[nodiscard]] QString sourceText() const;
    [[nodiscard]] QString translation() const;
    [[nodiscard]] QString explanation() const;
    /// Where and when it was read.
    [[nodiscard]] QString origin() const;
    /// Whether it was read on a page that can be opened again.
    [[nodiscard]] bool hasPage() const;
    /// The address of the page, when it could not be opened; empty otherwise.
    [[nodiscard]] QString pageError() const;
    /// Whether the texts shown are only the beginning of the note's.
    [[nodiscard]] bool isShortened() const;
    [[nodiscard]] QAbstractItemModel *exchanges() { return &exchanges_; }

    Q_INVOKABLE void askFurther();
    Q_INVOKABLE void copy();
    Q_INVOKABLE void openPage();

    /// The whole note as a text to paste elsewhere.
    [[nodiscard]] static QString asText(const NoteWithContext &entry);

Q_SIGNALS:
    void changed();
    /// Another note, not the same one with more in it.
    void opened();

private:
    void open(const NoteWithContext *entry);
    void follow();

    NotesLibrary &library_;
    PageHosting &host_;
    BilingualText &texts_;
    std::optional<NoteWithContext> entry_;
    bool isPageUnopened_ = false; ///< no browser could be started
    ExchangeModel exchanges_;
};

} // namespace vellumo
