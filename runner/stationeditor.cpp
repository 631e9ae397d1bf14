#include "runner/stationeditor.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>

namespace run {

namespace {

const QString bias = QStringLiteral("bias");
const QString nameKey = QStringLiteral("name");

QString notChosen(const QString& what, const QString& text) {
    return QStringLiteral("%1 \"%2\" cannot be chosen").arg(what, text);
}

/// The word for the same edge in the other languages of the panel; a scenario is written in one.
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
    for (const char* field : {"DI", "DI2", "DO", "DO2"}) {
        if (fault.isEmpty()) {
            fault = chooseSignal(fields, QLatin1String(field));
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

/// In the dialog for files, which the page opens without waiting for it.
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

/// Of the name and the register only what the kind makes visible.
QString StationEditor::chooseSignal(const QJsonObject& fields, const QString& field) const {
    const QJsonValue kind = fields.value(field + QStringLiteral("_type"));
    const QJsonValue name = fields.value(field);
    const QJsonValue reg = fields.value(field + QStringLiteral("_reg"));
    if (kind.isUndefined() && name.isUndefined() && reg.isUndefined()) {
        return {};
    }
    const bool isIo = kind.isUndefined() ? !name.isUndefined() : kind.toString() == QLatin1String("IO");
    const QString number = field.endsWith(QLatin1Char('2')) ? QStringLiteral("_2") : QString();
    const QString side = field.startsWith(QLatin1String("DI")) ? QStringLiteral("In") : QStringLiteral("Out");
    const QString combo = QStringLiteral("cmb") + field.left(2);
    widget<QAbstractButton>(QStringLiteral("rdb%1%2%3").arg(isIo ? "IO" : "Reg", side, number))->click();
    if (isIo) {
        return name.isUndefined() ? QString() : choose(combo + number, name.toString());
    }
    const QJsonObject bit = reg.toObject();
    QString fault;
    if (bit.contains(nameKey)) {
        fault = choose(combo + QStringLiteral("Reg") + number, bit.value(nameKey).toString());
    }
    if (fault.isEmpty() && bit.contains(bias) && !bit.value(nameKey).toString().isEmpty()) {
        fault = choose(combo + QStringLiteral("RegBias") + number,
                       QString::number(bit.value(bias).toVariant().toInt() + 1));
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
    emit box->activated(choice);
    return {};
}

}  // namespace run
