#include "devices/portconfigwidget.h"

#include "devices/portnamebox.h"
#include "devices/portstate.h"
#include "devices/porttable.h"
#include "devices/porttest.h"
#include "equipment/handlit.h"
#include "equipment/ports.h"
#include "files/settingsfile.h"
#include "look/icon.h"
#include "look/scale.h"
#include "program/check.h"
#include "program/words.h"
#include "ui_portconfigwidget.h"
#include "undo/edit.h"
#include "undo/steptext.h"
#include "widgets/findingtext.h"
#include "widgets/messagebox.h"
#include "widgets/touchfields.h"
#include "widgets/way.h"

#include <QEvent>
#include <QPointer>
#include <QScopedValueRollback>
#include <QTimer>

#include <algorithm>

using namespace lumo;
using namespace prog;

namespace {

I_PORT portOf(int row) {
    return static_cast<I_PORT>(row);
}

/// From this width the warning stands beside the title, below it in a narrower page.
constexpr int besideFrom = 640;

const RowGroups& portGroups() {
    static const RowGroups groups{{DI_LASER_STATE, DO_GAS, AO_WIRE_SPEED}};
    return groups;
}

/// Whether an event may open the list or change the choice.
bool isChoosing(const QEvent* event) {
    return event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress;
}

/// The empty entry for "not assigned", and the name of each bit.
QStringList bitNames(const ModuleObject* registers, const QString& bits) {
    QStringList names{QString()};
    const int count = registers->c(bits)->size();
    for (int bit = 0; bit < count; ++bit) {
        names << mName(bits, mIndex(bit));
    }
    return names;
}

}  // namespace

PortConfigWidget::PortConfigWidget(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::PortConfigWidget>()), ports_(m(key::port)) {
    ui_->setupUi(this);
    ui_->okayBtn->setIcon(look::icon(QStringLiteral("check"), look::white));
    connect(ui_->okayBtn, &QPushButton::clicked, this, &PortConfigWidget::save);
    listNames();
    ui_->tableWidget->setRowCount(ports_->cmobjCount());
    table_ = new PortTable(ui_->tableWidget, portGroups());
    table_->mergeGroups();
    if (mustStopAtOnce()) {
        QTimer::singleShot(0, this, &PortConfigWidget::addNextRow);
    } else {
        completeRows();
    }
    constexpr int periodMs = 160;
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &PortConfigWidget::refresh);
    timer->start(periodMs);
}

PortConfigWidget::~PortConfigWidget() = default;

void PortConfigWidget::listNames() {
    const ModuleObject* registers = kordservice()->dataNode(key::registerValues);
    inputNames_ = bitNames(registers, QStringLiteral("LUMO_DI"));
    outputNames_ = bitNames(registers, QStringLiteral("LUMO_DO"));
    analogNames_ = QStringList{QString()};
    const QList<ModuleObject*> all = registers->cmobjs();
    for (const ModuleObject* entry : all) {
        if (entry->name().startsWith(QLatin1String("lumo_ao"), Qt::CaseInsensitive)) {
            analogNames_ << entry->name();
        }
    }
    logW() << QStringLiteral("PortConfigWidget di_names  =  ") << inputNames_;
    logW() << QStringLiteral("PortConfigWidget do_names  =  ") << outputNames_;
    logW() << QStringLiteral("PortConfigWidget ao_names  =  ") << analogNames_;
}

const QStringList& PortConfigWidget::namesOf(const QString& type) const {
    static const QStringList none;
    if (type == word::portInput) {
        return inputNames_;
    }
    if (type == word::portOutput) {
        return outputNames_;
    }
    return type == word::portAnalog ? analogNames_ : none;
}

bool PortConfigWidget::hasAllRows() const {
    return nameBoxes_.size() == ui_->tableWidget->rowCount();
}

void PortConfigWidget::addNextRow() {
    if (hasAllRows()) {
        return;
    }
    const int row = nameBoxes_.size();
    addRow(row, ports_->c(row));
    if (hasAllRows()) {
        rowsComplete();
    } else {
        QTimer::singleShot(0, this, &PortConfigWidget::addNextRow);
    }
}

void PortConfigWidget::completeRows() {
    if (hasAllRows()) {
        return;
    }
    while (!hasAllRows()) {
        const int row = nameBoxes_.size();
        addRow(row, ports_->c(row));
    }
    rowsComplete();
}

void PortConfigWidget::rowsComplete() {
    check();
    if (isVisible()) {
        place();
        refresh();
    }
}

