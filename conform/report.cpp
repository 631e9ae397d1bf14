#include "conform/report.h"

#include <QXmlStreamWriter>

#include <algorithm>

namespace conform {

namespace {

using Kind = Outcome::Kind;

constexpr int wordColumn = 8, idColumn = 19;

int countOf(const std::vector<Judged>& all, Kind kind) {
    return int(
        std::count_if(all.begin(), all.end(), [kind](const Judged& j) { return j.outcome.kind == kind; }));
}

QString word(Kind kind) {
    switch (kind) {
        case Kind::Pass:
            return QStringLiteral("pass");
        case Kind::Fail:
            return QStringLiteral("FAIL");
        case Kind::Skip:
            break;
    }
    return QStringLiteral("skipped");
}

}  // namespace

QString judgedText(const Judged& judged) {
    QString text = word(judged.outcome.kind).leftJustified(wordColumn) +
                   QString::fromLatin1(judged.check.id).leftJustified(idColumn) +
                   QString::fromUtf8(judged.check.rule);
    const QString indent = QLatin1Char('\n') + QString(wordColumn + idColumn, QLatin1Char(' '));
    if (!judged.outcome.text.isEmpty()) {
        text += indent + judged.outcome.text;
    }
    for (const QString& violation : judged.violations) {
        text += indent + QStringLiteral("the backend: ") + violation;
    }
    return text;
}

QString countText(const std::vector<Judged>& all) {
    return QStringLiteral("%1 kept, %2 broken, %3 skipped")
        .arg(countOf(all, Kind::Pass))
        .arg(countOf(all, Kind::Fail))
        .arg(countOf(all, Kind::Skip));
}

bool isAnyBroken(const std::vector<Judged>& all) {
    return countOf(all, Kind::Fail) > 0;
}

QByteArray junitText(const QString& backend, const std::vector<Judged>& all) {
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("testsuite"));
    xml.writeAttribute(QStringLiteral("name"), QStringLiteral("lumo-conform ") + backend);
    xml.writeAttribute(QStringLiteral("tests"), QString::number(all.size()));
    xml.writeAttribute(QStringLiteral("failures"), QString::number(countOf(all, Kind::Fail)));
    xml.writeAttribute(QStringLiteral("skipped"), QString::number(countOf(all, Kind::Skip)));
    for (const Judged& judged : all) {
        xml.writeStartElement(QStringLiteral("testcase"));
        xml.writeAttribute(QStringLiteral("classname"), QStringLiteral("conform"));
        xml.writeAttribute(QStringLiteral("name"), QString::fromLatin1(judged.check.id));
        xml.writeAttribute(QStringLiteral("time"), QString::number(judged.seconds, 'f', 3));
        if (judged.outcome.kind != Kind::Pass) {
            const bool isFailure = judged.outcome.kind == Kind::Fail;
            xml.writeStartElement(isFailure ? QStringLiteral("failure") : QStringLiteral("skipped"));
            xml.writeAttribute(QStringLiteral("message"), judged.outcome.text);
            xml.writeEndElement();
        }
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    return text;
}

}  // namespace conform
