#include "app/language.h"
#include "app/noticebar.h"

#include <QLabel>
#include <QToolButton>
#include <QtTest>

#include <memory>

/// What the operator sees of the file service's problems.
class AppNotices : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { window_.reset(); }
    void problem_isToldInThePanelsLanguage_data();
    void problem_isToldInThePanelsLanguage();
    void longPath_keepsTheFileName();
    void sameProblemAgain_isOneNotice();
    void list_keepsTheLastOnesNewestFirst();
    void dismiss_takesItAllAway();
    void takesNoFocus();

private:
    QString shown() const { return bar_->findChild<QLabel*>(QStringLiteral("lblNotice"))->text(); }
    QToolButton* button(const char* name) const { return bar_->findChild<QToolButton*>(QLatin1String(name)); }
    void click(const char* name) { QTest::mouseClick(button(name), Qt::LeftButton); }
    QWidget* list() const { return window_->findChild<QWidget*>(QStringLiteral("noticeList")); }

    std::unique_ptr<QWidget> window_;
    app::NoticeBar* bar_ = nullptr;
};

void AppNotices::init() {
    window_ = std::make_unique<QWidget>();
    window_->resize(800, 600);
    bar_ = new app::NoticeBar(window_.get());
    bar_->resize(600, 50);
    window_->show();
    QApplication::setActiveWindow(window_.get());
}

void AppNotices::problem_isToldInThePanelsLanguage_data() {
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QString>("text");
    // Chinese first: a process does not go back to it.
    QTest::newRow("Chinese") << "cn" << 3 << "no JSON: expected a colon"
                             << QStringLiteral("/x/a.json 第3行第7列：文件格式错误：名称后缺少冒号");
    QTest::newRow("Chinese, no project")
        << "cn" << 0 << "the file holds no project" << QStringLiteral("/x/a.json：文件内容不是工程");
    QTest::newRow("English")
        << "en" << 3 << "no JSON: expected a colon"
        << "/x/a.json, line 3, column 7: this is no JSON: a colon is missing after a name";
    QTest::newRow("Russian") << "ru" << 3 << "no JSON: expected a colon"
                             << QStringLiteral(
                                    "/x/a.json, строка 3, столбец 7: это не JSON: нет двоеточия после имени");
    QTest::newRow("no place") << "en" << 0 << "No space left on device"
                              << "/x/a.json: the disk is full";
    QTest::newRow("two parts") << "ru" << 0 << "the folder could not be synced: Permission denied"
                               << QStringLiteral(
                                      "/x/a.json: не удалось подтвердить запись на диск: нет прав "
                                      "доступа");
    QTest::newRow("no project") << "ru" << 0 << "the file holds no project"
                                << QStringLiteral("/x/a.json: это не файл проекта");
    QTest::newRow("settings") << "ru" << 0 << "the file holds settings, no project"
                              << QStringLiteral("/x/a.json: это файл настроек, а не проекта");
    QTest::newRow("statement") << "ru" << 3 << "unknown statement type \"moveX\""
                               << QStringLiteral(
                                      "/x/a.json, строка 3, столбец 7: неизвестный тип команды: \"moveX\"");
    QTest::newRow("no file") << "ru" << 0 << "there is no such file"
                             << QStringLiteral("/x/a.json: нет такого файла");
    QTest::newRow("cannot be kept")
        << "ru" << 0 << "the file in its place holds something else and cannot be kept"
        << QStringLiteral("/x/a.json: в прежнем файле другое содержимое, и его нельзя сохранить");
    QTest::newRow("no records") << "ru" << 3 << "the file holds no list of records"
                                << QStringLiteral(
                                       "/x/a.json, строка 3, столбец 7: в файле нет списка записей");
    QTest::newRow("count") << "ru" << 3 << "there are 18 rows for 19 ports; no port is in use"
                           << QStringLiteral(
                                  "/x/a.json, строка 3, столбец 7: строк: 18, а портов: 19; все порты "
                                  "отключены");
    QTest::newRow("no number, and more")
        << "ru" << 3 << "'power' is no number; faults in 2 more records"
        << QStringLiteral("/x/a.json, строка 3, столбец 7: 'power': не число; ошибки и в других записях: 2");
    QTest::newRow("protected") << "ru" << 0 << "Existing file /x/a.json is not writable"
                               << QStringLiteral("/x/a.json: файл защищён от записи");
    QTest::newRow("protected, in Qt's words")
        << "ru" << 0 << QStringLiteral("Существующий файл «/x/a.json» защищён от записи")
        << QStringLiteral("/x/a.json: файл защищён от записи");
    QTest::newRow("unknown reason") << "ru" << 0 << "Stale file handle"
                                    << "/x/a.json: Stale file handle";
}

