#include "app/setup/setupsheet.h"

#include "look/icon.h"
#include "look/scale.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include <utility>

namespace app {

namespace {

constexpr int periodMs = 1000;
constexpr int cardPx = 680;

QString textOf(const SetupStep& step) {
    return QStringLiteral("<b>%1</b><br/>%2").arg(step.title.toHtmlEscaped(), step.hint.toHtmlEscaped());
}

}  // namespace

SetupSheet::SetupSheet(std::function<bool()> hasWelded, QWidget* over)
    : Sheet(QStringLiteral("setupSheet"), tr("首次设置"), over), hasWelded_(std::move(hasWelded)) {
    setCardWidth(cardPx);
    auto* grid = new QGridLayout;
    grid->setSpacing(look::px(8));
    grid->setColumnStretch(1, 1);
    const QVector<SetupStep> steps = setupSteps(hasWelded_());
    for (const SetupStep& step : steps) {
        auto* sign = new QLabel;
        sign->setObjectName(QStringLiteral("lblSetupSign"));
        auto* text = new QLabel(textOf(step));
        text->setTextFormat(Qt::RichText);
        text->setWordWrap(true);
        auto* way = new QPushButton(tr("前往"));
        way->setObjectName(QStringLiteral("btnSetupWay%1").arg(signs_.size()));
        way->setIcon(look::icon(QStringLiteral("goto")));
        way->setIconSize(QSize(look::px(22), look::px(22)));
        grid->addWidget(sign, signs_.size(), 0);
        grid->addWidget(text, signs_.size(), 1);
        grid->addWidget(way, signs_.size(), 2);
        signs_ << sign;
        connect(way, &QPushButton::clicked, this, [this, button = step.button] {
            dismiss();
            emit wayAsked(button);
        });
    }
    refresh();
    content()->addLayout(grid);
    addText(tr("此列表可随时从菜单打开。"));
    const QAbstractButton* const forGood = addButton(QStringLiteral("btnSetupForGood"), tr("不再自动显示"));
    connect(forGood, &QAbstractButton::clicked, this, [this] {
        dismiss();
        emit doneForGood();
    });
    connect(&timer_, &QTimer::timeout, this, &SetupSheet::refresh);
    timer_.start(periodMs);
}

/// A tick for what is done, a ring for what is left.
void SetupSheet::refresh() {
    const QVector<SetupStep> steps = setupSteps(hasWelded_());
    for (int i = 0; i < signs_.size(); ++i) {
        const bool done = steps[i].done;
        signs_[i]->setPixmap(look::picture(done ? QStringLiteral("check") : QStringLiteral("ring"),
                                           look::px(22), done ? look::green : look::ink3));
        signs_[i]->setAccessibleName(done ? QStringLiteral("done") : QStringLiteral("open"));
    }
}

}  // namespace app