void PortConfigWidget::addRow(int row, const ModuleObject* port) {
    const QString groups[] = {tr("输入"), tr("输出"), tr("模拟量输出")};
    const RowGroups& layout = portGroups();
    const QString group = layout.isHead(row) ? QString()
                                             : QStringLiteral("%1%2").arg(groups[layout.groupOf(row)],
                                                                          port->c(field::type)->getString());
    auto* enableBox = new TouchCheckBox(tr("启用"));
    enableBox->setChecked(port->c(field::enable)->getBool());
    connect(enableBox, &QCheckBox::toggled, this, &PortConfigWidget::check);
    enableBoxes_.append(enableBox);
    nameBoxes_.append(nameBox(row, port));
    states_.append(new PortState(portOf(row)));
    auto* const groupLabel = new QLabel(group);
    groupLabel->setObjectName(QStringLiteral("portGroup"));
    const QString number = QString::number(row - layout.startOf(row) + 1);
    table_->setCell(row, PortTable::NumberColumn, new QLabel(number));
    table_->setCell(row, PortTable::GroupColumn, groupLabel);
    table_->setCell(row, PortTable::TagColumn, new QLabel(port->c(field::tag)->getString()));
    table_->setCell(row, PortTable::NameColumn, nameBoxes_.last());
    table_->setCell(row, PortTable::EnableColumn, enableBox);
    table_->setCell(row, PortTable::StateColumn, states_.last());
    table_->setCell(row, PortTable::TestColumn, testCell(row));
}

/// A test for an output, the way to the device page for the laser, nothing for others.
QWidget* PortConfigWidget::testCell(int row) {
    const I_PORT port = portOf(row);
    if (portInfo(port).kind != word::portOutput) {
        return new QWidget;
    }
    if (testBar(port, true) == TestBar::Laser) {
        const Way way{Way::To::Devices};
        auto* const there = new QPushButton(Guide::caption(way));
        there->setToolTip(testBarText(TestBar::Laser));
        connect(there, &QPushButton::clicked, this, [way] { Guide::instance()->lead(way); });
        return there;
    }
    tests_[row] = new TestButton(port);
    return tests_[row];
}

PortNameBox* PortConfigWidget::nameBox(int row, const ModuleObject* port) {
    auto* box = new PortNameBox(table_->groundOf(row), ui_->tableWidget->viewport());
    box->setStyleSheet(QStringLiteral("background-color: rgb(255, 255, 255)"));
    box->setProperty("func", QStringLiteral("secretly"));
    box->addItems(namesOf(port->c(field::type)->getString()));
    box->setCurrentText(port->c(field::name)->getString());
    box->installEventFilter(this);
    connect(box, &QComboBox::currentTextChanged, this, &PortConfigWidget::check);
    return box;
}

bool PortConfigWidget::isStored(int row) const {
    const ModuleObject* const port = ports_->c(row);
    return nameBoxes_[row]->currentText() == port->c(field::name)->getString() &&
           enableBoxes_[row]->isChecked() == port->c(field::enable)->getBool();
}

/// Shows what is wrong with the assignment on the page.
void PortConfigWidget::check() {
    if (!hasAllRows() || states_.size() != nameBoxes_.size() || restricting_) {
        return;
    }
    ModuleObject rows(QStringLiteral("ports"));
    for (int row = 0; row < nameBoxes_.size(); ++row) {
        rows.append(this)
            ->set(this, field::type, ports_->c(row)->c(field::type)->getString())
            ->set(this, field::name, nameBoxes_[row]->currentText())
            ->set(this, field::enable, enableBoxes_[row]->isChecked());
        states_[row]->clearFinding();
        nameBoxes_[row]->setWarned(false);
    }
    const Findings findings = checkPorts(&rows, CellFacts::ofHost());
    for (const Finding& finding : findings) {
        for (int row = 0; row < states_.size(); ++row) {
            const bool isOther = finding.fault == Fault::PortsShare &&
                                 finding.arguments.value(1).toString() == portInfo(portOf(row)).word;
            if (finding.element == row || isOther) {
                states_[row]->showFinding(finding);
                nameBoxes_[row]->setWarned(true);
            }
        }
    }
    showFindings(findings);
}

void PortConfigWidget::showFindings(const Findings& findings) {
    ui_->lblFindings->setVisible(!findings.empty());
    if (findings.empty()) {
        return;
    }
    const auto worst =
        std::find_if(findings.begin(), findings.end(), [](const Finding& f) { return f.isError(); });
    const Finding& first = worst == findings.end() ? findings.front() : *worst;
    QString text = findingWithRemedy(first);
    text[0] = text.at(0).toUpper();
    if (findings.size() > 1) {
        text += tr("（另有 %1 处）").arg(findings.size() - 1);
    }
    ui_->lblFindings->show(Sign::Warning, text);
}