void AppNotices::problem_isToldInThePanelsLanguage() {
    QFETCH(QString, language);
    QFETCH(int, line);
    QFETCH(QString, reason);
    QFETCH(QString, text);
    app::installLanguage(language);
    QVERIFY(!bar_->isVisible());
    bar_->report(QStringLiteral("/x/a.json"), line, line > 0 ? 7 : 0, reason);
    QVERIFY(bar_->isVisible());
    QCOMPARE(shown(), QStringLiteral("⚠ ") + text);
    QVERIFY2(bar_->texts().first().endsWith(text), qPrintable(bar_->texts().first()));
}

void AppNotices::longPath_keepsTheFileName() {
    app::installLanguage(QStringLiteral("en"));
    const QString folder = QStringLiteral("/a_folder_with_a_long_name").repeated(8);
    bar_->report(folder + QStringLiteral("/lumo_param.json"), 2, 1, QStringLiteral("illegal value"));
    QVERIFY2(shown().contains(QLatin1String("/lumo_param.json, line 2")), qPrintable(shown()));
    QVERIFY2(!shown().contains(folder), qPrintable(shown()));
    QVERIFY(bar_->texts().first().contains(folder + QStringLiteral("/lumo_param.json")));
}

void AppNotices::sameProblemAgain_isOneNotice() {
    for (int i = 0; i < 3; ++i)
        bar_->report(QStringLiteral("/x/a.json"), 0, 0, QStringLiteral("Permission denied"));
    QCOMPARE(bar_->texts().size(), 1);
    bar_->report(QStringLiteral("/x/b.json"), 0, 0, QStringLiteral("Permission denied"));
    bar_->report(QStringLiteral("/x/a.json"), 0, 0, QStringLiteral("Permission denied"));
    QCOMPARE(bar_->texts().size(), 3);
}

void AppNotices::list_keepsTheLastOnesNewestFirst() {
    for (int i = 1; i <= 15; ++i)
        bar_->report(QStringLiteral("/x/%1.json").arg(i), 0, 0, QStringLiteral("Permission denied"));
    QVERIFY(!list()->isVisible());
    click("btnNotices");
    QVERIFY(list()->isVisible());
    QCOMPARE(bar_->texts().size(), 10);
    QVERIFY(bar_->texts().first().contains(QLatin1String("/x/15.json")));
    QVERIFY(bar_->texts().last().contains(QLatin1String("/x/6.json")));
    click("btnNotices");
    QVERIFY(!list()->isVisible());
}

void AppNotices::dismiss_takesItAllAway() {
    bar_->report(QStringLiteral("/x/a.json"), 0, 0, QStringLiteral("Permission denied"));
    bar_->report(QStringLiteral("/x/b.json"), 0, 0, QStringLiteral("Permission denied"));
    click("btnNotices");
    click("btnDismiss");
    QVERIFY(!bar_->isVisible() && !list()->isVisible());
    // What comes back after that is news again.
    bar_->report(QStringLiteral("/x/b.json"), 0, 0, QStringLiteral("Permission denied"));
    QVERIFY(bar_->isVisible() && !list()->isVisible());
    QCOMPARE(bar_->texts().size(), 1);
}

void AppNotices::takesNoFocus() {
    auto* field = new QWidget(window_.get());
    field->setFocusPolicy(Qt::StrongFocus);
    field->show();
    field->setFocus();
    bar_->report(QStringLiteral("/x/a.json"), 0, 0, QStringLiteral("Permission denied"));
    bar_->report(QStringLiteral("/x/b.json"), 0, 0, QStringLiteral("Permission denied"));
    click("btnNotices");
    QVERIFY(field->hasFocus());
    click("btnDismiss");
    QVERIFY(field->hasFocus());
}

QTEST_MAIN(AppNotices)
#include "tst_notices.moc"
