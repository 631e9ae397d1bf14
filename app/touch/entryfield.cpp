#include "app/touch/entryfield.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QDateTimeEdit>
#include <QDoubleSpinBox>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTextEdit>
#include <QValidator>

namespace app {

namespace {

const QString draftName = QStringLiteral("draft");

bool isOpen(const QWidget* widget, bool readOnly) {
    return widget->isEnabled() && !readOnly;
}

bool isNumberLine(const QLineEdit* line) {
    if (line->property("padDecimals").isValid()) {
        return true;
    }
    const QValidator* const validator = line->validator();
    if (!validator) {
        return false;
    }
    QString letter = QStringLiteral("a");
    QString digit = QStringLiteral("1");
    int position = 1;
    return validator->validate(letter, position) == QValidator::Invalid &&
           validator->validate(digit, position) != QValidator::Invalid;
}

/// The label before the field in its row, else the one above it.
QString nameBeside(const QWidget* field) {
    const QWidget* const parent = field->parentWidget();
    if (!parent) {
        return {};
    }
    const QLabel* nearest = nullptr;
    int least = parent->width() + parent->height();
    const QRect place = field->geometry();
    const QList<QLabel*> labels = parent->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QLabel* const label : labels) {
        if (label->buddy() == field) {
            return label->text();
        }
        const QRect other = label->geometry();
        const bool inRow = other.top() < place.bottom() && other.bottom() > place.top();
        const bool above = other.left() < place.right() && other.right() > place.left();
        int distance = -1;
        if (inRow) {
            distance = place.left() - other.right();
        } else if (above) {
            distance = parent->width() + place.top() - other.bottom();
        }
        if (label->isVisible() && !label->text().isEmpty() && distance >= 0 && distance < least) {
            least = distance;
            nearest = label;
        }
    }
    return nearest ? nearest->text() : QString();
}

QString withoutColon(QString text) {
    text = text.trimmed();
    while (text.endsWith(QLatin1Char(':')) || text.endsWith(QChar(0xFF1A))) {
        text.chop(1);
    }
    return text.remove(QLatin1Char('&'));
}

}  // namespace

EntryField EntryField::of(QWidget* widget) {
    EntryField field;
    for (QWidget* w = widget; w && !field.widget_; w = w->isWindow() ? nullptr : w->parentWidget()) {
        if (const auto* box = qobject_cast<QAbstractSpinBox*>(w)) {
            const bool isDate = qobject_cast<QDateTimeEdit*>(w);
            field.isNumber_ = !isDate;
            if (isDate || !isOpen(w, box->isReadOnly())) {
                break;
            }
            field.widget_ = w;
        } else if (const auto* line = qobject_cast<QLineEdit*>(w)) {
            const QWidget* const parent = w->parentWidget();
            if (qobject_cast<const QAbstractSpinBox*>(parent) || w->objectName() == draftName) {
                continue;
            }
            if (!isOpen(w, line->isReadOnly())) {
                break;
            }
            field.widget_ = w;
            field.isNumber_ = isNumberLine(line);
        } else if (const auto* text = qobject_cast<QTextEdit*>(w)) {
            field.widget_ = isOpen(w, text->isReadOnly()) ? w : nullptr;
            break;
        } else if (const auto* plain = qobject_cast<QPlainTextEdit*>(w)) {
            field.widget_ = isOpen(w, plain->isReadOnly()) ? w : nullptr;
            break;
        }
    }
    return field;
}

QLineEdit* EntryField::ownLine() const {
    if (auto* const line = qobject_cast<QLineEdit*>(widget_.data())) {
        return line;
    }
    return widget_ ? widget_->findChild<QLineEdit*>(QStringLiteral("qt_spinbox_lineedit")) : nullptr;
}

QLineEdit* EntryField::line() const {
    QLineEdit* const own = ownLine();
    auto* const draft = own ? own->findChild<QLineEdit*>(draftName) : nullptr;
    return draft && !draft->isHidden() ? draft : own;
}

bool EntryField::isInCell() const {
    const QWidget* const parent = widget_ ? widget_->parentWidget() : nullptr;
    const auto* view = parent ? qobject_cast<const QAbstractItemView*>(parent->parentWidget()) : nullptr;
    return view && view->viewport() == parent;
}

QString EntryField::caption() const {
    if (!widget_) {
        return {};
    }
    for (const QString& name :
         {widget_->property("padCaption").toString(), widget_->accessibleName(), nameBeside(widget_),
          qobject_cast<QLineEdit*>(widget_.data())
              ? static_cast<QLineEdit*>(widget_.data())->placeholderText()
              : QString()}) {
        if (!name.isEmpty()) {
            return withoutColon(name);
        }
    }
    return {};
}

QString EntryField::affix(const char* property) const {
    return widget_ ? widget_->property(property).toString() : QString();
}

QString EntryField::unit() const {
    const QString unit = affix("padUnit");
    return unit.isEmpty() ? affix("suffix").trimmed() : unit;
}

