// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "driver/Application.h"
#include "driver/PageServer.h"
#include <QTemporaryDir>
#include <optional>

namespace vellumo::test {

/// A page in Firefox with one sentence, which gets selected with the mouse.
class WebPage {
public:
    /// The sentence is the content of the element with the id "sentence". `suffix` is what follows
    /// the name in the page's address.
    WebPage(const Desktop &desktop, QString name, const QString &html, const QString &suffix = {});

    [[nodiscard]] bool isInstalled() const { return browser_->isInstalled(); }

    /// Starts the browser, brings it to the front and selects the sentence.
    bool open();

    [[nodiscard]] WindowId window() const { return window_; }
    [[nodiscard]] QString address() const { return address_; }
    [[nodiscard]] QString selection() const { return pages_.selection(name_); }
    [[nodiscard]] bool hasFocus() const { return pages_.hasFocus(name_); }

private:
    const Desktop &desktop_;
    QString name_;
    PageServer pages_;
    QTemporaryDir profile_;
    QString address_;
    std::optional<Application> browser_;
    WindowId window_ = 0;
};

} // namespace vellumo::test
