#include "app/results/resulttext.h"

#include "look/type.h"
#include "program/parameters.h"
#include "program/words.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace app {

/// Translation context of the texts.
struct ResultText {
    Q_DECLARE_TR_FUNCTIONS(app::ResultText)
};

namespace {

using workcell::Allowed;
using workcell::SeamRecord;

const QString none = QStringLiteral("–");

struct Word {
    const char* word;
    const char* text;
};

constexpr Word reasons[] = {
    {"finished", QT_TRANSLATE_NOOP("app::ResultText", "已完成")},
    {"paused", QT_TRANSLATE_NOOP("app::ResultText", "已暂停")},
    {"error", QT_TRANSLATE_NOOP("app::ResultText", "运动错误")},
    {"power", QT_TRANSLATE_NOOP("app::ResultText", "驱动断电")},
    {"quit", QT_TRANSLATE_NOOP("app::ResultText", "面板已关闭")},
};

constexpr Word equipment[] = {
    {"laser", QT_TRANSLATE_NOOP("app::ResultText", "激光器")},
    {"head", QT_TRANSLATE_NOOP("app::ResultText", "激光头")},
    {"chiller", QT_TRANSLATE_NOOP("app::ResultText", "水冷机")},
    {"gas", QT_TRANSLATE_NOOP("app::ResultText", "气压")},
    {"temperature", QT_TRANSLATE_NOOP("app::ResultText", "温度")},
};

template <int size>
QString wordText(const Word (&words)[size], const QString& word) {
    const auto found = std::find_if(std::begin(words), std::end(words),
                                    [&word](const Word& row) { return word == QLatin1String(row.word); });
    return found == std::end(words) ? word : ResultText::tr(found->text);
}

QString number(double value, int decimals) {
    return QString::number(value, 'f', decimals);
}

/// Of a limit: as many digits as its file has.
QString plain(double value) {
    return QString::number(value, 'g', 6);
}

QString allowedText(const Allowed& allowed) {
    if (allowed.min && allowed.max) {
        return QStringLiteral("%1 … %2").arg(plain(*allowed.min), plain(*allowed.max));
    }
    if (allowed.min) {
        return QStringLiteral("≥ ") + plain(*allowed.min);
    }
    return allowed.max ? QStringLiteral("≤ ") + plain(*allowed.max) : QString();
}

QString linesText(const SeamRecord& seam) {
    return QStringLiteral("%1–%2").arg(QString::number(seam.openLine), seam.closeLine
                                                                           ? QString::number(*seam.closeLine)
                                                                           : QStringLiteral("…"));
}

QString gapsText(const SeamRecord& seam) {
    constexpr int mostShown = 4;
    QStringList gaps;
    for (const workcell::DarkGap& gap : seam.darkGaps) {
        if (gaps.size() == mostShown) {
            gaps << QStringLiteral("+%1").arg(int(seam.darkGaps.size()) - mostShown);
            break;
        }
        gaps << QStringLiteral("%1–%2").arg(number(gap.fromMm, 1), number(gap.toMm, 1));
    }
    return gaps.isEmpty() ? none : gaps.join(QLatin1Char('\n'));
}

QString faultsText(const SeamRecord& seam) {
    QStringList texts;
    for (const QString& fault : seam.faults) {
        texts << equipmentText(fault);
    }
    return texts.isEmpty() ? none : texts.join(QLatin1Char('\n'));
}

/// A row of the table of seams that is a number.
struct NumberRow {
    const char* limit;  ///< name in limits files; null for a quantity that has none
    const char* heading;
    int decimals;
    std::optional<double> (*value)(const SeamRecord&);
};

using Number = std::optional<double>;

const NumberRow numberRows[] = {
    {nullptr, QT_TRANSLATE_NOOP("app::ResultText", "编程长度 mm"), 1,
     [](const SeamRecord& seam) { return Number(seam.programmedMm); }},
    {"welded_mm", QT_TRANSLATE_NOOP("app::ResultText", "焊接长度 mm"), 1,
     [](const SeamRecord& seam) { return Number(seam.weldedMm); }},
    {"welded_ratio", QT_TRANSLATE_NOOP("app::ResultText", "焊接/编程长度"), 3,
     [](const SeamRecord& seam) { return seam.weldedRatio(); }},
    {nullptr, QT_TRANSLATE_NOOP("app::ResultText", "满功率长度 mm"), 1,
     [](const SeamRecord& seam) { return Number(seam.fullPowerMm); }},
    {"mean_speed_mm_s", QT_TRANSLATE_NOOP("app::ResultText", "平均速度 mm/s"), 2,
     [](const SeamRecord& seam) { return seam.meanSpeedMmPerS; }},
    {"gas_lead_s", QT_TRANSLATE_NOOP("app::ResultText", "前吹气 s"), 2,
     [](const SeamRecord& seam) { return Number(seam.gasLeadS); }},
    {"gas_tail_s", QT_TRANSLATE_NOOP("app::ResultText", "后吹气 s"), 2,
     [](const SeamRecord& seam) { return Number(seam.gasTailS); }},
    {nullptr, QT_TRANSLATE_NOOP("app::ResultText", "出光时间 s"), 2,
     [](const SeamRecord& seam) { return Number(seam.laserOnS); }},
    {"standing_s", QT_TRANSLATE_NOOP("app::ResultText", "静止出光 s"), 2,
     [](const SeamRecord& seam) { return Number(seam.standingS); }},
    {nullptr, QT_TRANSLATE_NOOP("app::ResultText", "能量 %·s"), 1,
     [](const SeamRecord& seam) { return Number(seam.energyPctS); }},
    {"heat_J_per_mm", QT_TRANSLATE_NOOP("app::ResultText", "热输入 J/mm"), 1,
     [](const SeamRecord& seam) { return seam.heatJPerMm; }},
};

SeamCell cellOf(const NumberRow& row, const SeamRecord& seam, const RunResult& result) {
    const Number value = row.value(seam);
    SeamCell cell{value ? number(*value, row.decimals) : none, Mark::NoLimit, {}};
    const std::optional<Allowed> allowed = row.limit && result.limits
                                               ? result.limits->allowed(QLatin1String(row.limit), seam.set)
                                               : std::nullopt;
    if (allowed) {
        cell.mark = value && allowed->contains(*value) ? Mark::Within : Mark::Outside;
        cell.allowed = allowedText(*allowed);
    }
    return cell;
}

QString violationText(const workcell::Violation& violation) {
    const auto row = std::find_if(
        std::begin(numberRows), std::end(numberRows),
        [&violation](const NumberRow& r) { return r.limit && violation.limit == QLatin1String(r.limit); });
    const bool isCycle = row == std::end(numberRows);
    const QString what = isCycle ? ResultText::tr("运行时间 s") : ResultText::tr(row->heading);
    const QString value =
        violation.value ? number(*violation.value, isCycle ? 2 : row->decimals) : ResultText::tr("未测得");
    const QString text = ResultText::tr("%1：%2，允许 %3").arg(what, value, allowedText(violation.allowed));
    return violation.seam ? ResultText::tr("焊缝 %1，%2").arg(QString::number(*violation.seam), text) : text;
}

}  // namespace

