// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/fake/FakeDesktop.h"
#include "settings/AppConfig.h"
#include "settings/UserPreferences.h"

#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;

class TestConfiguration : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void values()
    {
        const QString key = u"VELLUMO_TEST_KEY"_s;
        const struct {
            const char *environment;
            QJsonObject user;
            QJsonObject installed;
            QString expected;
        } rows[] = {
            {" env\n", {{key, u"user"_s}}, {{key, u"built"_s}}, u"env"_s},
            {"  ", {}, {{key, u" built\n"_s}}, u"built"_s},
            {"", {{key, u"user"_s}}, {{key, u"built"_s}}, u"user"_s},
            {"", {}, {{key, 5}}, {}},
            {"", {}, {}, {}},
        };
        for (const auto &[environment, user, installed, expected] : rows) {
            qputenv("VELLUMO_TEST_KEY", environment);
            const auto value = AppConfig({user, installed}).value(key);
            QCOMPARE(value.has_value(), !expected.isEmpty());
            QCOMPARE(value.value_or(QString()), expected);
        }
    }

    void outputLanguage()
    {
        FakeDefaultsStore defaults;
        const UserPreferences preferences(defaults);
        QCOMPARE(preferences.preferredOutputLanguage(), UserPreferences::systemDefaultLanguage());
        defaults.setValue(u"preferredOutputLanguage"_s, u" \n"_s);
        QCOMPARE(preferences.preferredOutputLanguage(), UserPreferences::systemDefaultLanguage());
        defaults.setValue(u"preferredOutputLanguage"_s, u" en-GB "_s);
        QCOMPARE(preferences.preferredOutputLanguage(), u"en-GB"_s);
        QCOMPARE(UserPreferences::defaultLanguage({u"zh-Hant-TW"_s, u"en"_s}), u"Chinese"_s);
        QCOMPARE(UserPreferences::defaultLanguage({u"ZH"_s}), u"Chinese"_s);
        QCOMPARE(UserPreferences::defaultLanguage({u"de-DE"_s, u"zh"_s}), u"English"_s);
        QCOMPARE(UserPreferences::defaultLanguage({}), u"English"_s);
        for (const auto language : {"English"_L1, "en"_L1, "EN_us"_L1})
            QVERIFY2(UserPreferences::isEnglish(language), language.data());
        for (const auto language : {"Chinese"_L1, "french"_L1, ""_L1})
            QVERIFY2(!UserPreferences::isEnglish(language), language.data());
    }
};

QTEST_GUILESS_MAIN(TestConfiguration)
#include "test_configuration.moc"
