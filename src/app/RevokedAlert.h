// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/Alert.h"

namespace vellumo {

class BilingualText;

/// Informs the user that other applications can no longer be read: a modal alert above all windows,
/// with the keyboard, also where the window manager gives none to windows that open by themselves.
/// It exists only while it is shown.
class RevokedAlert : public QObject {
    Q_OBJECT

public:
    /// Both must outlive the alert. The engine needs the import path of prepareEngine().
    RevokedAlert(QQmlEngine &engine, const BilingualText &texts);

    /// Returns at once. One that is shown already is raised.
    void show();
    /// Counts as "Later".
    void close();

Q_SIGNALS:
    /// The alert has left the screen.
    void closed(bool opensSettings);

private:
    const BilingualText &texts_;
    Alert alert_;
};

} // namespace vellumo
