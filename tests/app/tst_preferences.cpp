#include "app/preferences.h"
#include "app/workfolder.h"

#include <QtTest>

#include <sys/resource.h>
#include <csignal>

/// Language and working directory, from what was given, remembered or found.
class AppPreferences : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void languageFollowsTheSystem_data();
    void languageFollowsTheSystem();
    void whatWasAskedForIsRemembered();
    void placeOfThePendantIsRemembered();
    void fullDiskLeavesWhatWasRemembered();
    void rememberedLanguageThatIsNoneIsForgotten();
    void folder_data();
    void folder();
    void rememberedFolderThatIsGoneIsNamed();

private:
    QString path(const QString& name) const { return QDir(folder_.path()).filePath(name); }
    QTemporaryDir folder_;
};

void AppPreferences::initTestCase() {
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(path(QStringLiteral("config"))));
    qputenv("XDG_DATA_HOME", QFile::encodeName(path(QStringLiteral("data"))));
    QCoreApplication::setOrganizationName(QStringLiteral("lumo"));
    QCoreApplication::setApplicationName(QStringLiteral("lumo-panel"));
    for (const char* name : {"checkout/lumo/resources", "checkout/deep/below", "elsewhere", "given", "kept"})
        QVERIFY(QDir().mkpath(path(QLatin1String(name))));
    QFile mark(path(QStringLiteral("checkout/lumo/resources/lumo.json")));
    QVERIFY(mark.open(QIODevice::WriteOnly));
}

void AppPreferences::languageFollowsTheSystem_data() {
    QTest::addColumn<QString>("language");
    QTest::newRow("zh_CN") << "cn";
    QTest::newRow("zh_TW") << "cn";
    QTest::newRow("ru_RU") << "ru";
    QTest::newRow("ru") << "ru";
    QTest::newRow("de_DE") << "en";
    QTest::newRow("C") << "en";
    QTest::newRow("rup_MK") << "en";
}

void AppPreferences::languageFollowsTheSystem() {
    QTEST(app::languageOf(QLatin1String(QTest::currentDataTag())), "language");
}

void AppPreferences::whatWasAskedForIsRemembered() {
    QVERIFY(app::Preferences::language().isEmpty());
    QVERIFY(app::Preferences::folder().isEmpty());
    app::Preferences::rememberLanguage(QStringLiteral("ru"));
    app::Preferences::rememberFolder(path(QStringLiteral("kept")));
    QCOMPARE(app::Preferences::language(), QStringLiteral("ru"));
    QCOMPARE(app::Preferences::folder(), path(QStringLiteral("kept")));
}

void AppPreferences::placeOfThePendantIsRemembered() {
    QVERIFY(!app::Preferences::pendantPlace());
    QVERIFY(app::Preferences::pendantUnfolded());
    app::Preferences::rememberPendant(QPoint(-12, 34), false);
    QCOMPARE(app::Preferences::pendantPlace(), std::optional<QPoint>(QPoint(-12, 34)));
    QVERIFY(!app::Preferences::pendantUnfolded());
}

/// No file can grow longer than a lock file: writing the preferences fails as on a full disk.
void AppPreferences::fullDiskLeavesWhatWasRemembered() {
    app::Preferences::rememberFolder(QString(5000, QLatin1Char('f')));
    QFile file(path(QStringLiteral("config/lumo/lumo-panel.json")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    QVERIFY(before.contains("ffff"));
    file.close();

    std::signal(SIGXFSZ, SIG_IGN);
    rlimit usual{};
    QCOMPARE(::getrlimit(RLIMIT_FSIZE, &usual), 0);
    const rlimit small{1000, usual.rlim_max};
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
    app::Preferences::rememberLanguage(QStringLiteral("cn"));
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &usual), 0);

    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), before);
}

void AppPreferences::rememberedLanguageThatIsNoneIsForgotten() {
    app::Preferences::rememberLanguage(QStringLiteral("../en"));
    QVERIFY(app::Preferences::language().isEmpty());
}

void AppPreferences::folder_data() {
    QTest::addColumn<QString>("current");
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("remembered");
    QTest::addColumn<QString>("entered");
    const QString data = QStringLiteral("data/lumo/lumo-panel");
    QTest::newRow("in a checkout") << "checkout"
                                   << ""
                                   << ""
                                   << "checkout";
    QTest::newRow("deep in a checkout") << "checkout/deep/below"
                                        << ""
                                        << ""
                                        << "checkout/deep/below";
    QTest::newRow("installed") << "elsewhere"
                               << ""
                               << "" << data;
    QTest::newRow("remembered") << "checkout"
                                << ""
                                << "kept"
                                << "kept";
    QTest::newRow("given") << "checkout"
                           << "given"
                           << "kept"
                           << "given";
}

void AppPreferences::folder() {
    QFETCH(QString, current);
    QFETCH(QString, given);
    QFETCH(QString, remembered);
    QFETCH(QString, entered);
    QVERIFY(QDir::setCurrent(path(current)));
    const auto whole = [this](const QString& name) { return name.isEmpty() ? name : path(name); };
    QString lost;
    QVERIFY(app::enterWorkFolder(whole(given), whole(remembered), &lost));
    QCOMPARE(QDir::current(), QDir(path(entered)));
    QVERIFY2(lost.isEmpty(), qPrintable(lost));
}

void AppPreferences::rememberedFolderThatIsGoneIsNamed() {
    QVERIFY(QDir::setCurrent(path(QStringLiteral("checkout"))));
    QString lost;
    QVERIFY(app::enterWorkFolder(QString(), path(QStringLiteral("gone")), &lost));
    QCOMPARE(lost, path(QStringLiteral("gone")));
    QCOMPARE(QDir::current(), QDir(path(QStringLiteral("checkout"))));
}

QTEST_GUILESS_MAIN(AppPreferences)
#include "tst_preferences.moc"
