#include "editor/resumedialog.h"

#include "editor/seampicture.h"
#include "executor/circle.h"
#include "executor/lumoexecutor.h"
#include "module/globals.h"
#include "program/words.h"

#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

using namespace prog;

namespace lumo {

namespace {

/// Of everything that is pressed: for fingers.
const QString touchSize = QStringLiteral("min-height: 56px;");

/// The overlap that the spin box begins with: that of the last choice, also of other pages.
double rememberedMm = 5.0;

QString mmText(double mm) {
    return QString::number(mm, 'f', 1);
}

}  // namespace

ResumeDialog::ResumeDialog(int line, QWidget* parent)
    : QDialog(parent),
      line_(line),
      picture_(new SeamPicture(this)),
      where_(new QLabel(this)),
      distance_(new QLabel(this)),
      left_(new QLabel(this)),
      overlap_(new QDoubleSpinBox(this)) {
    constexpr int widthPx = 600;
    setObjectName(QStringLiteral("resumeDialog"));
    setWindowTitle(tr("继续焊接"));
    setMinimumWidth(widthPx);
    setStyleSheet(QStringLiteral("QDialog{border: 4px solid #CCCCCC;}"));
    where_->setObjectName(QStringLiteral("lblWhere"));
    distance_->setObjectName(QStringLiteral("lblDistance"));
    left_->setObjectName(QStringLiteral("lblLeft"));
    auto* const layout = new QGridLayout(this);
    addTexts(layout);
    addChoices(layout);
    follow();
    refresh();
}

void ResumeDialog::addTexts(QGridLayout* layout) {
    int row = 0;
    for (QLabel* const label : {where_, distance_, left_}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        layout->addWidget(label, row++, 0, 1, 4);
    }
    layout->addWidget(picture_, row, 0, 1, 4);
}

void ResumeDialog::addChoices(QGridLayout* layout) {
    const int row = layout->rowCount();
    QPushButton* const goOn = addChoice(layout, tr("回到中断点，继续焊接"), row, "btnGoOn");
    goOn->setDefault(true);
    goOn->setFocus();
    goOn->setStyleSheet(touchSize + QStringLiteral("font-weight: bold;"));
    QPushButton* const again = addChoice(layout, tr("回到中断点，重叠一段后继续焊接"), row + 1, "btnOverlap");
    QPushButton* const dark = addChoice(layout, tr("从这里不出光继续（焊接开关将关闭）"), row + 2, "btnDark");
    QPushButton* const cancel = addChoice(layout, tr("取消"), row + 3, "btnCancel");
    addOverlap(layout, again, row + 1);
    connect(goOn, &QPushButton::clicked, this, [this] { choose(Choice::GoOn); });
    connect(again, &QPushButton::clicked, this, [this] { choose(Choice::GoOnWithOverlap); });
    connect(dark, &QPushButton::clicked, this, [this] { choose(Choice::GoOnDark); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

QPushButton* ResumeDialog::addChoice(QGridLayout* layout, const QString& text, int row, const char* name) {
    auto* const button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(name));
    button->setStyleSheet(touchSize);
    button->setAutoDefault(false);
    layout->addWidget(button, row, 0, 1, 4);
    return button;
}

/// Changes the overlap by whole millimetres, as long as it is held.
QPushButton* ResumeDialog::stepButton(const QString& text, int steps) {
    auto* const button = new QPushButton(text, this);
    button->setStyleSheet(touchSize + QStringLiteral("min-width: 48px;"));
    button->setAutoDefault(false);
    button->setAutoRepeat(true);
    connect(button, &QPushButton::clicked, overlap_, [this, steps] { overlap_->stepBy(steps); });
    return button;
}

/// The length of the overlap, behind its choice.
void ResumeDialog::addOverlap(QGridLayout* layout, QPushButton* choice, int row) {
    overlap_->setObjectName(QStringLiteral("spinOverlap"));
    overlap_->setDecimals(1);
    overlap_->setRange(0.0, mostOverlapMm);
    overlap_->setSuffix(QStringLiteral(" mm"));
    overlap_->setValue(rememberedMm);
    overlap_->setButtonSymbols(QAbstractSpinBox::NoButtons);
    overlap_->setAlignment(Qt::AlignCenter);
    overlap_->setStyleSheet(touchSize + QStringLiteral("min-width: 88px;"));
    overlap_->setContextMenuPolicy(Qt::NoContextMenu);
    layout->removeWidget(choice);
    layout->addWidget(choice, row, 0);
    layout->setColumnStretch(0, 1);
    layout->addWidget(stepButton(QStringLiteral("−"), -1), row, 1);
    layout->addWidget(overlap_, row, 2);
    layout->addWidget(stepButton(QStringLiteral("+"), +1), row, 3);
    connect(overlap_, QOverload<double>::of(&QDoubleSpinBox::valueChanged), picture_,
            &SeamPicture::showOverlap);
    picture_->showOverlap(overlap_->value());
}

/// The tool may be jogged; and what is asked may have become the wrong question.
void ResumeDialog::follow() {
    for (const auto change : {&ModuleObject::added, &ModuleObject::removed}) {
        connect(m(key::program), change, this, &QDialog::reject);
    }
    connect(m(key::program), &ModuleObject::changed, this, &QDialog::reject);
    for (const QLatin1String path : {key::executeState, key::weldOpen, key::currentLine, key::robotMode,
                                     key::weldSwitch, key::handWeldSwitch, key::executeDry}) {
        connect(m(path), &ModuleObject::changed, this, &ResumeDialog::reread);
    }
    for (int axis = 0; axis < 3; ++axis) {
        connect(kordservice()->dataNode(mName(key::posturePlace, mIndex(axis))), &ModuleObject::changed, this,
                &ResumeDialog::refreshLater);
    }
}

void ResumeDialog::refreshLater() {
    if (!refreshes_) {
        refreshes_ = true;
        QMetaObject::invokeMethod(this, &ResumeDialog::refresh, Qt::QueuedConnection);
    }
}

void ResumeDialog::reread() {
    view_.reset();
    refreshLater();
}

void ResumeDialog::refresh() {
    refreshes_ = false;
    const bool isStill = executor && !isRunning() && m(key::currentLine)->getInt() == line_ &&
                         executor->outlook(line_).reopens;
    if (!isStill) {
        reject();
        return;
    }
    constexpr double nearMm = 2.0;
    if (!view_) {
        view_ = executor->resumeView(line_);
    }
    view_->tool = positionOf(kordservice()->get(nullptr, key::posture));
    const double awayMm = view_->awayMm();
    where_->setText(
        tr("焊接中断于第 %1 行，焊缝 %2 mm 处。").arg(QString::number(line_ + 1), mmText(view_->weldedMm())));
    distance_->setText(awayMm > nearMm ? tr("焊枪距中断点 %1 mm：先不出光回到中断点。").arg(mmText(awayMm))
                                       : tr("焊枪在中断点。"));
    left_->setText(tr("焊缝还剩 %1 mm。").arg(mmText(view_->leftMm())));
    picture_->show(*view_);
}

double ResumeDialog::overlapMm() const {
    return overlap_->value();
}

void ResumeDialog::choose(Choice choice) {
    if (choice == Choice::GoOnWithOverlap) {
        rememberedMm = overlap_->value();
    }
    emit chosen(choice);
    accept();
}

}  // namespace lumo
