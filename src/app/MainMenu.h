// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QKeySequence>
#include <QList>
#include <QObject>
#include <QString>
#include <functional>

class QWindow;

namespace vellumo {

/// The items of the program's menus with their keys. No bar shows them: ordinary windows take the
/// keys. Floating panels do not, so that no key in them can end the program.
class MainMenu : public QObject {
    Q_OBJECT

public:
    struct Item {
        QString title;
        QKeySequence key; ///< empty when it has none
        /// Returns whether there was something to act on; if not, the window sees the key.
        std::function<bool()> action;
    };
    struct Menu {
        QString title;
        QList<Item> items;
    };

    explicit MainMenu(QList<Menu> menus, QObject *parent = nullptr);

    /// Returns an item that sends `command`, such as "paste", to the control with the keyboard
    /// focus.
    [[nodiscard]] static Item editItem(const QString &title, const QKeySequence &key,
                                       const QByteArray &command);

    [[nodiscard]] const QList<Menu> &menus() const { return menus_; }

    /// Enables the keys while this window has the keyboard. An item's action runs before the window
    /// sees the key.
    void attachTo(QWindow &window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QList<Menu> menus_;
};

} // namespace vellumo