QString signOf(Mark mark) {
    switch (mark) {
        case Mark::Within:
            return QStringLiteral("✓");
        case Mark::Outside:
            return QStringLiteral("✗");
        case Mark::NoLimit:
            break;
    }
    return {};
}

QStringList seamHeadings() {
    QStringList headings{ResultText::tr("程序行"), ResultText::tr("参数组")};
    for (const NumberRow& row : numberRows) {
        headings << ResultText::tr(row.heading);
    }
    return headings << ResultText::tr("未焊段 mm") << ResultText::tr("设备故障");
}

QVector<SeamCell> seamCells(const SeamRecord& seam, const RunResult& result) {
    QVector<SeamCell> cells{{linesText(seam), Mark::NoLimit, {}}, {seam.set, Mark::NoLimit, {}}};
    for (const NumberRow& row : numberRows) {
        cells << cellOf(row, seam, result);
    }
    return cells << SeamCell{gapsText(seam), Mark::NoLimit, {}}
                 << SeamCell{faultsText(seam), Mark::NoLimit, {}};
}

namespace {

/// The quantity with a name in limits files, or by its heading.
const NumberRow& rowOf(QLatin1String limit) {
    return *std::find_if(std::begin(numberRows), std::end(numberRows), [limit](const NumberRow& row) {
        return row.limit && limit == QLatin1String(row.limit);
    });
}

/// The power of the set as it was when the run began.
SeamCell powerCell(const SeamRecord& seam, const RunResult& result) {
    const auto set = std::find_if(result.sets.begin(), result.sets.end(),
                                  [&seam](const SetValues& values) { return values.name == seam.set; });
    int row = 0;
    for (const prog::ParameterRow& parameter : prog::parameterRows()) {
        if (set != result.sets.end() && parameter.name == prog::field::power) {
            return {look::figure(set->values.value(row), 0), Mark::NoLimit, {}};
        }
        ++row;
    }
    return {none, Mark::NoLimit, {}};
}

SeamCell gasCell(const SeamRecord& seam, const RunResult& result) {
    constexpr double msPerS = 1000;
    SeamCell cell = cellOf(rowOf(QLatin1String("gas_lead_s")), seam, result);
    cell.text = number(seam.gasLeadS * msPerS, 0);
    return cell;
}

bool hasHeat(const RunResult& result) {
    const auto& seams = result.record.seams;
    return std::any_of(seams.begin(), seams.end(),
                       [](const SeamRecord& seam) { return seam.heatJPerMm.has_value(); });
}

Mark markOf(int index, const RunResult& result) {
    const SeamRecord& seam = result.record.seams[std::size_t(index)];
    const QVector<workcell::Violation> violations = result.violations();
    const bool isOutside =
        std::any_of(violations.begin(), violations.end(),
                    [index](const workcell::Violation& violation) { return violation.seam == index + 1; });
    if (isOutside || !seam.darkGaps.empty() || !seam.faults.isEmpty()) {
        return Mark::Outside;
    }
    return result.limits ? Mark::Within : Mark::NoLimit;
}

}  // namespace

