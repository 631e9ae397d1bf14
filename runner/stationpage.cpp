#include "runner/stationpage.h"

#include "program/signal.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QCoreApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QTableWidget>
#include <QVariant>
#include <QWidget>

namespace run {

namespace {

constexpr int nameColumn = 1;
constexpr int projectColumn = 2;
constexpr int stateColumn = 7;

void press(QWidget* widget) {
    const QPointF spot = widget->rect().center();
    const QPointF global = widget->mapToGlobal(spot.toPoint());
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, spot, global, Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &event);
    }
}

QString notChosen(const QString& what, const QString& text) {
    return QStringLiteral("%1 \"%2\" cannot be chosen").arg(what, text);
}

/// The words for an edge in all languages of the panel: a scenario need not be in the panel's language.
QStringList sameEdge(const QString& word) {
    const QStringList rising = {QStringLiteral("上升沿"), QStringLiteral("Rising Edge"),
                                QStringLiteral("По фронту")};
    const QStringList falling = {QStringLiteral("下降沿"), QStringLiteral("Falling Edge"),
                                 QStringLiteral("По спаду")};
    if (rising.contains(word)) {
        return rising;
    }
    return falling.contains(word) ? falling : QStringList(word);
}

}  // namespace

bool StationPage::find(QWidget* panel) {
    page_ = panel->findChild<QWidget*>(QStringLiteral("SignalsBindWidget"));
    navigation_ = panel->findChild<QWidget*>(QStringLiteral("btnBind"));
    if (!page_ || !navigation_) {
        return false;
    }
    switch_ = page_->findChild<QWidget*>(QStringLiteral("switchBtn"));
    table_ = page_->findChild<QTableWidget*>(QStringLiteral("tableWidget"));
    if (!switch_ || !table_) {
        return false;
    }
    readStates();
    const QAbstractItemModel* model = table_->model();
    for (const auto rowsChanged : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved}) {
        connect(model, rowsChanged, this, &StationPage::readStates);
    }
    connect(model, &QAbstractItemModel::dataChanged, this, &StationPage::readStates);
    return true;
}

void StationPage::show() {
    press(navigation_);
}

void StationPage::edit(int row) {
    show();
    table_->selectRow(row);
    if (auto* button = page_->findChild<QAbstractButton*>(QStringLiteral("btnEdit"))) {
        button->click();
    }
}

void StationPage::setMonitoring(bool on) {
    if (isMonitoring() == on) {
        return;
    }
    if (!page_->isVisible()) {
        show();
    }
    press(switch_);
}

bool StationPage::isMonitoring() const {
    return switch_->property("checked").toBool();
}

int StationPage::queued() const {
    return page_->property("queued").toInt();
}

int StationPage::running() const {
    return page_ ? page_->property("running").toInt() : -1;
}

int StationPage::count() const {
    return table_->rowCount();
}

QString StationPage::name(int row) const {
    return text(row, nameColumn);
}

QString StationPage::project(int row) const {
    return text(row, projectColumn);
}

// Rows that were added or removed, and the first text of a new row, are not reported as changes.
void StationPage::readStates() {
    const QStringList before = states_;
    states_.clear();
    for (int row = 0; row < table_->rowCount(); ++row) {
        states_.append(text(row, stateColumn));
    }
    if (states_.size() != before.size()) {
        return;
    }
    for (int row = 0; row < before.size(); ++row) {
        if (!before[row].isEmpty() && states_[row] != before[row]) {
            emit stateChanged(row, states_[row]);
        }
    }
}

QString StationPage::text(int row, int column) const {
    const QTableWidgetItem* item = table_->item(row, column);
    return item ? item->text() : QString();
}

template <class Widget>
Widget* StationEditor::widget(const QString& name) const {
    auto* found = page_->findChild<Widget*>(name);
    if (!found) {
        qFatal("the station editor has no %s", qPrintable(name));
    }
    return found;
}

QString StationEditor::fill(const QJsonObject& fields) const {
    const auto has = [&fields](const char* field) { return fields.contains(QLatin1String(field)); };
    const auto text = [&fields](const char* field) {
        return fields.value(QLatin1String(field)).toVariant().toString();
    };
    QString fault;
    if (has("stationname")) {
        fault = fillName(text("stationname"));
    }
    if (fault.isEmpty() && has("filePath")) {
        fault = chooseProject(text("filePath"));
    }
    if (fault.isEmpty() && has("time")) {
        fault = fillTime(text("time"));
    }
    if (fault.isEmpty() && has("type")) {
        fault = chooseEdge("cmbType", text("type"));
    }
    if (fault.isEmpty() && has("type2")) {
        fault = chooseEdge("cmbType_2", text("type2"));
    }
    for (const prog::SignalFields& signal :
         {prog::startInput, prog::stopInput, prog::startOutput, prog::stopOutput}) {
        if (fault.isEmpty()) {
            fault = chooseSignal(fields, signal);
        }
    }
    return fault;
}

