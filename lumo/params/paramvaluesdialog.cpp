#include "params/paramvaluesdialog.h"

#include "program/parameters.h"
#include "program/words.h"
#include "ui_paramvaluesdialog.h"
#include "undo/edit.h"
#include "widgets/dressing.h"
#include "widgets/fieldanswer.h"
#include "widgets/watchedlinedialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>

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

constexpr int maxNameWidthPx = 400;

/// The name of the set as a heading, elided so that it fits into the dialog.
QString heading(const QString& name) {
    QFont font;
    font.setPixelSize(2 * QFontInfo(font).pixelSize());
    font.setBold(true);
    const QString shown = QFontMetrics(font).elidedText(name, Qt::ElideRight, maxNameWidthPx);
    return QStringLiteral("<h1>[%1]:</h1>").arg(shown.toHtmlEscaped());
}

QString valuePattern(const QString& name) {
    const ParameterRow* const row = parameterRow(name);
    return row && row->isPercentage() ? QStringLiteral("^(?:[1-9]\\d{0,1}|0|100|[1-2]\\d{1})$")
                                      : QStringLiteral("^(?:[1-9]\\d{0,2}|0|5000|[1-4]\\d{3})$");
}

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
    note_->setAlignment(Qt::AlignCenter);
    note_->setStyleSheet(QStringLiteral("color: #C5221B; font-weight: bold;"));
    ui_->verticalLayout->insertWidget(ui_->verticalLayout->count() - 1, note_);
    const QList<ModuleObject*> definitions = m(key::defaultParam)->cmobjs();
    ui_->tableWidget->setRowCount(definitions.size());
    for (int row = 0; row < definitions.size(); ++row) {
        addRow(row, definitions[row]);
    }
    dressGroups(ui_->tableWidget, rowGroups(), GroupColumn);
    ui_->tableWidget->setTabKeyNavigation(false);  // Tab moves from line to line, not from cell to cell
    QHeaderView* header = ui_->tableWidget->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Stretch);
    header->setSectionResizeMode(GroupColumn, QHeaderView::ResizeToContents);
    header->setSectionResizeMode(TagColumn, QHeaderView::ResizeToContents);
    connect(ui_->tableWidget, &QTableWidget::cellChanged, this, &ParamValuesDialog::activateCell);
    ui_->label->setText(heading(set->r(field::name)->getString()));
    refreshOk();
}

ParamValuesDialog::~ParamValuesDialog() = default;

void ParamValuesDialog::addRow(int row, const ModuleObject* definition) {
    const QString groups[] = {tr("功率参数"), tr("过程参数"), tr("送丝参数")};
    const int start = rowGroups().startOf(row);
    QTableWidget* table = ui_->tableWidget;
    table->setCellWidget(row, NumberColumn, cellLabel(QString::number(row - start + 1)));
    table->setCellWidget(row, GroupColumn,
                         cellLabel(row == start ? QString() : groups[rowGroups().groupOf(row)]));
    table->setCellWidget(row, TagColumn, cellLabel(definition->r(field::tag)->getString()));
    const QString name = definition->r(field::name)->getString();
    table->setCellWidget(row, ValueColumn, valueLine(name, set_->r(name)->getString(QStringLiteral("0"))));
    table->setCellWidget(row, RangeColumn,
                         cellLabel(QStringLiteral("[%1,%2]")
                                       .arg(definition->r(QStringLiteral("range.#0"))->getInt())
                                       .arg(definition->r(QStringLiteral("range.#1"))->getInt())));
}

QLineEdit* ParamValuesDialog::valueLine(const QString& name, const QString& text) {
    auto* line = new QLineEdit(text);
    line->setObjectName(name);
    line->setAlignment(Qt::AlignCenter);
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
            refused = QStringLiteral("▲ %1：%2")
                          .arg(definition->r(field::tag)->getString(),
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
