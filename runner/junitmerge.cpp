#include "runner/junitmerge.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace run {

namespace {

const QString suiteElement = QStringLiteral("testsuite");
const QString nameAttribute = QStringLiteral("name");

int countOf(const QXmlStreamAttributes& attributes, const char* name) {
    return attributes.value(QLatin1String(name)).toInt();
}

/// Copies an element with all that is in it; the suite gets another name, in its test cases, too.
void copyElement(QXmlStreamReader& in, QXmlStreamWriter& out, const QString& from, const QString& to) {
    do {
        if (in.isStartElement()) {
            out.writeStartElement(in.name().toString());
            for (const QXmlStreamAttribute& attribute : in.attributes()) {
                const bool isName =
                    (in.name() == suiteElement && attribute.name() == nameAttribute) ||
                    (attribute.name() == QLatin1String("classname") && attribute.value() == from);
                out.writeAttribute(attribute.name().toString(), isName ? to : attribute.value().toString());
            }
        } else if (in.isEndElement()) {
            out.writeEndElement();
            if (in.name() == suiteElement) {
                return;
            }
        } else if (in.isCharacters() && !in.isWhitespace()) {
            out.writeCharacters(in.text().toString());
        }
        in.readNext();
    } while (!in.atEnd());
}

}  // namespace

void JunitMerge::add(const QString& project, const QByteArray& junit, const QString& errors) {
    std::vector<Suite> suites;
    if (!readSuites(project, junit, &suites)) {
        suites = {suiteInError(project, errors)};
    }
    suites_.insert(suites_.end(), suites.begin(), suites.end());
}

bool JunitMerge::readSuites(const QString& project, const QByteArray& junit, std::vector<Suite>* suites) {
    QXmlStreamReader in(junit);
    while (!in.atEnd()) {
        in.readNext();
        if (!in.isStartElement() || in.name() != suiteElement) {
            continue;
        }
        const QXmlStreamAttributes attributes = in.attributes();
        Suite suite;
        suite.tests = countOf(attributes, "tests");
        suite.failures = countOf(attributes, "failures");
        suite.errors = countOf(attributes, "errors");
        suite.skipped = countOf(attributes, "skipped");
        suite.seconds = attributes.value(QLatin1String("time")).toDouble();
        QXmlStreamWriter out(&suite.xml);
        out.setAutoFormatting(true);
        copyElement(in, out, attributes.value(nameAttribute).toString(), project);
        suites->push_back(suite);
    }
    return !in.hasError() && !suites->empty();
}

JunitMerge::Suite JunitMerge::suiteInError(const QString& project, const QString& errors) {
    Suite suite;
    suite.tests = 1;
    suite.errors = 1;
    QXmlStreamWriter out(&suite.xml);
    out.setAutoFormatting(true);
    out.writeStartElement(suiteElement);
    out.writeAttribute(nameAttribute, project);
    for (const char* count : {"tests", "errors"}) {
        out.writeAttribute(QLatin1String(count), QStringLiteral("1"));
    }
    for (const char* count : {"failures", "time"}) {
        out.writeAttribute(QLatin1String(count), QStringLiteral("0"));
    }
    out.writeStartElement(QStringLiteral("testcase"));
    out.writeAttribute(nameAttribute, QStringLiteral("run"));
    out.writeAttribute(QStringLiteral("classname"), project);
    out.writeStartElement(QStringLiteral("error"));
    out.writeAttribute(QStringLiteral("message"), errors.section(QLatin1Char('\n'), 0, 0));
    out.writeCharacters(errors);
    out.writeEndElement();
    out.writeEndElement();
    out.writeEndElement();
    return suite;
}

QByteArray JunitMerge::text() const {
    Suite sum;
    for (const Suite& suite : suites_) {
        sum.tests += suite.tests;
        sum.failures += suite.failures;
        sum.errors += suite.errors;
        sum.skipped += suite.skipped;
        sum.seconds += suite.seconds;
    }
    QByteArray text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites";
    const auto attribute = [&text](const char* name, const QString& value) {
        text += ' ' + QByteArray(name) + "=\"" + value.toUtf8() + '"';
    };
    attribute("tests", QString::number(sum.tests));
    attribute("failures", QString::number(sum.failures));
    attribute("errors", QString::number(sum.errors));
    attribute("skipped", QString::number(sum.skipped));
    attribute("time", QString::number(sum.seconds, 'f', 3));
    text += ">\n";
    for (const Suite& suite : suites_) {
        text += suite.xml.trimmed() + '\n';
    }
    return text + "</testsuites>\n";
}

}  // namespace run
