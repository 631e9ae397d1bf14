#include "app/state/statesheet.h"

#include <QAbstractButton>
#include <QLabel>

namespace app {

namespace {

QString wayText(const PanelState& state) {
    switch (state.place) {
        case Place::Monitor:
            return StateSheet::tr("查看监控页面");
        case Place::Device:
            return StateSheet::tr("查看设备页面");
        case Place::Stations:
            return StateSheet::tr("查看工位页面");
        case Place::Results:
            return StateSheet::tr("查看结果");
        case Place::Rail:
            return StateSheet::tr("转到右侧按键");
        case Place::Project:
            break;
    }
    return state.line < 0 ? StateSheet::tr("查看程序") : StateSheet::tr("查看第 %1 行").arg(state.line + 1);
}

}  // namespace

StateSheet::StateSheet(const PanelState& state, const QStringList& sentences, QWidget* over)
    : Sheet(QStringLiteral("stateSheet"), state.word, over) {
    if (!state.detail.isEmpty()) {
        addText(state.detail)->setObjectName(QStringLiteral("lblStateDetail"));
    }
    for (const QString& sentence : sentences) {
        addText(QStringLiteral("•  ") + sentence);
    }
    const QAbstractButton* const way = addButton(QStringLiteral("btnStateWay"), wayText(state), true);
    connect(way, &QAbstractButton::clicked, this, [this, place = state.place, line = state.line] {
        dismiss();
        emit placeAsked(place, line);
    });
}

}  // namespace app
