// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>
#include <QPointer>

namespace vellumo {

class BilingualText;

/// Informs the user that other applications can no longer be read: a modal alert above all windows,
/// with the keyboard, whatever the window manager thinks of windows that come by themselves. It
/// exists only while it is shown.
class RevokedAlert : public QObject {
    Q_OBJECT

public:
    /// The texts must outlive the alert.
    explicit RevokedAlert(const BilingualText &texts) : texts_(texts) { }
    ~RevokedAlert() override;
    Q_DISABLE_COPY_MOVE(RevokedAlert)

    /// Returns at once. One that is shown already is raised.
    void show();
    void close();

Q_SIGNALS:
    /// The alert has left the screen.
    void closed(bool opensSettings);

private:
    const BilingualText &texts_;
    QPointer<QMessageBox> box_;
};

} // namespace vellumo
