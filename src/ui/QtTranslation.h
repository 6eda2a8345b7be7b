// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTranslator>

namespace vellumo {

class BilingualText;

/// Installs the translation of Qt's own texts, such as those of its file dialog, in the language of
/// the interface. They stay English where Qt's translations are not installed.
class QtTranslation : public QObject {
    Q_OBJECT

public:
    /// The texts must outlive it. Needs the application object.
    explicit QtTranslation(const BilingualText &texts);

private:
    void follow();

    const BilingualText &texts_;
    QTranslator chinese_;
};

} // namespace vellumo
