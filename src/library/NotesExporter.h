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

/// Exporting notes as the window shows it: which notes and in which format, then a file, then how
/// far its writing is and what came of it.
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
        Failed, ///< the detail says why, in the system's words
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

    /// What is handed over must outlive the exporter.
    NotesExporter(NotesLibrary &library, PageHosting &host, BilingualText &texts,
                  QObject *parent = nullptr);

    /// Whether it is being asked what to export. Opening proposes what is at hand: the marked
    /// notes, else those that were found, else all. Closing forgets the file that was asked for.
    [[nodiscard]] bool isOpen() const { return isOpen_; }
    void setOpen(bool open);

    [[nodiscard]] Scope scope() const { return scope_; }
    void setScope(Scope scope);
    /// How many notes these are.
    [[nodiscard]] QString scopeText() const;
    [[nodiscard]] Format format() const { return static_cast<Format>(format_); }
    void setFormat(Format format);
    /// What the format is good for.
    [[nodiscard]] QString formatText() const;

    /// Asks for a file, and writes it once it is known: the notes as they are chosen now, in the
    /// format of now.
    Q_INVOKABLE void chooseFile();
    /// Whether the chosen file is there already; the answer is replace() or another chooseFile().
    [[nodiscard]] bool asksToReplace() const { return asksToReplace_; }
    /// The question whether to replace it.
    [[nodiscard]] QString replaceText() const;
    Q_INVOKABLE void replace();

    [[nodiscard]] State state() const { return state_; }
    /// What is written of the notes, from 0 to 1.
    [[nodiscard]] qreal progress() const;
    /// How far the export is, or what came of it.
    [[nodiscard]] QString outcome() const;

    Q_INVOKABLE void cancel() { job_.cancel(); }
    /// What came of it has been seen.
    Q_INVOKABLE void dismiss();
    Q_INVOKABLE void openFolder();

Q_SIGNALS:
    void changed();

private:
    /// What is written once its file is known.
    struct Plan {
        NotesExport::Order order;
        std::optional<QSet<QUuid>> marks; ///< when they were what was chosen
    };

    [[nodiscard]] Plan plan() const;
    [[nodiscard]] QString fileName() const;
    void chosen(const QString &path);
    void write();
    void done(const NotesExport::Result &result);
    [[nodiscard]] QString writtenText() const;

    NotesLibrary &library_;
    PageHosting &host_;
    BilingualText &texts_;
    Scope scope_ = Scope::All;
    ExportFormat format_ = ExportFormat::Markdown;
    Plan plan_;
    int question_ = 0; ///< the last one; answers to earlier ones are ignored
    QString path_;
    std::optional<QSet<QUuid>> writtenMarks_; ///< of the plan that is being written
    bool isOpen_ = false;
    bool asksToReplace_ = false;
    bool isFolderUnopened_ = false; ///< no file manager could be started
    State state_ = State::Idle;
    int written_ = 0;
    int total_ = 0;
    QString detail_;
    NotesExport job_; ///< goes first: it may still be writing
};

} // namespace vellumo