QString EntryField::limits() const {
    QString least, most;
    if (const auto* box = qobject_cast<QSpinBox*>(widget_.data())) {
        least = QString::number(box->minimum());
        most = QString::number(box->maximum());
    } else if (const auto* figures = qobject_cast<QDoubleSpinBox*>(widget_.data())) {
        least = QString::number(figures->minimum());
        most = QString::number(figures->maximum());
    }
    const QString told = affix("padRange");
    return told.isEmpty() && !least.isEmpty()
               ? QCoreApplication::translate("app::NumberPad", "%1 至 %2").arg(least, most)
               : told;
}

/// Whether a text may stand in the field, at least as the beginning of another one.
bool EntryField::allows(const QString& text) const {
    const QLineEdit* const own = ownLine();
    const QValidator* const validator = own ? own->validator() : nullptr;
    QString checked = text;
    int position = text.size();
    return !validator || validator->validate(checked, position) != QValidator::Invalid;
}

bool EntryField::takesSign() const {
    const QVariant told = widget_ ? widget_->property("padSigned") : QVariant();
    const QVariant minimum = widget_ ? widget_->property("minimum") : QVariant();
    if (told.isValid()) {
        return told.toBool();
    }
    return minimum.isValid() ? minimum.toDouble() < 0 : allows(QStringLiteral("-"));
}

bool EntryField::takesPoint() const {
    const QVariant told = widget_ ? widget_->property("padDecimals") : QVariant();
    const QVariant decimals = widget_ ? widget_->property("decimals") : QVariant();
    if (told.isValid() || decimals.isValid()) {
        return (told.isValid() ? told : decimals).toInt() > 0;
    }
    return !qobject_cast<QSpinBox*>(widget_.data()) && allows(QStringLiteral("1") + point());
}

QChar EntryField::point() const {
    if (const auto* box = qobject_cast<QDoubleSpinBox*>(widget_.data())) {
        return box->locale().decimalPoint();
    }
    const QLineEdit* const own = ownLine();
    const auto* validator = own ? qobject_cast<const QDoubleValidator*>(own->validator()) : nullptr;
    return validator ? validator->locale().decimalPoint() : QLatin1Char('.');
}

QString EntryField::text() const {
    const QLineEdit* const shown = line();
    if (!shown) {
        return {};
    }
    QString text = shown->text();
    const QString prefix = affix("prefix");
    const QString suffix = affix("suffix");
    if (!suffix.isEmpty() && text.endsWith(suffix)) {
        text.chop(suffix.size());
    }
    if (!prefix.isEmpty() && text.startsWith(prefix)) {
        text.remove(0, prefix.size());
    }
    return text;
}

bool EntryField::isTaken(const QString& before) const {
    const QLineEdit* const own = ownLine();
    if (!widget_ || !own) {
        return widget_;
    }
    const QVariant told = widget_->property("padTaken");
    if (told.isValid()) {
        return told.toBool();
    }
    return text() == before || (line() == own && own->hasAcceptableInput());
}

// --- Typing ---------------------------------------------------------------------------------------

/// Where a key of a keyboard would go.
QWidget* EntryField::target() const {
    QWidget* const focused = QApplication::focusWidget();
    if (focused && widget_ && (focused == widget_ || widget_->isAncestorOf(focused))) {
        return focused;
    }
    return widget_ && widget_->focusProxy() ? widget_->focusProxy() : widget_.data();
}

void EntryField::press(int key, const QString& text) const {
    const QPointer<QWidget> receiver = target();
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        if (receiver) {
            QKeyEvent event(type, key, Qt::NoModifier, text);
            QCoreApplication::sendEvent(receiver, &event);
        }
    }
}

void EntryField::commit(const QString& text) const {
    if (QWidget* const receiver = target()) {
        QInputMethodEvent event;
        event.setCommitString(text);
        QCoreApplication::sendEvent(receiver, &event);
    }
}

void EntryField::selectAll() const {
    QLineEdit* const shown = line();
    auto* const box = qobject_cast<QAbstractSpinBox*>(widget_.data());
    if (box && shown == ownLine()) {
        box->selectAll();
    } else if (shown) {
        shown->selectAll();
    }
}

/// A line is set: what stood in it before may be more than can be typed.
void EntryField::replace(const QString& text) const {
    if (auto* const own = qobject_cast<QLineEdit*>(widget_.data())) {
        own->setText(text);
        return;
    }
    selectAll();
    if (text.isEmpty()) {
        press(Qt::Key_Backspace);
    }
    for (const QChar letter : text) {
        press(letter.unicode(), letter);
    }
}

void EntryField::turnSign() const {
    const bool whole = line() && line()->hasSelectedText();
    press(Qt::Key_Home);
    const bool isNegative = text().startsWith(QLatin1Char('-'));
    if (isNegative) {
        press(Qt::Key_Delete);
    } else {
        press(Qt::Key_Minus, QStringLiteral("-"));
    }
    press(Qt::Key_End);
    if (whole && line()) {
        const int first = affix("prefix").size() + (isNegative ? 0 : 1);
        line()->setSelection(first, text().size() - (isNegative ? 0 : 1));
    }
}

void EntryField::finish() const {
    if (isInCell()) {
        press(Qt::Key_Return, QStringLiteral("\r"));
    } else if (QWidget* const receiver = target()) {
        receiver->clearFocus();  // which ends the editing of a line or a box
    }
}

}  // namespace app
