#include "support/suite.h"
#include "support/text.h"

#include <QDirIterator>
#include <QLibraryInfo>
#include <QMultiMap>
#include <QProcess>
#include <QRegularExpression>
#include <QTranslator>
#include <QXmlStreamReader>

/// Every text of the package has its translation, in the compiled catalogues and under the context that asks
/// for it, and the catalogues hold nothing else.
class TestCatalogues : public QObject {
    Q_OBJECT

    /// Translations by context and text, a tab between; an unfinished one is empty.
    static QMultiMap<QString, QString> read(const QString& fileName) {
        QXmlStreamReader xml(test::contentOf(fileName));
        QMultiMap<QString, QString> messages;
        QString context, source;
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isStartElement() && xml.name() == QLatin1String("name")) {
                context = xml.readElementText() + '\t';
            } else if (xml.isStartElement() && xml.name() == QLatin1String("source")) {
                source = xml.readElementText();
            } else if (xml.isStartElement() && xml.name() == QLatin1String("translation")) {
                const bool isFinished = !xml.attributes().hasAttribute("type");
                messages.insert(context + source, isFinished ? xml.readElementText() : QString());
            }
        }
        return messages;
    }

private slots:
    void everyText_isTranslatedOnceAndNothingElseIs() {
        const QString package = QFINDTESTDATA("../../lumo");
        QProcess lupdate;
        lupdate.start(QLibraryInfo::location(QLibraryInfo::BinariesPath) + "/lupdate",
                      {"-silent", "-locations", "none", "-I", package, package, "-ts", "asked.ts"});
        QVERIFY(lupdate.waitForFinished(-1));
        // It complains, for example, of a class whose texts would have the context of its base.
        QCOMPARE(QString::fromUtf8(lupdate.readAllStandardError()), QString());
        const QStringList asked = read("asked.ts").keys();
        QVERIFY(asked.size() > 100);
        QStringList faults;
        for (const auto& [language, script] :
             {std::pair("en", "[A-Za-z0-9]"), std::pair("ru", "\\p{Cyrillic}")}) {
            QTranslator compiled;
            QVERIFY(compiled.load(QString(":/lumo/language/lumo_%1").arg(language)));
            QMultiMap<QString, QString> written;
            QDirIterator files(package + "/resources/language", {QString("*_%1.ts").arg(language)});
            while (files.hasNext()) {
                written += read(files.next());
            }
            const QRegularExpression han("\\p{Han}"), own(script), others("%[2-9]|</?\\w");
            for (const QString& message : asked) {
                const QString source = message.section('\t', 1);
                const QString text =
                    compiled.translate(message.section('\t', 0, 0).toUtf8(), source.toUtf8());
                const bool isOwnLanguage =
                    !text.contains(han) && (text.contains(own) || !source.contains(han));
                const bool isFilledIn =
                    text.count("%1") == source.count("%1") && text.count(others) == source.count(others);
                if (text.isEmpty() || written.values(message) != QStringList(text) || !isOwnLanguage ||
                    !isFilledIn) {
                    faults << message + " has " + written.values(message).join(" and ");
                }
                written.remove(message);
            }
            faults << written.keys().replaceInStrings(QRegularExpression("^"), "nobody asks for ");
        }
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join('\n')));
    }

    /// Texts that manuals and scripts of users name, odd spellings included.
    void english_isWhatUsersKnow() {
        QTranslator compiled;
        QVERIFY(compiled.load(":/lumo/language/lumo_en"));
        const auto lines =
            QString::fromUtf8(test::contentOf(QFINDTESTDATA("english.tsv"))).split('\n', Qt::SkipEmptyParts);
        QVERIFY(lines.size() > 100);
        for (const QString& line : lines) {
            const QStringList fields = line.split('\t');
            QCOMPARE(compiled.translate(fields[0].toUtf8(), fields[1].toUtf8()), fields.value(2));
        }
    }
};

LUMO_TEST(TestCatalogues)
#include "test_catalogues.moc"
