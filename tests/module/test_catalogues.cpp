#include "support/suite.h"
#include "support/text.h"

#include <QDir>
#include <QMultiMap>
#include <QProcess>
#include <QRegularExpression>
#include <QTranslator>
#include <QXmlStreamReader>

namespace {

/// Translations by context and text, a tab between; an unfinished one is empty.
QMultiMap<QString, QString> readCatalogue(const QString& fileName) {
    QXmlStreamReader xml(test::contentOf(fileName));
    QMultiMap<QString, QString> messages;
    QString context, source;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            source = context + '\t' + xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            const bool isFinished = !xml.attributes().hasAttribute("type");
            const QString translation = xml.readElementText();
            messages.insert(source, isFinished ? translation : QString());
        }
    }
    return messages;
}

QStringList placeholders(const QString& text) {
    QStringList found;
    auto matches = QRegularExpression("%\\d|<[^>]+>").globalMatch(text);
    while (matches.hasNext()) {
        found << matches.next().captured();
    }
    found.sort();
    return found;
}

}  // namespace

/// Every text of the package has its translation, in the compiled catalogues and under the context that asks
/// for it, and the catalogues hold nothing else.
class TestCatalogues : public QObject {
    Q_OBJECT

    QStringList asked_;  // context and text

private slots:
    void initTestCase() {
        QProcess lupdate;
        lupdate.start(LUPDATE, {"-silent", "-locations", "none", "-I", PACKAGE, PACKAGE, "-ts", "asked.ts"});
        QVERIFY(lupdate.waitForFinished(-1));
        // It complains, for example, of a class whose texts would have the context of its base.
        QCOMPARE(QString::fromUtf8(lupdate.readAllStandardError()), QString());
        QCOMPARE(lupdate.exitCode(), 0);
        asked_ = readCatalogue("asked.ts").keys();
        QVERIFY(asked_.size() > 100);
    }

    void everyText_isTranslatedOnceAndNothingElseIs_data() {
        QTest::addColumn<QString>("script");
        QTest::newRow("en") << "[A-Za-z0-9]";
        QTest::newRow("ru") << "\\p{Cyrillic}";
    }

    void everyText_isTranslatedOnceAndNothingElseIs() {
        QFETCH(QString, script);
        const QString language = QTest::currentDataTag();
        QTranslator compiled;
        QVERIFY(compiled.load(":/lumo/language/lumo_" + language));
        const QDir folder(PACKAGE "/resources/language");
        QMultiMap<QString, QString> written;
        for (const QString& file : folder.entryList({"*_" + language + ".ts"})) {
            written += readCatalogue(folder.filePath(file));
        }
        const QRegularExpression han("\\p{Han}");
        QStringList faults;
        for (const QString& message : asked_) {
            const QString source = message.section('\t', 1);
            const QString text = compiled.translate(message.section('\t', 0, 0).toUtf8(), source.toUtf8());
            const QStringList translations = written.values(message);
            if (translations.size() != 1 || text.isEmpty() || text != translations[0]) {
                faults << "missing, unfinished or double: " + message;
            } else if (text.contains(han) ||
                       (source.contains(han) && !text.contains(QRegularExpression(script)))) {
                faults << "of another language: " + message;
            } else if (placeholders(text) != placeholders(source)) {
                faults << "placeholders or tags: " + message;
            }
            written.remove(message);
        }
        for (const QString& message : written.keys()) {
            faults << "nobody asks for: " + message;
        }
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join('\n')));
    }

    /// Texts that manuals and scripts of users name, odd spellings included.
    void english_isWhatUsersKnow() {
        QTranslator compiled;
        QVERIFY(compiled.load(":/lumo/language/lumo_en"));
        const auto lines = QString::fromUtf8(test::contentOf(ENGLISH)).split('\n', Qt::SkipEmptyParts);
        QVERIFY(lines.size() > 100);
        for (const QString& line : lines) {
            const QStringList fields = line.split('\t');
            QCOMPARE(compiled.translate(fields[0].toUtf8(), fields[1].toUtf8()), fields.value(2));
        }
    }
};

LUMO_TEST(TestCatalogues)
#include "test_catalogues.moc"
