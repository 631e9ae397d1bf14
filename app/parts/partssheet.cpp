#include "app/parts/partssheet.h"

#include "app/clocktext.h"
#include "app/sheet/numberkeys.h"
#include "look/scale.h"

#include <QAbstractButton>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr int mostDigits = 5;

}  // namespace

PartsSheet::PartsSheet(PartCounter* counter, const QString& project, QWidget* over)
    : Sheet(QStringLiteral("partsSheet"), tr("零件：%1").arg(QFileInfo(project).completeBaseName()), over),
      counter_(counter),
      project_(project),
      made_(new QLabel),
      times_(new QLabel),
      target_(new QLineEdit) {
    made_->setObjectName(QStringLiteral("lblPartsMade"));
    made_->setProperty("figure", true);
    times_->setObjectName(QStringLiteral("lblPartTimes"));
    times_->setProperty("caption", true);
    target_->setObjectName(QStringLiteral("edtPartTarget"));
    target_->setValidator(new QIntValidator(0, PartCounter::mostTarget, target_));
    target_->setMaxLength(mostDigits);
    target_->setAlignment(Qt::AlignRight);
    const int target = counter->of(project).target;
    target_->setText(target > 0 ? QString::number(target) : QString());
    auto* keys = new NumberKeys;
    keys->writeTo(target_);
    auto* figures = new QVBoxLayout;
    figures->setSpacing(look::px(8));
    figures->addWidget(made_);
    figures->addWidget(times_);
    figures->addSpacing(look::px(16));
    auto* caption = new QLabel(tr("目标（空：无目标）"));
    caption->setProperty("caption", true);
    caption->setWordWrap(true);
    figures->addWidget(caption);
    figures->addWidget(target_);
    figures->addStretch(1);
    auto* row = new QHBoxLayout;
    row->setSpacing(look::px(24));
    row->addLayout(figures, 1);
    row->addWidget(keys);
    content()->addLayout(row);
    reset_ = addButton(QStringLiteral("btnPartsReset"), tr("计数清零"));
    const QAbstractButton* const take = addButton(QStringLiteral("btnPartTarget"), tr("确定"), true);
    connect(reset_, &QAbstractButton::clicked, this, &PartsSheet::reset);
    connect(take, &QAbstractButton::clicked, this, &PartsSheet::takeTarget);
    connect(target_, &QLineEdit::returnPressed, this, &PartsSheet::takeTarget);
    connect(counter, &PartCounter::changed, this, &PartsSheet::refresh);
    refresh();
    target_->selectAll();
    setFocusProxy(target_);
}

void PartsSheet::refresh() {
    const PartCount count = counter_->of(project_);
    made_->setText(tr("已完成 %1").arg(count.figure()));
    times_->setText(tr("上一件 %1\n平均 %2").arg(clockText(count.lastMs), clockText(count.meanMs())));
    times_->setVisible(count.made > 0);
}

void PartsSheet::takeTarget() {
    counter_->setTarget(project_, target_->text().toInt());
    dismiss();
}

/// The second press resets.
void PartsSheet::reset() {
    if (!asked_) {
        asked_ = true;
        reset_->setText(tr("确认清零（%1）").arg(counter_->of(project_).made));
        return;
    }
    counter_->reset(project_);
    dismiss();
}

}  // namespace app
