#include "editor/pointwidget.h"

#include "editor/pendantkeys.h"
#include "editor/pointlayout.h"
#include "editor/statementtext.h"
#include "look/scale.h"
#include "program/fieldcheck.h"
#include "program/statement.h"
#include "program/words.h"
#include "ui_pointwidget.h"
#include "undo/edit.h"
#include "undo/steptext.h"
#include "widgets/fieldanswer.h"
#include "widgets/fieldlimits.h"
#include "widgets/fieldnote.h"

#include <QResizeEvent>
#include <QtMath>

#include <algorithm>

using namespace lumo;
using namespace prog;

namespace {

constexpr double millimetresPerMetre = 1000.0;
constexpr double degreesPerHalfTurn = 180.0;
constexpr int shownDigits = 6;
constexpr int seventhJoint = 7;

constexpr int mostDecimals = 15;
constexpr double anyFigure = 1e9;

EntryRange anyOf(const char* unit) {
    return {-anyFigure, anyFigure, unit, mostDecimals};
}

/// The points that the check calls never taught.
QStringList untaughtPoints(const ModuleObject* statement, const QString& type) {
    QStringList points;
    const FieldShape* const shape = statementShape(type);
    if (!shape) {
        return points;
    }
    Collector found(Document::Project);
    shape->check(statement, Source::Any, {}, &found);
    for (const Finding& finding : found.take()) {
        if (finding.fault == Fault::PointNotTaught || finding.fault == Fault::PointMissing) {
            points.append(finding.arguments.value(0).toString());
        }
    }
    return points;
}

/// "Speed" of "Speed (mm/s)".
QString withoutUnit(const QString& caption) {
    const int bracket = std::max(caption.lastIndexOf(QLatin1Char('(')), caption.lastIndexOf(QChar(0xff08)));
    return bracket > 0 ? caption.left(bracket).trimmed() : caption;
}

QString element(QLatin1String list, int index) {
    return mName(list, mIndex(index));
}

}  // namespace

PointWidget::PointWidget(int row, ModuleObject* statement, int jointCount, QWidget* parent)
    : QWidget(parent),
      ui_(std::make_unique<Ui::PointWidget>()),
      statement_(statement),
      program_(statement->pmobj()),
      row_(row),
      position_(statement->indexInPmobj()),
      jointCount_(jointCount),
      hasSecondPoint_(statement->hasCmobj(field::point1)),
      p0_(std::make_unique<ModuleObject>(QStringLiteral("p0"))),
      p1_(std::make_unique<ModuleObject>(QStringLiteral("p1"))) {
    ui_->setupUi(this);
    setAttribute(Qt::WA_StyledBackground);
    layout_ = std::make_unique<PointLayout>(ui_.get());
    refreshUIWithType();
    p2t(statement->r(field::point), jointMode_);
    ui_->lineEditSpeed->setText(statement->r(field::speed)->getString());
    ui_->lineEditTurn->setText(statement->r(field::zone)->getString());
    ui_->textEditNote->setPlainText(statement->r(field::note)->getString());
    shownNote_ = ui_->textEditNote->toPlainText();
    ui_->lineEditSpeed->setValidator(new SpeedValidator(ui_->lineEditSpeed));
    allowOnlyDigits(ui_->lineEditTurn);
    limitToZone(ui_->lineEditTurn);
    answerFields();
    connectControls();
}

PointWidget::~PointWidget() {
    m(key::dialogStatement)->setValue(this, QVariant());
}

void PointWidget::connectControls() {
    connect(ui_->okayBtn, &QPushButton::clicked, this, &PointWidget::confirm);
    connect(ui_->cancelBtn, &QPushButton::clicked, this, &PointWidget::cancelBtnClicked);
    for (const FieldAnswer* answer : qAsConst(answers_)) {
        connect(answer, &FieldAnswer::answered, this, &PointWidget::refreshOk);
    }
    refreshOk();
    connect(ui_->updateBtn1, &QPushButton::clicked, this, &PointWidget::teachFirst);
    connect(ui_->updateBtn2, &QPushButton::clicked, this, &PointWidget::teachSecond);
    connect(m(mName(key::keypad, QStringLiteral("center.clicked"))), &ModuleObject::changed, ui_->okayBtn,
            &QPushButton::click);
    connect(ui_->btnMoveThere, &QPushButton::clicked, this, &PointWidget::requestMove);
    followDragKeys(this);
    showPlace();
}