void PortConfigWidget::showCount() {
    int inputs = 0;
    int outputs = 0;
    int unsaved = 0;
    for (int row = 0; row < nameBoxes_.size(); ++row) {
        const QString type = ports_->c(row)->c(field::type)->getString();
        inputs += type == word::portInput ? 1 : 0;
        outputs += type == word::portOutput ? 1 : 0;
        unsaved += isStored(row) ? 0 : 1;
    }
    const int analogue = nameBoxes_.size() - inputs - outputs;
    QString text = tr("共 %1 个端口 · 输入 %2，输出 %3，模拟量输出 %4")
                       .arg(nameBoxes_.size())
                       .arg(inputs)
                       .arg(outputs)
                       .arg(analogue);
    if (unsaved > 0) {
        text += QStringLiteral(" · ") + tr("未保存：%1").arg(unsaved);
    }
    text += QStringLiteral(" · ") + tr("按住“测试”时打开");
    ui_->lblCount->setText(text);
}

void PortConfigWidget::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    place();
    refresh();
}

void PortConfigWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    ui_->titleLayout->setDirection(width() < look::px(besideFrom) ? QBoxLayout::TopToBottom
                                                                  : QBoxLayout::LeftToRight);
}

void PortConfigWidget::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange && isVisible()) {
        place();
    }
}

/// Lengths of the page's grid, at the factor in force.
void PortConfigWidget::place() {
    const int margin = look::px(16);
    const int small = look::px(8);
    ui_->titleLayout->setContentsMargins(margin, small, margin, small);
    ui_->titleLayout->setSpacing(small);
    ui_->headLayout->setSpacing(small);
    ui_->tableLayout->setContentsMargins(margin, 0, margin, small);
    ui_->gridLayout->setContentsMargins(margin, small, margin, small);
    ui_->okayBtn->setIconSize(QSize(look::px(20), look::px(20)));
    table_->measure();
}

void PortConfigWidget::refresh() {
    if (!isVisible()) {
        return;
    }
    const QPointer<PortConfigWidget> self(this);  // the end of a test writes
    showCount();
    for (int row = 0; self && row < states_.size(); ++row) {
        states_[row]->showLevel(nameBoxes_[row]->currentText());
        if (TestButton* const test = tests_.value(row)) {
            test->refresh(isStored(row));
        }
    }
}

bool PortConfigWidget::eventFilter(QObject* watched, QEvent* event) {
    auto* box = qobject_cast<PortNameBox*>(watched);
    if (box && isChoosing(event) && nameBoxes_.contains(box)) {
        restrict(box);
    }
    return QWidget::eventFilter(watched, event);
}

void PortConfigWidget::restrict(PortNameBox* box) {
    const QString own = box->currentText();
    QStringList names = namesOf(ports_->c(nameBoxes_.indexOf(box))->c(field::type)->getString());
    for (const PortNameBox* other : qAsConst(nameBoxes_)) {
        if (other != box && !other->currentText().isEmpty()) {
            names.removeAll(other->currentText());
        }
    }
    {
        const QScopedValueRollback<bool> restricting(restricting_, true);
        box->clear();
        box->addItems(names);
        box->setCurrentText(own);
    }
    if (box->currentText() != own) {
        check();
    }
}

void PortConfigWidget::switchWire(bool enabled) {
    const QList<ModuleObject*> lines = m(key::program)->cmobjs();
    for (int line = 0; line < lines.size(); ++line) {
        if (lines[line]->c(field::type)->getString() == statement::open) {
            Edit::touch(lines[line]);
            lines[line]->set(this, field::wireEnable, enabled);
            changedLines_.append(line);
        }
    }
}

/// Called before any port changes: a bit that one port leaves may be assigned to another one.
void PortConfigWidget::switchOffLeaving() {
    const QPointer<PortConfigWidget> self(this);  // a listener of a write may delete the page
    for (int row = 0; self && row < nameBoxes_.size(); ++row) {
        const bool enabled = enableBoxes_[row]->isChecked();
        if (!enabled || nameBoxes_[row]->currentText() != ports_->c(row)->c(field::name)->getString()) {
            switchOffPort(this, static_cast<I_PORT>(row));
        }
    }
}

void PortConfigWidget::save() {
    const QPointer<PortConfigWidget> self(this);
    completeRows();
    switchOffLeaving();
    if (!self) {
        return;
    }
    changedLines_.clear();
    storePorts();
    emit signalportconfigchangedProgramlist(changedLines_);
    if (saveSettings(Settings::Ports) && !nameBoxes_.isEmpty()) {
        showMessage(QMessageBox::Information, tr("提示"), tr("保存成功"));
    }
}

void PortConfigWidget::storePorts() {
    const Edit edit(EditedList::Ports, steptext::portsChanged());
    for (int row = 0; row < nameBoxes_.size(); ++row) {
        ModuleObject* port = ports_->c(row);
        const QString name = nameBoxes_[row]->currentText();
        const bool enabled = enableBoxes_[row]->isChecked();
        if (row == DO_WIRE_ENABLE && port->c(field::enable)->getBool() != enabled) {
            switchWire(enabled);
        }
        port->set(this, field::name, name)->set(this, field::enable, enabled);
    }
}
