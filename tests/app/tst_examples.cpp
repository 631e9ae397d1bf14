#include "app/examples/examplesbutton.h"
#include "app/examples/exampleshelf.h"
#include "mendo/modulemanager.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMenu>
#include <QtTest>

/// Examples are copied for the operator, and what he made of a copy is kept.
class AppExamples : public QObject {
    Q_OBJECT
private slots:
    void init();
    void copy_isThereAndCanBeChanged();
    void whatWasChanged_stays();
    void withoutProject_hasNone();
    void whatCannotBeTaken_isNamed_data();
    void whatCannotBeTaken_isNamed();
    void everyExampleOfThisProject_hasATitle();
    void button_isThereWhileNothingIsInTheWay();

private:
    QString path(const QString& name) const { return QDir(folder_->path()).filePath(name); }
    void write(const QString& name, const QByteArray& text) const;
    QByteArray read(const QString& name) const;
    app::ExampleShelf shelf() const { return {path(QStringLiteral("from")), path(QStringLiteral("to"))}; }

    std::unique_ptr<QTemporaryDir> folder_;
    QString error_;
};

void AppExamples::write(const QString& name, const QByteArray& text) const {
    QVERIFY(QDir().mkpath(QFileInfo(path(name)).path()));
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
}

QByteArray AppExamples::read(const QString& name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
}

void AppExamples::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    write(QStringLiteral("from/seam/seam.json"), "[]");
    write(QStringLiteral("from/seam/lumo_port.json"), "{}");
    write(QStringLiteral("from/bays/lumo_param.json"), "{}");
    // As it is where it is installed.
    QFile::setPermissions(path(QStringLiteral("from/seam/seam.json")), QFile::ReadOwner);
}

void AppExamples::copy_isThereAndCanBeChanged() {
    QCOMPARE(shelf().names(), QStringList({QStringLiteral("bays"), QStringLiteral("seam")}));
    QCOMPARE(shelf().take(QStringLiteral("seam"), &error_), path(QStringLiteral("to/seam")));
    QCOMPARE(shelf().project(QStringLiteral("seam")), path(QStringLiteral("to/seam/seam.json")));
    QVERIFY(QFile::permissions(path(QStringLiteral("to/seam/seam.json"))) & QFile::WriteOwner);
    QCOMPARE(read(QStringLiteral("to/seam/lumo_port.json")), QByteArray("{}"));
}

void AppExamples::whatWasChanged_stays() {
    QVERIFY(!shelf().take(QStringLiteral("seam"), &error_).isEmpty());
    write(QStringLiteral("to/seam/seam.json"), "[1]");
    QVERIFY(QFile::remove(path(QStringLiteral("to/seam/lumo_port.json"))));
    QVERIFY(!shelf().take(QStringLiteral("seam"), &error_).isEmpty());
    QCOMPARE(read(QStringLiteral("to/seam/seam.json")), QByteArray("[1]"));
    QCOMPARE(read(QStringLiteral("to/seam/lumo_port.json")), QByteArray("{}"));
}

void AppExamples::withoutProject_hasNone() {
    QVERIFY(!shelf().take(QStringLiteral("bays"), &error_).isEmpty());
    QVERIFY(shelf().project(QStringLiteral("bays")).isEmpty());
}

void AppExamples::whatCannotBeTaken_isNamed_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("blocked");
    QTest::newRow("there is none") << "../from/seam"
                                   << "";
    QTest::newRow("no folder can be made") << "seam"
                                           << "to";
    QTest::newRow("a file stands in its place") << "seam"
                                                << "to/seam";
}

void AppExamples::whatCannotBeTaken_isNamed() {
    QFETCH(QString, name);
    QFETCH(QString, blocked);
    if (!blocked.isEmpty())
        write(blocked, "in the way");
    QVERIFY(shelf().take(name, &error_).isEmpty());
    QVERIFY(error_.startsWith(path(QStringLiteral("to"))));
}

void AppExamples::everyExampleOfThisProject_hasATitle() {
    const QStringList names = app::ExampleShelf(QStringLiteral(EXAMPLES), QString()).names();
    QVERIFY(names.size() >= 4);
    for (const QString& name : names)
        QVERIFY2(app::ExampleShelf::title(name) != name, qPrintable(name));
}

void AppExamples::button_isThereWhileNothingIsInTheWay() {
    mendo::ModuleObject* root = m()->regist(this, QStringLiteral("lumo"));
    root->append(this, QStringLiteral("program"));
    root->set(this, QStringLiteral("execute.state"), QStringLiteral("idle"), true);
    QWidget header;
    app::ExamplesButton button(shelf(), &header);
    button.follow();
    QVERIFY(!button.isHidden());
    QSignalSpy chosen(&button, &app::ExamplesButton::chosen);
    button.findChild<QMenu*>()->actions().last()->trigger();
    QCOMPARE(chosen.value(0).value(0).toString(), QStringLiteral("seam"));

    root->set(this, QStringLiteral("execute.state"), QStringLiteral("busy"), true);
    QVERIFY(button.isHidden());
    root->set(this, QStringLiteral("execute.state"), QStringLiteral("idle"), true);
    root->c(QStringLiteral("program"))->loadJson(this, QJsonArray{QJsonObject{{"type", "delay"}}});
    QVERIFY(button.isHidden());
    root->c(QStringLiteral("program"))->loadJson(this, QJsonArray());
    QVERIFY(!button.isHidden());
    app::ExamplesButton none(app::ExampleShelf(QString(), QString()), &header);
    none.follow();
    QVERIFY(none.isHidden());
}

QTEST_MAIN(AppExamples)
#include "tst_examples.moc"
