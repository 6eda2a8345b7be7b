// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "export/NotesExport.h"
#include <QObject>
#include <QSet>
#include <QUuid>
#include <QtQml/qqmlregistration.h>
#include <optional>

namespace vellumo {

class BilingualText;
class NotesLibrary;
class PageHosting;

/// View model of the export: asks for the notes, the format and the file, then reports progress and
/// the result.
class NotesExporter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool isOpen READ isOpen WRITE setOpen NOTIFY changed)
    Q_PROPERTY(Scope scope READ scope WRITE setScope NOTIFY changed)
    Q_PROPERTY(Format format READ format WRITE setFormat NOTIFY changed)
    Q_PROPERTY(QString scopeText READ scopeText NOTIFY changed)
    Q_PROPERTY(QString formatText READ formatText NOTIFY changed)
    Q_PROPERTY(State state READ state NOTIFY changed)
    Q_PROPERTY(bool asksToReplace READ asksToReplace NOTIFY changed)
    Q_PROPERTY(QString replaceText READ replaceText NOTIFY changed)
    Q_PROPERTY(qreal progress READ progress NOTIFY changed)
    Q_PROPERTY(QString outcome READ outcome NOTIFY changed)

public:
    enum class State : quint8 {
        Idle,
        Writing,
        Written,
        Cancelled,
        NoSpace,
        NotAllowed,
        NoFolder,
        NotAFile,
        Failed, ///< the detail is the system's message
    };
    Q_ENUM(State)
    enum class Scope : quint8 { All, Found, Selected };
    Q_ENUM(Scope)
    enum class Format : quint8 {
        Markdown = static_cast<quint8>(ExportFormat::Markdown),
        Csv = static_cast<quint8>(ExportFormat::Csv),
        Json = static_cast<quint8>(ExportFormat::Json),
    };
    Q_ENUM(Format)

    /// All references must outlive the exporter.
    NotesExporter(NotesLibrary &library, PageHosting &host, BilingualText &texts,
                  QObject *parent = nullptr);

    /// Returns whether the export sheet is open. Opening preselects the selected notes, else those
    /// that the search found, else all. Closing cancels a pending question for the file.
    [[nodiscard]] bool isOpen() const { return isOpen_; }
    void setOpen(bool open);

    /// Opens the sheet for the selected notes if this one is among them, and otherwise for it
    /// alone, which is then selected until the sheet is closed or the note is written.
    Q_INVOKABLE void openFor(const QString &id);

    [[nodiscard]] Scope scope() const { return scope_; }
    void setScope(Scope scope);
    /// Returns the number of notes in the scope, as a text.
    [[nodiscard]] QString scopeText() const;
    [[nodiscard]] Format format() const { return static_cast<Format>(format_); }
    void setFormat(Format format);
    /// Returns a description of the format.
    [[nodiscard]] QString formatText() const;

    /// Asks for a file and writes it when it is chosen. The notes and the format are those at the
    /// time of this call.
    Q_INVOKABLE void chooseFile();
    /// Returns whether the chosen file exists. The user then calls replace() or chooseFile().
    [[nodiscard]] bool asksToReplace() const { return asksToReplace_; }
    /// Returns the question whether to replace the file.
    [[nodiscard]] QString replaceText() const;
    Q_INVOKABLE void replace();

    [[nodiscard]] State state() const { return state_; }
    /// Returns the written share of the notes, from 0 to 1.
    [[nodiscard]] qreal progress() const;
    /// Returns a text about the progress or the result.
    [[nodiscard]] QString outcome() const;

    Q_INVOKABLE void cancel() { job_.cancel(); }
    /// Hides the result.
    Q_INVOKABLE void dismiss();
    Q_INVOKABLE void openFolder();

Q_SIGNALS:
    void changed();

private:
    /// An export whose file is not chosen yet.
    struct Plan {
        NotesExport::Order order;
        std::optional<QSet<QUuid>> selection; ///< absent in other scopes
    };

    [[nodiscard]] Plan plan() const;
    [[nodiscard]] QString fileName() const;
    void useFile(const QString &path);
    void write();
    void finish(const NotesExport::Result &result);
    [[nodiscard]] QString writtenText() const;

    NotesLibrary &library_;
    PageHosting &host_;
    BilingualText &texts_;
    Scope scope_ = Scope::All;
    ExportFormat format_ = ExportFormat::Markdown;
    Plan plan_;
    int question_ = 0; ///< number of the latest; answers to earlier ones are ignored
    QString path_;
    std::optional<QSet<QUuid>> writtenSelection_; ///< of the export in progress
    bool isOpen_ = false;
    bool hasSelected_ = false; ///< the selection was made by openFor()
    bool asksToReplace_ = false;
    bool isFolderUnopened_ = false; ///< no file manager could be opened
    State state_ = State::Idle;
    int written_ = 0;
    int total_ = 0;
    QString detail_;
    NotesExport job_; ///< declared last: destroyed first, since it may still be writing
};

} // namespace vellumo
