#include "widgets/findingtext.h"

#include "module/host.h"
#include "program/ports.h"
#include "program/words.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>

using namespace prog;

namespace lumo {

namespace {

struct Text {
    Q_DECLARE_TR_FUNCTIONS(lumo::FindingText)
};

/// What the pages call the fields of a statement.
constexpr struct {
    QLatin1String field;
    const char* label;
} labels[] = {
    {field::point, QT_TRANSLATE_NOOP("lumo::FindingText", "点位")},
    {field::point1, QT_TRANSLATE_NOOP("lumo::FindingText", "第二个点位")},
    {field::speed, QT_TRANSLATE_NOOP("lumo::FindingText", "速度")},
    {field::zone, QT_TRANSLATE_NOOP("lumo::FindingText", "转弯区")},
    {field::weldspeed, QT_TRANSLATE_NOOP("lumo::FindingText", "焊接速度")},
    {field::index, QT_TRANSLATE_NOOP("lumo::FindingText", "工艺参数")},
    {field::laserPower, QT_TRANSLATE_NOOP("lumo::FindingText", "激光功率")},
    {field::laserDutyCycle, QT_TRANSLATE_NOOP("lumo::FindingText", "激光占空比")},
    {field::delaytime, QT_TRANSLATE_NOOP("lumo::FindingText", "延时")},
    {field::execute, QT_TRANSLATE_NOOP("lumo::FindingText", "是否运行")},
    {field::note, QT_TRANSLATE_NOOP("lumo::FindingText", "备注")},
};

/// What the operator calls a field of a statement or of a parameter set, or a port; other words stay.
QString labelOf(const QString& word) {
    for (const auto& known : labels) {
        if (word == known.field) {
            return Text::tr(known.label);
        }
    }
    for (int port = 0; port < portCount; ++port) {
        if (word == portInfo(static_cast<I_PORT>(port)).word) {
            return m(key::port)->c(port)->c(field::tag)->getString(word);
        }
    }
    return m(key::defaultParam)->c(word)->c(field::tag)->getString(word);
}

bool namesFields(Rule rule) {
    return rule == Rule::Field || rule == Rule::Point || rule == Rule::Range || rule == Rule::Port ||
           rule == Rule::Output || rule == Rule::Drift;
}

/// A pattern of the context "Finding" in the panel's language, with the finding's arguments.
QString inWords(const char* pattern, const Finding& finding) {
    const auto translate = [](const char* english) {
        return QCoreApplication::translate("Finding", english);
    };
    QStringList arguments = argumentTexts(finding, translate);
    for (QString& argument : arguments) {
        if (namesFields(finding.rule())) {
            argument = labelOf(argument);
        }
    }
    return filled(translate(pattern), arguments);
}

/// A text about a finding with the remedy behind it.
QString withRemedy(const QString& text, const Finding& finding) {
    const QString remedy = findingRemedy(finding);
    return remedy.isEmpty() ? text : Text::tr("%1；%2").arg(text, remedy);
}

int errorsIn(const Findings& findings) {
    return static_cast<int>(std::count_if(findings.begin(), findings.end(),
                                          [](const Finding& finding) { return finding.isError(); }));
}

}  // namespace

QString findingText(const Finding& finding) {
    return inWords(textPattern(finding), finding);
}

QString findingRemedy(const Finding& finding) {
    return inWords(remedyPattern(finding), finding);
}

QString findingWithRemedy(const Finding& finding) {
    return withRemedy(findingText(finding), finding);
}

QString findingAtLine(const Finding& finding) {
    const QString text = findingText(finding);
    return finding.line < 0 ? text : Text::tr("第 %1 行：%2").arg(QString::number(finding.line + 1), text);
}

QString refusalText(const Findings& findings) {
    const Finding* const first = firstError(findings);
    if (!first) {
        return QString();
    }
    const QString text = Text::tr("%1。").arg(withRemedy(findingAtLine(*first), *first));
    const int more = errorsIn(findings) - 1;
    return more == 0 ? text : text + QLatin1Char('\n') + Text::tr("另有 %n 个错误。", nullptr, more);
}

QString severityWord(Severity severity) {
    return severity == Severity::Error ? Text::tr("错误") : Text::tr("警告");
}

QString countText(int errors, int warnings) {
    QStringList counts;
    if (errors > 0) {
        counts << Text::tr("%n 个错误", nullptr, errors);
    }
    if (warnings > 0) {
        counts << Text::tr("%n 个警告", nullptr, warnings);
    }
    return counts.join(Text::tr("，"));
}

const Finding* firstError(const Findings& findings) {
    const auto first = std::find_if(findings.begin(), findings.end(),
                                    [](const Finding& finding) { return finding.isError(); });
    return first == findings.end() ? nullptr : &*first;
}

}  // namespace lumo