bool StationEditor::accept() const {
    const QPointer<QWidget> page(page_);
    widget<QAbstractButton>(QStringLiteral("okayBtn"))->click();
    return !page || !page->isVisible();
}

void StationEditor::cancel() const {
    widget<QAbstractButton>(QStringLiteral("cancelBtn"))->click();
}

QString StationEditor::fillName(const QString& name) const {
    auto* edit = widget<QLineEdit>(QStringLiteral("lineEdit_stationname"));
    if (edit->isReadOnly() && edit->text() != name) {
        return QStringLiteral("the name \"%1\" is fixed").arg(edit->text());
    }
    edit->setText(name);
    return {};
}

QString StationEditor::fillTime(const QString& time) const {
    auto* edit = widget<QLineEdit>(QStringLiteral("lineETime"));
    edit->setText(time);
    return edit->hasAcceptableInput() ? QString() : QStringLiteral("the time \"%1\" is refused").arg(time);
}

/// Chooses in the file dialog, which the page opens without waiting for its end.
QString StationEditor::chooseProject(const QString& file) const {
    const auto* shown = widget<QLabel>(QStringLiteral("lblProject"));
    if (file.isEmpty()) {
        widget<QAbstractButton>(QStringLiteral("btnclear"))->click();
    } else if (shown->whatsThis() != file) {
        widget<QAbstractButton>(QStringLiteral("btnOpen"))->click();
        if (auto* dialog = page_->findChild<QFileDialog*>()) {
            dialog->selectFile(file);
            QMetaObject::invokeMethod(dialog, "accept", Qt::DirectConnection);
        }
    }
    return shown->whatsThis() == file ? QString() : notChosen(QStringLiteral("the project"), file);
}

QString StationEditor::chooseEdge(const char* combo, const QString& word) const {
    const auto* box = widget<QComboBox>(QLatin1String(combo));
    for (const QString& same : sameEdge(word)) {
        if (box->findText(same) >= 0) {
            return choose(QLatin1String(combo), same);
        }
    }
    return notChosen(QStringLiteral("the edge"), word);
}

/// Fills the name or the register of a signal, depending on its kind: the page shows only one of them.
QString StationEditor::chooseSignal(const QJsonObject& fields, const prog::SignalFields& signal) const {
    const QString field = signal.ioName;
    const QJsonValue kind = fields.value(signal.kind);
    const QJsonValue name = fields.value(field);
    const QJsonValue reg = fields.value(signal.reg);
    if (kind.isUndefined() && name.isUndefined() && reg.isUndefined()) {
        return {};
    }
    const bool isIo = kind.isUndefined() ? !name.isUndefined() : kind.toString() == prog::word::io;
    const QString number = field.endsWith(QLatin1Char('2')) ? QStringLiteral("_2") : QString();
    const QString side = field.startsWith(QLatin1String("DI")) ? QStringLiteral("In") : QStringLiteral("Out");
    const QString combo = QStringLiteral("cmb") + field.left(2);
    widget<QAbstractButton>(QStringLiteral("rdb%1%2%3").arg(isIo ? "IO" : "Reg", side, number))->click();
    if (isIo) {
        return name.isUndefined() ? QString() : choose(combo + number, name.toString());
    }
    const QJsonObject bit = reg.toObject();
    QString fault;
    if (bit.contains(prog::field::name)) {
        fault = choose(combo + QStringLiteral("Reg") + number, bit.value(prog::field::name).toString());
    }
    if (fault.isEmpty() && bit.contains(prog::field::bias) &&
        !bit.value(prog::field::name).toString().isEmpty()) {
        fault = choose(combo + QStringLiteral("RegBias") + number,
                       QString::number(bit.value(prog::field::bias).toVariant().toInt() + 1));
    }
    return fault;
}

QString StationEditor::choose(const QString& combo, const QString& text) const {
    auto* box = widget<QComboBox>(combo);
    const int choice = box->findText(text);
    if (choice < 0) {
        return notChosen(combo, text);
    }
    box->setCurrentIndex(choice);
    return {};
}

}  // namespace run
