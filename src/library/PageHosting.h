// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <functional>

class QUrl;
class QUuid;

namespace vellumo {

/// Interface through which pages of the main window use the rest of the program.
class PageHosting {
public:
    /// A request for a file dialog.
    struct FileQuestion {
        QString suggestedName;
        QString suffix; ///< "md", "csv" or "json"
        /// Called with the absolute path, at most once; not called when no file is chosen.
        std::function<void(const QString &path)> onChosen;
    };

    /// A question before a step that cannot be undone.
    struct Question {
        QString message;
        QString informativeText;
        QString agreement; ///< text of a button, as `refusal`
        QString refusal;
        /// Called when the user agrees.
        std::function<void()> onAgreed;
    };

    virtual ~PageHosting() = default;

    /// Puts the text on the clipboard.
    virtual void copyText(const QString &text) = 0;
    /// Returns whether a browser could be started.
    [[nodiscard]] virtual bool openPage(const QUrl &page) = 0;
    /// Opens the panel of a note with the focus in its question field.
    virtual void askFurther(const QUuid &note) = 0;
    /// Shows a file dialog, replacing one that is open. Does not block.
    virtual void chooseFile(const FileQuestion &question) = 0;
    /// Closes an open file dialog without calling onChosen.
    virtual void closeFileDialog() = 0;
    /// Asks over the main window. Does not block. A question that is open stays.
    virtual void ask(const Question &question) = 0;
    /// Returns whether the folder could be shown.
    [[nodiscard]] virtual bool openFolder(const QString &folder) = 0;
};

} // namespace vellumo
