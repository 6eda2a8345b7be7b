// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/fake/FakeDesktop.h"
#include "settings/AppConfig.h"
#include "settings/UserPreferences.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;

class TestConfiguration : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void values_data();
    void values();
    void outputLanguage_data();
    void outputLanguage();
};

void TestConfiguration::values_data()
{
    QTest::addColumn<QByteArray>("environment");
    QTest::addColumn<QJsonValue>("user");
    QTest::addColumn<QJsonValue>("installed");
    QTest::addColumn<QString>("expected");
    const QJsonValue absent(QJsonValue::Undefined);
    QTest::newRow("environment wins")
        << QByteArray(" env\n") << QJsonValue(u"user"_s) << QJsonValue(u"built"_s) << u"env"_s;
    QTest::newRow("blank environment hides nothing")
        << QByteArray("  ") << absent << QJsonValue(u" built\n"_s) << u"built"_s;
    QTest::newRow("user over installation")
        << QByteArray() << QJsonValue(u"user"_s) << QJsonValue(u"built"_s) << u"user"_s;
    QTest::newRow("not a string") << QByteArray() << absent << QJsonValue(5) << QString();
    QTest::newRow("nothing") << QByteArray() << absent << absent << QString();
}

void TestConfiguration::values()
{
    QFETCH(QByteArray, environment);
    QFETCH(QJsonValue, user);
    QFETCH(QJsonValue, installed);
    QFETCH(QString, expected);
    const QString key = u"VELLUMO_TEST_KEY"_s;
    qputenv("VELLUMO_TEST_KEY", environment);
    QJsonObject userLayer;
    QJsonObject installedLayer;
    if (!user.isUndefined()) {
        userLayer.insert(key, user);
    }
    if (!installed.isUndefined()) {
        installedLayer.insert(key, installed);
    }
    const auto value = AppConfig({userLayer, installedLayer}).value(key);
    QCOMPARE(value.has_value(), !expected.isEmpty());
    QCOMPARE(value.value_or(QString()), expected);
}

void TestConfiguration::outputLanguage_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QString>("expected");
    QTest::newRow("trimmed") << QVariant(u" en-GB "_s) << u"en-GB"_s;
    const QString fallback = UserPreferences::systemDefaultLanguage();
    QTest::newRow("blank") << QVariant(u" \n"_s) << fallback;
    QTest::newRow("absent") << QVariant() << fallback;
}

void TestConfiguration::outputLanguage()
{
    QFETCH(QVariant, stored);
    QFETCH(QString, expected);
    FakeDefaultsStore defaults;
    const UserPreferences preferences(defaults);
    defaults.setValue(u"preferredOutputLanguage"_s, stored);
    QCOMPARE(preferences.preferredOutputLanguage(), expected);

    QCOMPARE(UserPreferences::defaultLanguage({u"zh-Hant-TW"_s, u"en"_s}), u"Chinese"_s);
    QCOMPARE(UserPreferences::defaultLanguage({u"ZH"_s}), u"Chinese"_s);
    QCOMPARE(UserPreferences::defaultLanguage({u"de-DE"_s, u"zh"_s}), u"English"_s);
    QCOMPARE(UserPreferences::defaultLanguage({}), u"English"_s);
}

QTEST_GUILESS_MAIN(TestConfiguration)
#include "test_configuration.moc"
