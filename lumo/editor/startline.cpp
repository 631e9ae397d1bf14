#include "editor/startline.h"

#include "editor/programcheck.h"
#include "editor/programtable.h"
#include "editor/programwidget.h"
#include "executor/lumoexecutor.h"
#include "files/stationrun.h"
#include "look/tokens.h"
#include "module/globals.h"
#include "program/words.h"
#include "widgets/wraptoolbutton.h"

#include <QLabel>
#include <QStyle>
#include <QVariant>

using namespace prog;

namespace lumo {

namespace {

constexpr int stationRun = 1;

QString runningText(const StartOutlook& outlook) {
    if (outlook.run == StartOutlook::Run::ByHand) {
        return (outlook.dryRun ? ProgramWidget::tr("空运行：正在执行第 %1 行")
                               : ProgramWidget::tr("正在执行第 %1 行"))
            .arg(outlook.runningLine + 1);
    }
    return outlook.project.isEmpty()
               ? ProgramWidget::tr("工位程序正在运行")
               : ProgramWidget::tr("工位程序正在运行：%1，工程 %2").arg(outlook.station, outlook.project);
}

QString resumeText(const StartOutlook& outlook) {
    const int line = outlook.resumeLine + 1;
    switch (outlook.weld) {
        case StartOutlook::Weld::Reopens:
            return outlook.overlapMm > 0.0
                       ? ProgramWidget::tr("开始：从第 %1 行继续，激光将重新打开，重叠 %2 mm")
                             .arg(QString::number(line), QString::number(outlook.overlapMm))
                       : ProgramWidget::tr("开始：从第 %1 行继续，激光将重新打开").arg(line);
        case StartOutlook::Weld::StaysOff:
            return ProgramWidget::tr("开始：从第 %1 行继续，激光不会打开").arg(line);
        case StartOutlook::Weld::None:
            break;
    }
    return (outlook.resumeLine == 0 ? ProgramWidget::tr("开始：从第 %1 行执行")
                                    : ProgramWidget::tr("开始：从第 %1 行继续"))
        .arg(line);
}

/// Where it begins, of a program with lines.
QString beginText(const StartOutlook& outlook) {
    if (outlook.selectedLine >= 0 && outlook.selectedLine != outlook.resumeLine) {
        return ProgramWidget::tr("开始：确认后从选中的第 %1 行执行").arg(outlook.selectedLine + 1);
    }
    if (outlook.finished) {
        return ProgramWidget::tr("开始：再次从第 1 行执行");
    }
    if (outlook.resumeLine < 0 || outlook.resumeLine >= outlook.lineCount) {
        return ProgramWidget::tr("第 %1 行已不存在：请复位或选择一行").arg(outlook.resumeLine + 1);
    }
    return resumeText(outlook);
}

}  // namespace

QString startText(const StartOutlook& outlook) {
    if (outlook.run != StartOutlook::Run::Idle) {
        return runningText(outlook);
    }
    if (!outlook.projectOpen) {
        return ProgramWidget::tr("请先新建或打开工程");
    }
    if (outlook.lineCount == 0) {
        return ProgramWidget::tr("程序为空");
    }
    return outlook.dry ? ProgramWidget::tr("空运行。%1").arg(beginText(outlook)) : beginText(outlook);
}

// --- On the button --------------------------------------------------------------------------------

namespace {

bool isOfAnotherLine(const StartOutlook& outlook) {
    return outlook.selectedLine >= 0 && outlook.selectedLine != outlook.resumeLine;
}

bool isLineGone(const StartOutlook& outlook) {
    return !outlook.finished && !isOfAnotherLine(outlook) &&
           (outlook.resumeLine < 0 || outlook.resumeLine >= outlook.lineCount);
}

QString refusalWords(const StartOutlook& outlook) {
    if (!outlook.projectOpen) {
        return ProgramWidget::tr("未打开工程");
    }
    if (outlook.lineCount == 0) {
        return ProgramWidget::tr("程序为空", "on the button");
    }
    if (outlook.errors > 0) {
        return ProgramWidget::tr("程序有错误");
    }
    if (!outlook.drivesOn) {
        return ProgramWidget::tr("驱动未上电");
    }
    return isLineGone(outlook)
               ? ProgramWidget::tr("第 %1 行已不存在", "on the button").arg(outlook.resumeLine + 1)
               : QString();
}

QString beginWords(const StartOutlook& outlook) {
    const int line = outlook.resumeLine + 1;
    if (isOfAnotherLine(outlook)) {
        return ProgramWidget::tr("从第 %1 行，先确认").arg(outlook.selectedLine + 1);
    }
    if (outlook.finished) {
        return ProgramWidget::tr("再次从第 1 行");
    }
    switch (outlook.weld) {
        case StartOutlook::Weld::Reopens:
            return ProgramWidget::tr("第 %1 行，继续出光").arg(line);
        case StartOutlook::Weld::StaysOff:
            return ProgramWidget::tr("第 %1 行，不出光").arg(line);
        case StartOutlook::Weld::None:
            break;
    }
    return (outlook.resumeLine == 0 ? ProgramWidget::tr("从第 %1 行") : ProgramWidget::tr("从第 %1 行继续"))
        .arg(line);
}

}  // namespace

bool isStartRefused(const StartOutlook& outlook) {
    return outlook.run != StartOutlook::Run::Idle || !refusalWords(outlook).isEmpty();
}

QString startWords(const StartOutlook& outlook) {
    if (outlook.run == StartOutlook::Run::OfStation) {
        return ProgramWidget::tr("工位正在运行");
    }
    if (outlook.run == StartOutlook::Run::ByHand) {
        return ProgramWidget::tr("正在执行第 %1 行", "on the button").arg(outlook.runningLine + 1);
    }
    const QString refusal = refusalWords(outlook);
    return refusal.isEmpty() ? beginWords(outlook) : refusal;
}

bool isStartSpecial(const StartOutlook& outlook) {
    return outlook.run == StartOutlook::Run::OfStation ||
           (outlook.run == StartOutlook::Run::Idle && outlook.projectOpen &&
            (outlook.weld != StartOutlook::Weld::None || isLineGone(outlook)));
}

// --- Keeping it -----------------------------------------------------------------------------------

StartLine::StartLine(ProgramTable* table, const ProgramCheck* check, const Parts& parts, QObject* parent)
    : QObject(parent), table_(table), check_(check), parts_(parts) {
    parts.resume->hide();
    for (const QLatin1String path : {key::executeState, key::executeLine, key::currentLine, key::weldOpen,
                                     key::robotMode, key::robotPower, key::weldSwitch, key::handWeldSwitch,
                                     key::executeDry, key::executeDryRun, key::executeOverlap}) {
        connect(m(path), &ModuleObject::changed, this, &StartLine::refresh);
    }
    connect(m(key::program), &ModuleObject::changed, this, &StartLine::refresh);
    connect(m(key::program), &ModuleObject::removed, this, &StartLine::refresh);
    connect(table, &ProgramTable::programShown, this, &StartLine::refresh);
    connect(table, &ProgramTable::itemSelectionChanged, this, &StartLine::refresh);
    connect(check, &ProgramCheck::changed, this, &StartLine::refresh);
}

/// The executor opens the laser again only at a line that lies in the weld that was left open.
StartOutlook::Weld StartLine::weldOutlook() const {
    if (!m(key::weldOpen)->getBool(false)) {
        return StartOutlook::Weld::None;
    }
    return executor && executor->outlook(m(key::currentLine)->getInt()).reopens
               ? StartOutlook::Weld::Reopens
               : StartOutlook::Weld::StaysOff;
}

StartOutlook StartLine::outlook() const {
    StartOutlook outlook;
    outlook.projectOpen = isEnable_moveorder;
    outlook.drivesOn = m(key::robotPower)->getString() == word::on;
    outlook.errors = check_->errors();
    if (m(key::executeState)->getString() != word::idle) {
        outlook.run =
            hand_or_signalbing == stationRun ? StartOutlook::Run::OfStation : StartOutlook::Run::ByHand;
    }
    if (const StationRun* const run = StationRun::current()) {
        outlook.station = run->station();
        outlook.project = run->project();
    }
    outlook.runningLine = m(key::executeLine)->getInt();
    outlook.lineCount = table_->rowCount();
    outlook.resumeLine = m(key::currentLine)->getInt();
    outlook.selectedLine = table_->selectedRow();
    outlook.finished = executor && executor->finished();
    outlook.weld = weldOutlook();
    outlook.overlapMm = m(key::executeOverlap)->getDouble(0.0);
    outlook.dry = m(key::executeDry)->getBool(false);
    outlook.dryRun = m(key::executeDryRun)->getBool(false);
    return outlook;
}

/// Primary where a press starts a run; framed where it would only say why not; pale while a program runs.
void StartLine::showOnButtons(const StartOutlook& now) const {
    parts_.start->setSecondLine(startWords(now));
    const bool runs = now.run != StartOutlook::Run::Idle;
    parts_.point->setMuted(runs);
    parts_.reset->setMuted(runs);
    const QString state = runs                  ? QStringLiteral("running")
                          : isStartRefused(now) ? QStringLiteral("refused")
                                                : QStringLiteral("true");
    if (parts_.start->property("primary").toString() == state) {
        return;
    }
    parts_.start->setProperty("primary", state);
    parts_.start->setFace(QStringLiteral("play"), ButtonFace::Place::Before,
                          runs                                ? look::off
                          : state == QLatin1String("refused") ? look::blue
                                                              : look::white);
    parts_.start->style()->unpolish(parts_.start);
    parts_.start->style()->polish(parts_.start);
}

void StartLine::refresh() {
    const StartOutlook now = outlook();
    parts_.sentence->setText(startText(now));
    showOnButtons(now);
    const bool resumes = now.run == StartOutlook::Run::Idle && now.weld == StartOutlook::Weld::Reopens &&
                         (now.selectedLine < 0 || now.selectedLine == now.resumeLine);
    const bool special = isStartSpecial(now);
    if (special != isSpecial_ || resumes == parts_.resume->isHidden()) {
        isSpecial_ = special;
        parts_.resume->setVisible(resumes);
        emit specialChanged();
    }
}

}  // namespace lumo