void PointWidget::answerFields() {
    const auto unitOf = [](const Coordinate& coordinate) {
        return coordinate.unit == Unit::Millimetre ? "mm" : "°";
    };
    Coordinates all = firstPoint(jointMode_);
    if (hasSecondPoint_) {
        all += secondPoint();
    }
    for (const Coordinate& coordinate : qAsConst(all)) {
        answers_.append(new FieldAnswer(coordinate.field, anyOf(unitOf(coordinate))));
        FieldAnswer* const answer = answers_.last();
        const QString name = coordinate.field->objectName().mid(qstrlen("lineEdit"));
        answer->nameIt(findChild<QLabel*>(QStringLiteral("lbl") + name)->text());
        answer->showUnit();
    }
    const QString type = statement_->r(field::type)->getString();
    auto* const speed = new FieldAnswer(ui_->lineEditSpeed, entryRange(type, field::speed));
    speed->nameIt(ui_->label_26->text());
    speed->showUnit();
    speed->tellIn(ui_->lblSpeedRange);
    auto* const zone = new FieldAnswer(ui_->lineEditTurn, entryRange(type, field::zone));
    zone->nameIt(ui_->label_27->text());
    zone->showUnit();
    zone->tellIn(ui_->lblTurnRange);
    answers_ << speed << zone;
}

bool PointWidget::areTaken(const Coordinates& coordinates) const {
    return std::all_of(answers_.begin(), answers_.end(), [&coordinates](const FieldAnswer* answer) {
        const auto isOf = [answer](const Coordinate& coordinate) {
            return coordinate.field == answer->parent();
        };
        return answer->isTaken() || std::none_of(coordinates.begin(), coordinates.end(), isOf);
    });
}

/// A move without speed never ends.
void PointWidget::refreshOk() {
    const std::pair<QLabel*, Coordinates> points[] = {{ui_->lblRange1, firstPoint(jointMode_)},
                                                      {ui_->lblRange2, secondPoint()}};
    for (const auto& [note, coordinates] : points) {
        const bool taken = areTaken(coordinates);
        tellNote(note, numberText(), NoteTone::Refused);
        note->setVisible(!taken);
    }
    const bool changed = std::any_of(answers_.begin(), answers_.end(),
                                     [](const FieldAnswer* answer) { return answer->isChanged(); });
    ui_->btnMoveThere->setEnabled(!changed);
    const auto refused = std::find_if(answers_.begin(), answers_.end(),
                                      [](const FieldAnswer* answer) { return !answer->isTaken(); });
    const bool isRefused = refused != answers_.end();
    ui_->okayBtn->setEnabled(!isRefused);
    ui_->lblWhy->setText(isRefused ? tr("请更正：%1").arg(withoutUnit((*refused)->caption()))
                         : changed ? tr("先确认更改，再移动机器人。")
                                   : tr("“移到此点”不出光移动机器人，“更新点位”记录其当前位置。"));
}

void PointWidget::refreshUIWithType() {
    const QString type = statement_->r(field::type)->getString();
    jointMode_ = type == statement::moveJ;
    if (jointMode_) {
        ui_->lblType->setText(tr("空走参数设置"));
        int joint = 0;
        for (QLabel* caption : {ui_->lblX1, ui_->lblY1, ui_->lblZ1, ui_->lblA1, ui_->lblB1, ui_->lblC1}) {
            caption->setText(QStringLiteral("J%1:").arg(++joint));
        }
        hiddenPoint2();
    } else if (type == statement::moveL) {
        ui_->lblType->setText(tr("直线参数设置"));
        hiddenPoint2();
    } else {
        ui_->lblType->setText(tr("全圆/圆弧参数设置"));
    }
    const bool hasSeventh = jointMode_ && jointCount_ >= seventhJoint;
    ui_->lblJ7->setVisible(hasSeventh);
    ui_->lineEditJ7->setVisible(hasSeventh);
    layout_->showSeventh(hasSeventh);
}

