#include "app/setup/setupsteps.h"

#include "mendo/modulemanager.h"
#include "program/check.h"
#include "program/signalcheck.h"
#include "program/statement.h"
#include "program/words.h"

#include <QCoreApplication>

#include <algorithm>

using namespace prog;

namespace app {

namespace {

/// The context of the texts.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(app::SetupSteps)
};

/// Laser and gas are in use, and no port is assigned wrongly.
bool arePortsReady() {
    const Record ports = m(key::port);
    const PortTable table(ports);
    const Findings findings = checkPorts(ports, CellFacts::ofHost());
    const bool isFaulty = std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
        return finding.isError() || finding.fault == Fault::PortNotAssigned;
    });
    return table.isSetUp() && !isFaulty && table.row(DO_LASER_ENABLE).isUsed &&
           table.row(AO_LASER_POWER).isUsed && table.row(DO_GAS).isUsed;
}

/// A tool with a measured tip: that of the flange has none.
bool isToolChosen() {
    const QList<mendo::ModuleObject*> tip = m(key::toolset)->c(field::end)->c(field::trans)->cmobjs();
    return std::any_of(tip.begin(), tip.end(),
                       [](const mendo::ModuleObject* value) { return value->getDouble(0.0) != 0.0; });
}

bool hasPoint() {
    const QList<mendo::ModuleObject*> lines = m(key::program)->cmobjs();
    return std::any_of(lines.begin(), lines.end(), [](const mendo::ModuleObject* line) {
        return Statement::from(line).moves && line->c(field::point)->c(field::trans)->size() > 0;
    });
}

}  // namespace

QVector<SetupStep> setupSteps(bool hasWelded) {
    return {
        {Text::tr("端口"), Text::tr("分配激光、气体和设备输入的信号，并逐一测试"), QStringLiteral("btnPort"),
         arePortsReady()},
        {Text::tr("参数组"), Text::tr("建立第一组参数"), QStringLiteral("btnParamCfg"),
         m(key::param)->cmobjCount() > 0},
        {Text::tr("工具"), Text::tr("在工程页上方选择已标定的焊枪"), QStringLiteral("btnProject"),
         isToolChosen()},
        {Text::tr("第一个点"), Text::tr("新建工程，点动到焊缝起点，按“直线”"), QStringLiteral("btnProject"),
         hasPoint()},
        {Text::tr("第一条焊缝"), Text::tr("在焊缝前后添加开始焊接和停止焊接，打开驱动电源，按“开始”"),
         QStringLiteral("btnProject"), hasWelded},
    };
}

}  // namespace app
