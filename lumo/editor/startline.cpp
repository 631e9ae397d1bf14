#include "editor/startline.h"

#include "editor/programtable.h"
#include "editor/programwidget.h"
#include "executor/lumoexecutor.h"
#include "files/stationrun.h"
#include "module/globals.h"
#include "program/words.h"

#include <QLabel>

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

StartLine::StartLine(ProgramTable* table, QLabel* label, QWidget* resume, QObject* parent)
    : QObject(parent), table_(table), label_(label), resume_(resume) {
    resume_->hide();
    for (const QLatin1String path :
         {key::executeState, key::executeLine, key::currentLine, key::weldOpen, key::robotMode,
          key::weldSwitch, key::handWeldSwitch, key::executeDry, key::executeDryRun, key::executeOverlap}) {
        connect(m(path), &ModuleObject::changed, this, &StartLine::refresh);
    }
    connect(m(key::program), &ModuleObject::changed, this, &StartLine::refresh);
    connect(m(key::program), &ModuleObject::removed, this, &StartLine::refresh);
    connect(table, &ProgramTable::programShown, this, &StartLine::refresh);
    connect(table, &ProgramTable::itemSelectionChanged, this, &StartLine::refresh);
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

void StartLine::refresh() {
    const StartOutlook now = outlook();
    label_->setText(startText(now));
    resume_->setVisible(now.run == StartOutlook::Run::Idle && now.weld == StartOutlook::Weld::Reopens &&
                        (now.selectedLine < 0 || now.selectedLine == now.resumeLine));
}

}  // namespace lumo