QStringList seamColumnHeadings(const RunResult& result) {
    return {ResultText::tr("行"),
            ResultText::tr("参数组"),
            ResultText::tr("长度\nmm"),
            ResultText::tr("速度\nmm/s"),
            ResultText::tr("功率\n%"),
            ResultText::tr("前吹气\nms"),
            ResultText::tr("未焊\nmm"),
            hasHeat(result) ? ResultText::tr("能量\nJ/mm") : ResultText::tr("能量\n%·s"),
            ResultText::tr("合格")};
}

QVector<SeamCell> seamRow(int seam, const RunResult& result) {
    const SeamRecord& record = result.record.seams[std::size_t(seam)];
    SeamCell length = cellOf(rowOf(QLatin1String("welded_mm")), record, result);
    if (length.mark == Mark::NoLimit) {
        length.mark = cellOf(rowOf(QLatin1String("welded_ratio")), record, result).mark;
    }
    SeamCell speed = cellOf(rowOf(QLatin1String("mean_speed_mm_s")), record, result);
    speed.text = record.meanSpeedMmPerS ? number(*record.meanSpeedMmPerS, 1) : none;
    SeamCell energy = cellOf(rowOf(QLatin1String("heat_J_per_mm")), record, result);
    if (!hasHeat(result)) {
        energy.text = number(record.energyPctS, 1);
    }
    return {{linesText(record), Mark::NoLimit, {}},
            {record.set, Mark::NoLimit, {}},
            length,
            speed,
            powerCell(record, result),
            gasCell(record, result),
            {number(record.darkMm(), 1), record.darkGaps.empty() ? Mark::NoLimit : Mark::Outside, {}},
            energy,
            {{}, markOf(seam, result), {}}};
}

