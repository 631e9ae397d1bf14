#include "devices/portconfigwidget.h"

#include "devices/portstate.h"
#include "devices/porttest.h"
#include "equipment/ports.h"
#include "files/settingsfile.h"
#include "program/check.h"
#include "program/words.h"
#include "ui_portconfigwidget.h"
#include "undo/edit.h"
#include "undo/steptext.h"
#include "widgets/dressing.h"
#include "widgets/findingtext.h"
#include "widgets/messagebox.h"
#include "widgets/touchfields.h"
#include "widgets/way.h"

#include <QComboBox>
#include <QEvent>
#include <QListView>
#include <QPointer>
#include <QScopedValueRollback>
#include <QStylePainter>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>

using namespace lumo;
using namespace prog;

namespace {

enum Column { NumberColumn, GroupColumn, TagColumn, NameColumn, EnableColumn, StateColumn, TestColumn };

I_PORT portOf(int row) {
    return static_cast<I_PORT>(row);
}

const RowGroups& portGroups() {
    static const RowGroups groups{{DI_LASER_STATE, DO_GAS, AO_WIRE_SPEED}};
    return groups;
}

QString shownName(const QString& name) {
    return name.isEmpty() ? PortConfigWidget::tr("未分配") : name;
}

/// Shows the empty name as "not assigned".
class PortNameDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale&) const override {
        return shownName(value.toString());
    }
};

/// Ignores the wheel, so that scrolling the table changes no assignment.
class PortNameBox final : public QComboBox {
public:
    PortNameBox() {
        setFocusPolicy(Qt::StrongFocus);
        setView(new QListView);
        setItemDelegate(new PortNameDelegate(this));
    }

protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
    void paintEvent(QPaintEvent*) override {
        QStylePainter painter(this);
        QStyleOptionComboBox option;
        initStyleOption(&option);
        option.currentText = shownName(currentText());
        painter.drawComplexControl(QStyle::CC_ComboBox, option);
        painter.drawControl(QStyle::CE_ComboBoxLabel, option);
    }
};

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
    connect(ui_->okayBtn, &QPushButton::clicked, this, &PortConfigWidget::save);
    listNames();
    const QList<ModuleObject*> ports = ports_->cmobjs();
    QTableWidget* table = ui_->tableWidget;
    table->setRowCount(ports.size());
    for (int row = 0; row < ports.size(); ++row) {
        addRow(row, ports[row]);
    }
    dressGroups(table, portGroups(), GroupColumn);
    table->setTabKeyNavigation(false);  // Tab goes from box to box
    table->resizeColumnToContents(TagColumn);
    table->resizeColumnToContents(NameColumn);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table->horizontalHeader()->setStretchLastSection(false);
    for (const int column : {NumberColumn, TagColumn, EnableColumn, StateColumn, TestColumn}) {
        table->horizontalHeader()->setSectionResizeMode(column, QHeaderView::ResizeToContents);
    }
    constexpr int groupPx = 104;  // its label takes two lines
    table->horizontalHeader()->setSectionResizeMode(GroupColumn, QHeaderView::Fixed);
    table->setColumnWidth(GroupColumn, groupPx);
    constexpr int widestTagPx = 170;  // a longer one takes two lines
    if (table->columnWidth(TagColumn) > widestTagPx) {
        table->horizontalHeader()->setSectionResizeMode(TagColumn, QHeaderView::Fixed);
        table->setColumnWidth(TagColumn, widestTagPx);
        for (int row = 0; row < table->rowCount(); ++row) {
            qobject_cast<QLabel*>(table->cellWidget(row, TagColumn))->setWordWrap(true);
        }
    }
    check();
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
    nameBoxes_.append(nameBox(port));
    QLabel* groupLabel = cellLabel(group);
    groupLabel->setWordWrap(true);
    QTableWidget* table = ui_->tableWidget;
    table->setCellWidget(row, NumberColumn, cellLabel(QString::number(row - layout.startOf(row) + 1)));
    table->setCellWidget(row, GroupColumn, groupLabel);
    table->setCellWidget(row, TagColumn, cellLabel(port->c(field::tag)->getString()));
    table->setCellWidget(row, NameColumn, nameBoxes_.last());
    table->setCellWidget(row, EnableColumn, enableBox);
    states_.append(new PortState(portOf(row)));
    table->setCellWidget(row, StateColumn, states_.last());
    table->setCellWidget(row, TestColumn, testCell(row));
}

/// A test for an output, the way to the device page for the laser, nothing for others.
QWidget* PortConfigWidget::testCell(int row) {
    const I_PORT port = portOf(row);
    if (portInfo(port).kind != word::portOutput) {
        return cellLabel();
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

QComboBox* PortConfigWidget::nameBox(const ModuleObject* port) {
    auto* box = new PortNameBox;
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
    if (states_.size() != nameBoxes_.size() || restricting_) {
        return;
    }
    ModuleObject rows(QStringLiteral("ports"));
    for (int row = 0; row < nameBoxes_.size(); ++row) {
        rows.append(this)
            ->set(this, field::type, ports_->c(row)->c(field::type)->getString())
            ->set(this, field::name, nameBoxes_[row]->currentText())
            ->set(this, field::enable, enableBoxes_[row]->isChecked());
        states_[row]->clearFinding();
    }
    const Findings findings = checkPorts(&rows, CellFacts::ofHost());
    for (const Finding& finding : findings) {
        for (int row = 0; row < states_.size(); ++row) {
            const bool isOther = finding.fault == Fault::PortsShare &&
                                 finding.arguments.value(1).toString() == portInfo(portOf(row)).word;
            if (finding.element == row || isOther) {
                states_[row]->showFinding(finding);
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
    QString text = QStringLiteral("⚠ ") + findingWithRemedy(first);
    if (findings.size() > 1) {
        text += tr("（另有 %1 处）").arg(findings.size() - 1);
    }
    ui_->lblFindings->setText(text);
}

void PortConfigWidget::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh();
}

void PortConfigWidget::refresh() {
    if (!isVisible()) {
        return;
    }
    const QPointer<PortConfigWidget> self(this);  // the end of a test writes
    for (int row = 0; self && row < states_.size(); ++row) {
        states_[row]->showLevel(nameBoxes_[row]->currentText());
        if (TestButton* const test = tests_.value(row)) {
            test->refresh(isStored(row));
        }
    }
}

bool PortConfigWidget::eventFilter(QObject* watched, QEvent* event) {
    auto* box = qobject_cast<QComboBox*>(watched);
    if (isChoosing(event) && nameBoxes_.contains(box)) {
        restrict(box);
    }
    return QWidget::eventFilter(watched, event);
}

void PortConfigWidget::restrict(QComboBox* box) {
    const QString own = box->currentText();
    QStringList names = namesOf(ports_->c(nameBoxes_.indexOf(box))->c(field::type)->getString());
    for (const QComboBox* other : qAsConst(nameBoxes_)) {
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
