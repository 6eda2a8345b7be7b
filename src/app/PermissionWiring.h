// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "app/RevokedAlert.h"

namespace vellumo {

class Accessibility;
class ConsentDialog;
class PermissionManager;
class ResultPanelController;
class TriggerManager;

/// Reacts when the permission to read other applications is granted or revoked.
class PermissionWiring : public QObject {
    Q_OBJECT

public:
    /// All must outlive this object, which takes the manager's callback.
    struct Collaborators {
        PermissionManager &manager;
        Accessibility &accessibility;
        ConsentDialog &consent;
        TriggerManager &trigger;
        ResultPanelController &resultPanel;
        QQmlEngine &engine;
        const BilingualText &texts;
    };

    explicit PermissionWiring(const Collaborators &with);

private:
    void granted();
    void revoked();

    Collaborators with_;
    RevokedAlert alert_;
};

} // namespace vellumo