QString verdictText(const RunResult& result) {
    const int count = int(result.record.seams.size());
    if (count == 0) {
        return ResultText::tr("没有焊缝");
    }
    int bad = 0;
    for (int seam = 0; seam < count; ++seam) {
        bad += markOf(seam, result) == Mark::Outside ? 1 : 0;
    }
    if (bad > 0) {
        return ResultText::tr("要检查的焊缝：%1").arg(bad);
    }
    if (!result.violations().isEmpty()) {
        return ResultText::tr("超出限值：%1").arg(result.violations().size());
    }
    return result.limits ? ResultText::tr("合格焊缝：%1").arg(count) : ResultText::tr("没有限值");
}

bool isBad(const RunResult& result) {
    const int count = int(result.record.seams.size());
    for (int seam = 0; seam < count; ++seam) {
        if (markOf(seam, result) == Mark::Outside) {
            return true;
        }
    }
    return !result.violations().isEmpty() || !incidentTexts(result).isEmpty() ||
           (!result.limitsFile.isEmpty() && !result.limits);
}

QString reasonText(const QString& reason) {
    return wordText(reasons, reason);
}

QString equipmentText(const QString& name) {
    return wordText(equipment, name);
}

QString weldedText(const RunResult& result) {
    const bool isFinished = result.record.reason == QLatin1String("finished");
    if (result.record.seams.empty()) {
        return result.hasWelds && isFinished ? ResultText::tr("没有焊接") : QString();
    }
    const QString welded = number(result.weldedMm(), 1);
    // What a stop left undone is not known: only the way that was made is.
    return isFinished ? ResultText::tr("已焊 %1 / %2 mm").arg(welded, number(result.programmedMm(), 1))
                      : ResultText::tr("已焊 %1 mm").arg(welded);
}

QString limitsText(const RunResult& result) {
    if (result.limitsFile.isEmpty()) {
        return ResultText::tr("没有限值");
    }
    if (!result.limits) {
        return ResultText::tr("限值文件 %1 有错误，没有评定").arg(result.limitsFile);
    }
    const int count = result.violations().size();
    return count == 0 ? ResultText::tr("符合全部限值") : ResultText::tr("超出限值：%1").arg(count);
}

QStringList violationTexts(const RunResult& result) {
    QStringList texts;
    const QVector<workcell::Violation> violations = result.violations();
    for (const workcell::Violation& violation : violations) {
        texts << violationText(violation);
    }
    return texts;
}

QStringList incidentTexts(const RunResult& result) {
    QStringList texts;
    for (const workcell::LitFault& fault : result.record.faults) {
        texts << (fault.line > 0
                      ? ResultText::tr("出光时设备故障：%1，第 %2 行，%3 秒")
                            .arg(equipmentText(fault.name), QString::number(fault.line), number(fault.atS, 1))
                      : ResultText::tr("出光时设备故障：%1，%2 秒")
                            .arg(equipmentText(fault.name), number(fault.atS, 1)));
    }
    if (result.record.isDry) {
        texts << ResultText::tr("空运行：没有出光，没有焊接");
    }
    for (const workcell::RefusedStatement& statement : result.record.refused) {
        if (statement.isDry) {
            continue;  // told once for the run
        }
        texts << ResultText::tr("第 %1 行的焊接未获允许").arg(statement.line);
    }
    for (const workcell::Rejection& rejection : result.record.rejections) {
        texts << ResultText::tr("控制器拒绝写入 %1，次数 %2").arg(rejection.name).arg(rejection.count);
    }
    return texts;
}

EndedRun endedRun(const RunResult& result) {
    constexpr double msPerS = 1000;
    EndedRun run;
    run.reason = result.record.reason;
    run.words = reasonText(run.reason);
    run.station = result.byStation ? result.title() : QString();
    run.ms = qint64(result.record.seconds * msPerS);
    run.welded = weldedText(result);
    run.violations = result.violations().size();
    return run;
}

}  // namespace app
