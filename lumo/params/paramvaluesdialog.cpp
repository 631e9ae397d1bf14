#include "params/paramvaluesdialog.h"

#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"
#include "program/parameters.h"
#include "program/words.h"
#include "ui_paramvaluesdialog.h"
#include "undo/edit.h"
#include "widgets/dressing.h"
#include "widgets/fieldanswer.h"
#include "widgets/watchedlinedialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRegularExpressionValidator>

#include <algorithm>

using namespace lumo;
using namespace prog;

namespace {

enum Column { NumberColumn, GroupColumn, TagColumn, ValueColumn, RangeColumn };

/// The rows at which the three groups begin.
const RowGroups& rowGroups() {
    static const RowGroups groups = [] {
        const std::vector<ParameterRow>& rows = parameterRows();
        RowGroups found;
        for (std::size_t row = 0; row < rows.size(); ++row) {
            if (row == 0 || rows[row].group != rows[row - 1].group) {
                found.starts.append(static_cast<int>(row));
            }
        }
        return found;
    }();
    return groups;
}

constexpr QRgb headColour = qRgb(0xCC, 0xCC, 0xCC);
constexpr int maxNameWidth = 320;  ///< px at factor 1

/// The name of the set as a heading, elided so that it fits into the dialog.
QString heading(const QString& name) {
    const QFontMetrics metrics(look::font(look::Size::Title, look::Weight::State));
    const QString shown = metrics.elidedText(name, Qt::ElideRight, look::px(maxNameWidth));
    return QStringLiteral("<h1>[%1]:</h1>").arg(shown.toHtmlEscaped());
}

QString valuePattern(const QString& name) {
    const ParameterRow* const row = parameterRow(name);
    return row && row->isPercentage() ? QStringLiteral("^(?:[1-9]\\d{0,1}|0|100|[1-2]\\d{1})$")
                                      : QStringLiteral("^(?:[1-9]\\d{0,2}|0|5000|[1-4]\\d{3})$");
}

/// A figure with its unit at the right of the field.
class UnitLine final : public QLineEdit {
public:
    UnitLine(const QString& text, const QString& unit) : QLineEdit(text), unit_(unit) {
        setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        const QFontMetrics metrics(look::font(look::Size::Caption));
        setTextMargins(0, 0, metrics.horizontalAdvance(unit) + look::px(unitGap), 0);
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        QLineEdit::paintEvent(event);
        QPainter painter(this);
        painter.setFont(look::font(look::Size::Caption));
        painter.setPen(QColor(look::ink2));
        const QRect place = rect().adjusted(0, 0, -look::px(unitMargin), 0);
        painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter, unit_);
    }

private:
    static constexpr int unitGap = 6, unitMargin = 16;
    const QString unit_;
};

}  // namespace

ParamValuesDialog::ParamValuesDialog(ModuleObject* set, QWidget* parent)
    : AnswerDialog(Closing::ByItself, parent),
      ui_(std::make_unique<Ui::ParamValuesDialog>()),
      set_(set),
      list_(set->pmobj()) {
    ui_->setupUi(this);
    setUpButtons(ui_->buttonBox, tr("确定"), tr("取消"));
    note_ = new QLabel(this);
    note_->setObjectName(QStringLiteral("lblRange"));
    note_->setWordWrap(true);
    ui_->verticalLayout->insertWidget(ui_->verticalLayout->count() - 1, note_);
    const QList<ModuleObject*> definitions = m(key::defaultParam)->cmobjs();
    ui_->tableWidget->setRowCount(definitions.size());
    for (int row = 0; row < definitions.size(); ++row) {
        addRow(row, definitions[row]);
    }
    dressTable();
    connect(ui_->tableWidget, &QTableWidget::cellChanged, this, &ParamValuesDialog::activateCell);
    ui_->label->setText(heading(set->r(field::name)->getString()));
    refreshOk();
    fitToPage();
}

ParamValuesDialog::~ParamValuesDialog() = default;

void ParamValuesDialog::dressTable() {
    QTableWidget* const table = ui_->tableWidget;
    dressGroups(table, rowGroups(), GroupColumn);
    table->setTabKeyNavigation(false);  // Tab moves from line to line, not from cell to cell
    table->setShowGrid(false);
    constexpr int rowHeight = 52, valueWidth = 136, rangeWidth = 96;
    table->verticalHeader()->setDefaultSectionSize(look::px(rowHeight));
    QHeaderView* const header = table->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(TagColumn, QHeaderView::Stretch);
    header->setSectionResizeMode(ValueColumn, QHeaderView::Fixed);
    header->setSectionResizeMode(RangeColumn, QHeaderView::Fixed);
    table->setColumnWidth(ValueColumn, look::px(valueWidth));
    table->setColumnWidth(RangeColumn, look::px(rangeWidth));
    // OK is the main button, also while it is disabled.
    okButton()->setProperty("primary", true);
    ui_->buttonBox->button(QDialogButtonBox::Cancel)->setAutoDefault(false);
}

/// As large as the page lets it be.
void ParamValuesDialog::fitToPage() {
    constexpr int wanted = 720, high = 672, around = 16;
    const QSize page = parentWidget() ? parentWidget()->size() : QSize(look::px(wanted), look::px(high));
    resize(std::min(look::px(wanted), page.width() - around),
           std::min(look::px(high), page.height() - around));
}

/// In a narrow dialog the numbers and groups give way to the names.
void ParamValuesDialog::resizeEvent(QResizeEvent* event) {
    AnswerDialog::resizeEvent(event);
    constexpr int leastForGroups = 600;
    const bool isNarrow = width() < look::px(leastForGroups);
    ui_->tableWidget->setColumnHidden(NumberColumn, isNarrow);
    ui_->tableWidget->setColumnHidden(GroupColumn, isNarrow);
}