void PointWidget::hiddenPoint2() {
    const QList<QWidget*> parts = ui_->card2->findChildren<QWidget*>();
    for (QWidget* const part : parts) {
        part->hide();
    }
    ui_->card2->hide();
}

PointWidget::Coordinates PointWidget::firstPoint(bool jointMode) const {
    QLineEdit* const lines[] = {ui_->lineEditX1, ui_->lineEditY1, ui_->lineEditZ1, ui_->lineEditA1,
                                ui_->lineEditB1, ui_->lineEditC1, ui_->lineEditJ7};
    Coordinates coordinates;
    if (jointMode) {
        const int joints = jointCount_ >= seventhJoint ? seventhJoint : seventhJoint - 1;
        for (int i = 0; i < joints; ++i) {
            coordinates.append({lines[i], element(field::near, i), Unit::Degree});
        }
        return coordinates;
    }
    for (int i = 0; i < 3; ++i) {
        coordinates.append({lines[i], element(field::trans, i), Unit::Millimetre});
    }
    for (int i = 0; i < 3; ++i) {
        coordinates.append({lines[3 + i], element(field::rot, i), Unit::Degree});
    }
    return coordinates;
}

PointWidget::Coordinates PointWidget::secondPoint() const {
    return {{ui_->lineEditX2, element(field::trans, 0), Unit::Millimetre},
            {ui_->lineEditY2, element(field::trans, 1), Unit::Millimetre},
            {ui_->lineEditZ2, element(field::trans, 2), Unit::Millimetre},
            {ui_->lineEditA2, element(field::rot, 0), Unit::Degree},
            {ui_->lineEditB2, element(field::rot, 1), Unit::Degree},
            {ui_->lineEditC2, element(field::rot, 2), Unit::Degree}};
}

QString PointWidget::shownText(const ModuleObject* point, const Coordinate& coordinate) {
    const double value = point->r(coordinate.path)->getDouble();
    const double shown =
        coordinate.unit == Unit::Millimetre ? value * millimetresPerMetre : value / M_PI * degreesPerHalfTurn;
    return QString::number(shown, 'g', shownDigits);
}

void PointWidget::showPoint(const ModuleObject* point, const Coordinates& coordinates) {
    for (const Coordinate& coordinate : coordinates) {
        coordinate.field->setText(shownText(point, coordinate));
    }
}

void PointWidget::storePoint(ModuleObject* point, const Coordinates& coordinates) {
    for (const Coordinate& coordinate : coordinates) {
        const QString text = coordinate.field->text();
        if (point->hasRmobj(coordinate.path) && text == shownText(point, coordinate)) {
            continue;
        }
        const double number = figureIn(text).value_or(0.0);
        point->set(this, coordinate.path,
                   coordinate.unit == Unit::Millimetre ? number / millimetresPerMetre
                                                       : number * M_PI / degreesPerHalfTurn);
    }
}

void PointWidget::p2t(ModuleObject* point, bool jointMode) {
    showPoint(point, firstPoint(jointMode));
    if (!jointMode && hasSecondPoint_) {
        showPoint(statement_->r(field::point1), secondPoint());
    }
}

void PointWidget::t2p(ModuleObject* point, bool jointMode) {
    storePoint(point, firstPoint(jointMode));
    if (!jointMode && hasSecondPoint_) {
        storePoint(statement_->r(field::point1), secondPoint());
    }
}

void PointWidget::teachFirst() {
    p0_->copyFrom(this, kordservice()->get(this, key::posture));
    // The fields of the second point may hold texts that are not stored yet.
    showPoint(p0_.get(), firstPoint(jointMode_));
    ui_->lblTaught1->hide();
}

