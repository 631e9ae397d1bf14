// Every text of the package has its translation, in the compiled catalogues and under the context that
// asks for it, and the catalogues hold nothing else.

#include <QDir>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>
#include <QXmlStreamReader>

namespace {

using Key = QPair<QString, QString>;  // context and source text

struct Message {
    Key key;
    QString translation;
    bool finished = true;
};

QList<Message> readCatalogue(const QString& fileName) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("%s cannot be read", qPrintable(fileName));
    }
    QList<Message> messages;
    QString context;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            messages << Message{{context, xml.readElementText()}, {}};
        } else if (xml.name() == QLatin1String("translation")) {
            messages.last().finished = !xml.attributes().hasAttribute("type");
            messages.last().translation = xml.readElementText();
        }
    }
    return messages;
}

QString describe(const Key& key) {
    return key.first + QLatin1String(": ") + key.second;
}

QStringList placeholders(const QString& text) {
    QStringList found;
    QRegularExpressionMatchIterator matches = QRegularExpression("%\\d|<[^>]+>").globalMatch(text);
    while (matches.hasNext()) {
        found << matches.next().captured();
    }
    found.sort();
    return found;
}

}  // namespace

class TestCatalogues : public QObject {
    Q_OBJECT

    QList<Key> sources_;

    static void languages() {
        QTest::addColumn<QString>("language");
        QTest::newRow("English") << "en";
        QTest::newRow("Russian") << "ru";
    }

private slots:
    void initTestCase() {
        QTemporaryDir folder;
        const QString found = folder.filePath("sources.ts");
        QProcess lupdate;
        lupdate.start(LUPDATE, {"-silent", "-locations", "none", "-I", PACKAGE, PACKAGE, "-ts", found});
        QVERIFY(lupdate.waitForFinished());
        // It complains, for example, of a class whose texts would have the context of its base.
        QCOMPARE(QString::fromUtf8(lupdate.readAllStandardError()), QString());
        QCOMPARE(lupdate.exitCode(), 0);
        for (const Message& message : readCatalogue(found)) {
            sources_ << message.key;
        }
        QVERIFY(sources_.size() > 100);
    }

    void everyText_isTranslated_data() { languages(); }

    void everyText_isTranslated() {
        QFETCH(QString, language);
        QTranslator catalogue;
        QVERIFY(catalogue.load(QStringLiteral(":/lumo/language/lumo_%1.qm").arg(language)));
        const QRegularExpression han("\\p{Han}");
        const QRegularExpression cyrillic("\\p{Cyrillic}");
        QStringList faults;
        for (const Key& key : qAsConst(sources_)) {
            const QString text = catalogue.translate(key.first.toUtf8(), key.second.toUtf8());
            if (text.isEmpty()) {
                faults << "missing: " + describe(key);
            } else if (text.contains(han)) {
                faults << "still Chinese: " + describe(key);
            } else if (language == "ru" && key.second.contains(han) && !text.contains(cyrillic)) {
                faults << "not Russian: " + describe(key);
            } else if (placeholders(text) != placeholders(key.second)) {
                faults << "placeholders or tags: " + describe(key);
            }
        }
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join('\n')));
    }

    void catalogues_holdNothingElse_data() { languages(); }

    void catalogues_holdNothingElse() {
        QFETCH(QString, language);
        const QSet<Key> used(sources_.begin(), sources_.end());
        QMap<QString, QStringList> contexts;
        for (const Key& key : qAsConst(sources_)) {
            contexts[key.second] << key.first;
        }
        const QDir folder(QStringLiteral(PACKAGE "/resources/language"));
        QMap<Key, QString> seen;
        QStringList faults;
        for (const QString& file : folder.entryList({"*_" + language + ".ts"})) {
            for (const Message& message : readCatalogue(folder.filePath(file))) {
                const QString what = file + ", " + describe(message.key);
                if (!message.finished) {
                    faults << "unfinished: " + what;
                }
                if (!used.contains(message.key)) {
                    const QStringList there = contexts.value(message.key.second);
                    faults << "nobody asks for " + what +
                                  (there.isEmpty() ? QString() : "; it is in " + there.join(", "));
                }
                if (seen.contains(message.key)) {
                    faults << "already in " + seen[message.key] + ": " + what;
                }
                seen[message.key] = file;
            }
        }
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join('\n')));
    }

    // Texts that manuals and scripts of users name, odd spellings included.
    void english_isWhatUsersKnow() {
        QTranslator catalogue;
        QVERIFY(catalogue.load(":/lumo/language/lumo_en.qm"));
        QFile file(QStringLiteral(ENGLISH));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
        QVERIFY(lines.size() > 100);
        for (const QString& line : lines) {
            const QStringList fields = line.split('\t');
            QCOMPARE(fields.size(), 3);
            const QString text = catalogue.translate(fields[0].toUtf8(), fields[1].toUtf8());
            QVERIFY2(text == fields[2], qPrintable(line + "\nis: " + text));
        }
    }
};

QTEST_APPLESS_MAIN(TestCatalogues)
#include "test_catalogues.moc"
