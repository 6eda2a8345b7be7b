// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The dialog that asks where to write an export.

#include "app/SaveFileDialog.h"
#include "ui/BilingualText.h"
#include <QApplication>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;

class TestSaveDialog : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void asksForANewFile()
    {
        const QTemporaryDir folder;
        const BilingualText texts([] { return u"English"_s; });
        QStringList chosen;
        const auto shown = [] {
            const QWidgetList windows = QApplication::topLevelWidgets();
            QList<QFileDialog *> dialogs;
            for (QWidget *window : windows) {
                if (auto *dialog = qobject_cast<QFileDialog *>(window)) {
                    dialogs.append(dialog);
                }
            }
            return dialogs;
        };
        {
            SaveFileDialog save(texts);
            for (const QString &name : {u"first"_s, u"second"_s}) { // which replaces the first
                save.ask(nullptr,
                         {name, u"md"_s, [&](const QString &path) { chosen.append(path); }});
                QCOMPARE(shown().size(), 1);
            }
            QFileDialog *const dialog = shown().constFirst();
            QVERIFY(dialog->isVisible());
            QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptSave);
            QCOMPARE(dialog->selectedFiles().constFirst().section(u'/', -1), u"second.md"_s);
            dialog->setDirectory(folder.path());
            dialog->selectFile(u"tides"_s); // gets the suffix
            static_cast<QDialog *>(dialog)->accept();
            QCOMPARE(chosen, QStringList{folder.filePath(u"tides.md"_s)});
            QTRY_VERIFY(shown().isEmpty());

            save.ask(nullptr, {u"third"_s, u"csv"_s, [&](const QString &) { chosen.clear(); }});
            QCOMPARE(shown().constFirst()->directory().path(), folder.path());
        }
        QVERIFY(shown().isEmpty()); // withdrawn, without an answer
        QCOMPARE(chosen.size(), 1);
    }
};

QTEST_MAIN(TestSaveDialog)
#include "test_save_dialog.moc"