void PointWidget::teachSecond() {
    if (!isStatementInPlace()) {
        return;
    }
    p1_->copyFrom(this, kordservice()->get(this, key::posture));
    const Edit edit(EditedList::Program, steptext::lineTaught(statement_->indexInPmobj(), command()));
    Edit::touch(statement_);
    statement_->r(field::point1)->copyFrom(this, p1_.get());
    if (hasSecondPoint_) {
        showPoint(statement_->r(field::point1), secondPoint());
    }
    for (const Coordinate& coordinate : secondPoint()) {
        if (auto* const answer = coordinate.field->findChild<FieldAnswer*>()) {
            answer->keep();
        }
    }
    showPlace();
}

QString PointWidget::command() const {
    return type2cn(statement_->r(field::type)->getString());
}

bool PointWidget::isStatementInPlace() const {
    return statement_ && statement_->pmobj() == program_;
}

void PointWidget::storeNumber(QLatin1String name, const QLineEdit* line) {
    if (line->text() != statement_->r(name)->getString()) {
        statement_->set(this, name, line->text().toInt());
    }
}

void PointWidget::save() {
    if (!isStatementInPlace()) {
        return;
    }
    const Edit edit(EditedList::Program, steptext::lineEdited(statement_->indexInPmobj(), command()));
    Edit::touch(statement_);
    ModuleObject* point = statement_->append(this, field::point);
    if (p0_->cmobjCount() > 0) {
        point->copyFrom(this, p0_.get());
    }
    if (p1_->cmobjCount() > 0) {
        statement_->r(field::point1)->copyFrom(this, p1_.get());
    }
    t2p(point, jointMode_);
    storeNumber(field::speed, ui_->lineEditSpeed);
    storeNumber(field::zone, ui_->lineEditTurn);
    const QString note = ui_->textEditNote->toPlainText();
    if (note != shownNote_) {
        statement_->set(this, field::note, note);
    }
}

void PointWidget::confirm() {
    if (!isStatementInPlace()) {
        emit cancelBtnClicked();
        return;
    }
    save();
    emit okayBtnClicked(presentRow());
}

int PointWidget::presentRow() const {
    return row_ + statement_->indexInPmobj() - position_;
}

void PointWidget::requestMove() {
    if (isStatementInPlace()) {
        emit moveRequested(presentRow());
    }
}

/// The line, what each point is in it, and which was never taught.
void PointWidget::showPlace() {
    const QString type = statement_->r(field::type)->getString();
    ui_->lblLine->setText(tr("第 %1 行，共 %2 行").arg(row_ + 1).arg(m(key::program)->size()));
    if (type == statement::moveC) {
        ui_->lblRole1->setText(tr("（途经点）"));
        ui_->lblRole2->setText(tr("（终点）"));
    } else if (type == statement::moveCC) {
        ui_->lblRole1->setText(tr("（圆上第 2 点）"));
        ui_->lblRole2->setText(tr("（圆上第 3 点）"));
    }
    const std::pair<QLabel*, QLatin1String> points[] = {{ui_->lblTaught1, field::point},
                                                        {ui_->lblTaught2, field::point1}};
    const QStringList untaught = untaughtPoints(statement_, type);
    for (const auto& [mark, point] : points) {
        tellNote(mark, tr("未示教"), NoteTone::Warned);
        mark->setVisible(untaught.contains(point));
    }
}

void PointWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layout_->arrange(width());
    // A number pad that opens beside the page must not push the field out of sight that it types into.
    QMetaObject::invokeMethod(this, &PointWidget::showFocused, Qt::QueuedConnection);
}

void PointWidget::showFocused() {
    constexpr int noteBelow = 32;
    QWidget* const focused = focusWidget();
    if (focused && ui_->body->isAncestorOf(focused)) {
        ui_->scroll->ensureWidgetVisible(focused, 0, look::px(noteBelow));
    }
}

void PointWidget::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange && layout_) {
        layout_->measure();
        layout_->arrange(width());
    }
}

void PointWidget::testNofocus() {
    ui_->label_28->setFocus(Qt::OtherFocusReason);
}