void ParamValuesDialog::showField(const QString& name) {
    for (QLineEdit* const line : qAsConst(lines_)) {
        if (line->objectName() == name) {
            line->setFocus();
            line->selectAll();
        }
    }
}

void ParamValuesDialog::addRow(int row, const ModuleObject* definition) {
    const QString groups[] = {tr("功率参数"), tr("过程参数"), tr("送丝参数")};
    const int start = rowGroups().startOf(row);
    QTableWidget* table = ui_->tableWidget;
    table->setCellWidget(row, NumberColumn, cellLabel(QString::number(row - start + 1)));
    table->setCellWidget(row, GroupColumn,
                         cellLabel(row == start ? QString() : groups[rowGroups().groupOf(row)]));
    QLabel* const tag = cellLabel(definition->r(field::tag)->getString());
    tag->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    tag->setWordWrap(true);
    table->setCellWidget(row, TagColumn, tag);
    const QString name = definition->r(field::name)->getString();
    table->setCellWidget(row, ValueColumn, valueLine(name, set_->r(name)->getString(QStringLiteral("0"))));
    if (row == start) {
        // Seen round the field.
        auto* const behind = new QTableWidgetItem;
        behind->setBackground(QColor(headColour));
        table->setItem(row, ValueColumn, behind);
    }
    table->setCellWidget(row, RangeColumn,
                         cellLabel(QStringLiteral("[%1,%2]")
                                       .arg(definition->r(QStringLiteral("range.#0"))->getInt())
                                       .arg(definition->r(QStringLiteral("range.#1"))->getInt())));
}

QLineEdit* ParamValuesDialog::valueLine(const QString& name, const QString& text) {
    const ParameterRow* const row = parameterRow(name);
    auto* line = new UnitLine(text, row ? unitText(row->range().unit) : QString());
    line->setObjectName(name);
    line->setValidator(new QRegularExpressionValidator(QRegularExpression(valuePattern(name)), line));
    line->installEventFilter(this);
    lines_.append(line);
    answerIn(line, name);
    return line;
}

void ParamValuesDialog::answerIn(QLineEdit* line, const QString& name) {
    const ParameterRow* const row = parameterRow(name);
    if (!row) {
        return;
    }
    answers_.append(new FieldAnswer(line, row->range()));
    connect(answers_.last(), &FieldAnswer::answered, this, &ParamValuesDialog::refreshOk);
}

/// Names the first value that is not taken.
void ParamValuesDialog::refreshOk() {
    QString refused;
    for (const FieldAnswer* answer : qAsConst(answers_)) {
        const int row = lines_.indexOf(qobject_cast<QLineEdit*>(answer->parent()));
        const ModuleObject* const definition = m(key::defaultParam)->c(row);
        if (!answer->isTaken() && refused.isEmpty()) {
            refused =
                tr("%1：%2").arg(definition->r(field::tag)->getString(),
                                 rangeText(parameterRow(definition->r(field::name)->getString())->range()));
        }
    }
    note_->setText(refused);
    okButton()->setEnabled(refused.isEmpty());
}

bool ParamValuesDialog::eventFilter(QObject* watched, QEvent* event) {
    auto* line = qobject_cast<QLineEdit*>(watched);
    if (line && event->type() == QEvent::FocusIn) {
        QTableWidget* const table = ui_->tableWidget;
        table->scrollTo(table->model()->index(lines_.indexOf(line), ValueColumn));
    }
    if (line && isPressOnLine(line, event)) {
        line->activateWindow();
        return true;
    }
    return AnswerDialog::eventFilter(watched, event);
}

void ParamValuesDialog::activateCell(int row, int column) {
    logW() << QStringLiteral("ParamValuesDialog::ParamValuesDialog row = ") << row
           << QStringLiteral(" column = ") << column;
    if (QWidget* cell = ui_->tableWidget->cellWidget(row, column)) {
        cell->activateWindow();
    }
}

QString ParamValuesDialog::setName() const {
    return set_ ? set_->r(field::name)->getString() : QString();
}

void ParamValuesDialog::save() {
    if (!set_ || set_->pmobj() != list_) {
        return;
    }
    const QList<ModuleObject*> definitions = m(key::defaultParam)->cmobjs();
    for (int row = 0; row < qMin(definitions.size(), lines_.size()); ++row) {
        const QString name = definitions[row]->r(field::name)->getString();
        const double value = lines_[row]->text().toDouble();
        if (name == field::power && set_->r(name)->getDouble() != value) {
            updateProgram(field::laserPower, value);
        } else if (name == field::ratio && set_->r(name)->getDouble() != value) {
            updateProgram(field::laserDutyCycle, value);
        }
        set_->set(this, name, value);
    }
}

void ParamValuesDialog::updateProgram(QLatin1String field, double value) {
    const QString setName = set_->r(field::name)->getString();
    const ModuleObject* sets = m(key::param);
    const QList<ModuleObject*> lines = m(key::program)->cmobjs();
    for (int line = 0; line < lines.size(); ++line) {
        if (lines[line]->r(field::type)->getString() != statement::open) {
            continue;
        }
        const ModuleObject* used = sets->c(lines[line]->r(field::index)->getInt());
        if (!used->isNull() && used->r(field::name)->getString() == setName) {
            Edit::touch(lines[line]);
            lines[line]->set(this, field, value);
            emit signalparamValueschangedProgram(line);
        }
    }
}
