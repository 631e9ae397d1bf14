// The compiled resources: defaults documents, theme and icons.

#include "kord/thememanager.h"
#include "mendo/modulemanager.h"
#include "mendo/moduleobject.h"

#include <QFile>
#include <QIcon>
#include <QJsonArray>
#include <QJsonObject>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>

namespace {

const QStringList documents{":/lumo/lumo.json", ":/lumo/lumo_en.json", ":/lumo/lumo_ru.json"};

QJsonObject document(const QString& file) {
    return mendo::ModuleManager::readFromJson(file).toObject();
}

/// The document with every `tag` text replaced by "".
QJsonValue withoutTags(const QJsonValue& value) {
    if (value.isArray()) {
        QJsonArray result;
        for (const QJsonValue element : value.toArray()) {
            result.append(withoutTags(element));
        }
        return result;
    }
    if (value.isObject()) {
        QJsonObject result;
        const QJsonObject object = value.toObject();
        for (auto entry = object.begin(); entry != object.end(); ++entry) {
            result[entry.key()] = entry.key() == "tag" ? QJsonValue("") : withoutTags(entry.value());
        }
        return result;
    }
    return value;
}

QStringList tags(const QString& file) {
    QStringList result;
    const QJsonObject root = document(file);
    for (const QJsonValue row : root["default"].toObject()["param"].toArray()) {
        result << row.toObject()["tag"].toString();
    }
    for (const QJsonValue row : root["port"].toArray()) {
        result << row.toObject()["tag"].toString();
    }
    return result;
}

QStringList warnings;
void collectWarnings(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtDebugMsg && type != QtInfoMsg) {
        warnings << text;
    }
}

}  // namespace

class TestResources : public QObject {
    Q_OBJECT
private slots:
    void documents_differInTagsAndTwoTemplates();
    void documents_areInTheirLanguage();
    void documents_beginWithAByteOrderMark();
    void theme_parses();
    void icons_data();
    void icons();
};

void TestResources::documents_differInTagsAndTwoTemplates() {
    const QJsonObject chinese = withoutTags(document(documents[0])).toObject();
    QCOMPARE(chinese["port"].toArray().size(), 19);
    QCOMPARE(QJsonValue(chinese), withoutTags(document(documents[1])));

    QJsonObject russian = withoutTags(document(documents[2])).toObject();
    QJsonObject templates = russian["default"].toObject()["program"].toObject();
    QCOMPARE(templates["open"].toObject(), QJsonObject());
    QCOMPARE(templates["waitDI"].toObject(), (QJsonObject{{"diName", ""}, {"value1", ""}}));
    const QJsonObject full = chinese["default"].toObject()["program"].toObject();
    templates["open"] = full["open"];
    templates["waitDI"] = full["waitDI"];
    QJsonObject defaults = russian["default"].toObject();
    defaults["program"] = templates;
    russian["default"] = defaults;
    QCOMPARE(russian, chinese);
}

void TestResources::documents_areInTheirLanguage() {
    const QList<QRegularExpression> scripts{QRegularExpression("\\p{Han}"), QRegularExpression("[A-Za-z]"),
                                            QRegularExpression("\\p{Cyrillic}")};
    for (int i = 0; i < documents.size(); ++i) {
        QCOMPARE(tags(documents[i]).size(), 15 + 19);
        for (const QString& tag : tags(documents[i])) {
            QVERIFY2(tag.contains(scripts[i]), qPrintable(documents[i] + ": " + tag));
        }
    }
}

void TestResources::documents_beginWithAByteOrderMark() {
    for (const QString& name : documents) {
        QFile file(name);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.read(3), QByteArray("\xEF\xBB\xBF"));
    }
}

void TestResources::theme_parses() {
    const QString sheet = kord::ThemeManager::genStyleSheet(":/UI/style.json");
    QVERIFY(sheet.contains("QPushButton"));
    warnings.clear();
    const auto before = qInstallMessageHandler(collectWarnings);
    QWidget page;
    page.setStyleSheet(sheet);
    auto* button = new QPushButton("x", &page);
    button->ensurePolished();
    const int height = button->sizeHint().height();
    qInstallMessageHandler(before);
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
    // High enough for a gloved finger.
    QVERIFY2(height >= 40, qPrintable(QString::number(height)));
}

void TestResources::icons_data() {
    QTest::addColumn<QString>("name");
    for (const char* name : {"bind", "deviceMonitor", "edit", "new", "oneStep", "open", "paramConfig", "port",
                             "reset", "rigtharrow", "run", "save", "saveAs", "statusMinitor", "stop"}) {
        QTest::newRow(name) << QString(name);
    }
}

void TestResources::icons() {
    QFETCH(QString, name);
    const QImage image(":/img/LaserIcon_" + name + ".png");
    QCOMPARE(image.size(), QSize(96, 96));
    QVERIFY(image.hasAlphaChannel());
    // A drawing on a clear ground: some of it covered, most of it not.
    int covered = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            covered += qAlpha(image.pixel(x, y)) > 128 ? 1 : 0;
        }
    }
    QVERIFY2(covered > 500 && covered < 5000, qPrintable(QString::number(covered)));
}

QTEST_MAIN(TestResources)
#include "test_resources.moc"
