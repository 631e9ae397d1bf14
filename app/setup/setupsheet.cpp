#include "app/setup/setupsheet.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include <utility>

namespace app {

namespace {

constexpr int periodMs = 1000;
constexpr int buttonHeight = 48;

QString textOf(const SetupStep& step) {
    return QStringLiteral("%1  <b>%2</b><br/>%3")
        .arg(step.done ? QStringLiteral("✓") : QStringLiteral("○"), step.title.toHtmlEscaped(),
             step.hint.toHtmlEscaped());
}

}  // namespace

SetupSheet::SetupSheet(std::function<bool()> hasWelded, QWidget* over)
    : Sheet(QStringLiteral("setupSheet"), tr("首次设置"), over), hasWelded_(std::move(hasWelded)) {
    auto* grid = new QGridLayout;
    grid->setColumnStretch(0, 1);
    const QVector<SetupStep> steps = setupSteps(hasWelded_());
    for (const SetupStep& step : steps) {
        auto* text = new QLabel(textOf(step));
        text->setTextFormat(Qt::RichText);
        text->setWordWrap(true);
        auto* way = new QPushButton(tr("前往"));
        way->setObjectName(QStringLiteral("btnSetupWay%1").arg(texts_.size()));
        way->setMinimumHeight(buttonHeight);
        grid->addWidget(text, texts_.size(), 0);
        grid->addWidget(way, texts_.size(), 1);
        texts_ << text;
        connect(way, &QPushButton::clicked, this, [this, button = step.button] {
            dismiss();
            emit wayAsked(button);
        });
    }
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

void SetupSheet::refresh() {
    const QVector<SetupStep> steps = setupSteps(hasWelded_());
    for (int i = 0; i < texts_.size(); ++i) {
        texts_[i]->setText(textOf(steps[i]));
    }
}

}  // namespace app
