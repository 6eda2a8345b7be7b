// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "library/PageHosting.h"
#include <QFileDialog>
#include <QPointer>

class QWindow;

namespace vellumo {

class BilingualText;

/// Asks where to write an export, in the desktop's file dialog. One dialog at a time; window-modal
/// and asynchronous. The window asks afterwards whether an existing file may be replaced.
class SaveFileDialog {
public:
    /// The texts must outlive the dialog.
    explicit SaveFileDialog(const BilingualText &texts);
    ~SaveFileDialog();
    Q_DISABLE_COPY_MOVE(SaveFileDialog)

    /// Above the window, which may be null.
    void ask(QWindow *above, const PageHosting::FileQuestion &question);
    /// Closes the dialog, if one is shown; nothing is answered.
    void withdraw();

private:
    const BilingualText &texts_;
    QPointer<QFileDialog> dialog_;
    QString folder_; ///< in which the last file was chosen
};

} // namespace vellumo
