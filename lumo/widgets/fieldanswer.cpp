#include "widgets/fieldanswer.h"

#include "look/tokens.h"
#include "widgets/fieldnote.h"

#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <QValidator>

#include <algorithm>
#include <iterator>

using prog::EntryRange;
using prog::figureIn;

namespace lumo {

namespace {

/// A red frame over a widget, which keeps its place and its style.
class RedFrame final : public QWidget {
public:
    explicit RedFrame(QWidget* over) : QWidget(over) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
        hide();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        constexpr qreal width = 2;
        constexpr qreal corner = 5;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(look::red), width));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), corner, corner);
    }
};

/// QAbstractSpinBox keeps its line to itself.
QLineEdit* lineOf(const QAbstractSpinBox* box) {
    return box->findChild<QLineEdit*>(QStringLiteral("qt_spinbox_lineedit"));
}

/// A key that may change the text; others have no text to lose.
bool isTyping(const QKeyEvent* key) {
    const bool printable = !key->text().isEmpty() && key->text().at(0).isPrint();
    return printable || key->key() == Qt::Key_Backspace || key->key() == Qt::Key_Delete ||
           key->matches(QKeySequence::Paste) || key->matches(QKeySequence::Cut);
}

}  // namespace

QString unitText(const char* unit) {
    static const char* const known[] = {QT_TRANSLATE_NOOP("lumo::FieldAnswer", "mm/s"),
                                        QT_TRANSLATE_NOOP("lumo::FieldAnswer", "mm"),
                                        QT_TRANSLATE_NOOP("lumo::FieldAnswer", "ms")};
    const bool isKnown = std::any_of(std::begin(known), std::end(known),
                                     [unit](const char* one) { return qstrcmp(one, unit) == 0; });
    return isKnown ? FieldAnswer::tr(unit) : QString::fromUtf8(unit);
}

QString numberText() {
    return FieldAnswer::tr("请输入数字");
}

QString limitsText(const EntryRange& range) {
    if (range.least <= -EntryRange::unlimited) {
        return {};
    }
    const QString least = QString::number(range.least);
    return range.most >= EntryRange::unlimited
               ? FieldAnswer::tr("%1 及以上").arg(least)
               : FieldAnswer::tr("%1 至 %2").arg(least, QString::number(range.most));
}

QString rangeText(const EntryRange& range) {
    QString unit = unitText(range.unit);
    if (!unit.isEmpty()) {
        unit.prepend(QLatin1Char(' '));
    }
    const QString least = QString::number(range.least);
    if (range.least <= -EntryRange::unlimited) {
        return numberText();
    }
    QString text =
        range.most >= EntryRange::unlimited
            ? FieldAnswer::tr("允许：%1%2 及以上，最多 %3 位").arg(least, unit).arg(EntryRange::mostDigits)
            : FieldAnswer::tr("允许：%1 至 %2%3").arg(least, QString::number(range.most), unit);
    return text + (range.decimals == 0 ? FieldAnswer::tr("，整数") : QString());
}

FieldAnswer::FieldAnswer(QWidget* field, QLineEdit* line, const EntryRange& range)
    : QObject(field),
      field_(field),
      line_(line),
      draft_(new QLineEdit(line)),
      frame_(new RedFrame(field)),
      range_(range),
      kept_(line->text()) {
    draft_->setObjectName(QStringLiteral("draft"));
    draft_->setAlignment(line->alignment());
    draft_->setFocusPolicy(Qt::ClickFocus);
    draft_->setContextMenuPolicy(Qt::NoContextMenu);
    draft_->hide();
    // A text that the menu pastes, or that is dropped, would be refused unseen.
    line->setContextMenuPolicy(Qt::NoContextMenu);
    line->setAcceptDrops(false);
    field->installEventFilter(this);
    line->installEventFilter(this);
    draft_->installEventFilter(this);
    connect(draft_, &QLineEdit::textChanged, this, &FieldAnswer::draftEdited);
    describe();
}

FieldAnswer::FieldAnswer(QLineEdit* line, const EntryRange& range) : FieldAnswer(line, line, range) {
    connect(line, &QLineEdit::textChanged, this, &FieldAnswer::fieldEdited);
}

FieldAnswer::FieldAnswer(QDoubleSpinBox* box)
    : FieldAnswer(box, lineOf(box), {box->minimum(), box->maximum(), "%", box->decimals()}) {
    connect(box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &FieldAnswer::fieldEdited);
    connect(line_, &QLineEdit::textChanged, this, &FieldAnswer::refresh);
}

void FieldAnswer::nameIt(const QString& caption) {
    static const QString colons = QStringLiteral(":：");
    QString name = caption.trimmed();
    while (!name.isEmpty() && colons.contains(name.back())) {
        name.chop(1);
    }
    caption_ = name;
    tellPad(pad::caption, name);
}

void FieldAnswer::describe() {
    tellPad(pad::unit, unitText(range_.unit));
    tellPad(pad::range, limitsText(range_));
    tellPad(pad::decimals, range_.decimals);
    tellPad(pad::isSigned, range_.least < 0);
    if (range_.least > -EntryRange::unlimited) {
        tellPad(pad::minimum, range_.least);
    }
    if (range_.most < EntryRange::unlimited) {
        tellPad(pad::maximum, range_.most);
    }
}

/// On all three, because each of them may have the focus.
void FieldAnswer::tellPad(const char* property, const QVariant& value) {
    for (QWidget* const one : {field_, static_cast<QWidget*>(line_), static_cast<QWidget*>(draft_)}) {
        one->setProperty(property, value);
    }
}

void FieldAnswer::tellIn(QLabel* note) {
    note_ = note;
    note->setWordWrap(true);
    refresh();
}

/// The limits with their unit, and what else a figure has to be.
QString FieldAnswer::noteText() const {
    QString text = limitsText(range_);
    if (text.isEmpty()) {
        return numberText();
    }
    const QString unit = unitText(range_.unit);
    if (!unit.isEmpty() && range_.most >= EntryRange::unlimited) {
        text = tr("%1 及以上").arg(QString::number(range_.least) + QLatin1Char(' ') + unit);
    } else if (!unit.isEmpty()) {
        text += QLatin1Char(' ') + unit;
    }
    return text + (range_.decimals == 0 ? tr("，整数") : QString());
}

void FieldAnswer::showUnit() {
    auto* const unit = new QLabel(unitText(range_.unit));
    unit->setObjectName(QStringLiteral("unit"));
    lumo::showUnit(line_, unit);
}

void FieldAnswer::tellBelow() {
    constexpr int gap = 2;
    auto* const place = new QWidget(field_->parentWidget());
    auto* const note = new QLabel(place);
    delete field_->parentWidget()->layout()->replaceWidget(field_, place);
    auto* const rows = new QVBoxLayout(place);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(gap);
    rows->addWidget(field_);
    rows->addWidget(note);
    tellIn(note);
}

void FieldAnswer::allowEmpty() {
    mayBeEmpty_ = true;
    refresh();
}

void FieldAnswer::keep() {
    kept_ = line_->text();
    refresh();
}

bool FieldAnswer::isTaken() const {
    if (isDrafting_) {
        return false;
    }
    if (field_ != line_) {
        return line_->hasAcceptableInput();
    }
    const QString text = line_->text();
    const auto figure = figureIn(text);
    const bool isKept = text == kept_ && figure && (*figure >= range_.least || *figure > 0);
    return isKept || (mayBeEmpty_ && text.isEmpty()) || (!refuses(text) && range_.takes(text));
}

QString FieldAnswer::shownText() const {
    return (isDrafting_ ? draft_ : line_)->text();
}

void FieldAnswer::selectAll() {
    (isDrafting_ ? draft_ : line_)->selectAll();
}

// --- The draft ------------------------------------------------------------------------------------

/// What may still become a figure of the range, as an empty text may, is left to the field itself.
bool FieldAnswer::refuses(const QString& text) const {
    QString checked = text;
    int position = checked.size();
    const QValidator* const validator = line_->validator();
    if (!validator) {
        return false;
    }
    const auto figure = figureIn(text);
    return checked.size() > line_->maxLength() || (field_ == line_ && figure && *figure > range_.most) ||
           validator->validate(checked, position) == QValidator::Invalid;
}

bool FieldAnswer::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (watched == field_ && type == QEvent::Resize) {
        frame_->setGeometry(field_->rect());
    }
    if (watched == line_ && type == QEvent::Resize) {
        draft_->setGeometry(line_->rect());
    }
    if (watched == field_ && type == QEvent::LanguageChange) {
        describe();
    }
    const bool typed = type == QEvent::KeyPress || type == QEvent::InputMethod;
    if (!typed || line_->isReadOnly() || !line_->isEnabled()) {
        return false;
    }
    return isDrafting_ ? typeInDraft(event) : watched != draft_ && isRefusedKey(event);
}

/// Tries the key in the draft, out of sight.
bool FieldAnswer::isRefusedKey(QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress;
    if (isKey ? !isTyping(static_cast<QKeyEvent*>(event))
              : static_cast<QInputMethodEvent*>(event)->commitString().isEmpty()) {
        return false;
    }
    {
        const QScopedValueRollback<bool> trying(isOwnChange_, true);
        draft_->setText(line_->text());
        draft_->setCursorPosition(line_->cursorPosition());
        if (line_->hasSelectedText()) {
            draft_->setSelection(line_->selectionStart(), line_->selectionLength());
        }
        if (isKey) {
            static_cast<QObject*>(draft_)->event(event);
        } else {
            draft_->insert(static_cast<QInputMethodEvent*>(event)->commitString());
        }
    }
    event->accept();  // as it was before the draft got it
    if (!refuses(draft_->text())) {
        return false;
    }
    beginDraft();
    return true;
}

/// True: the event is dealt with. A key that means nothing to a line, such as Escape, goes on to the dialog.
bool FieldAnswer::typeInDraft(QEvent* event) {
    const bool isHandled = static_cast<QObject*>(draft_)->event(event);
    if (event->type() == QEvent::KeyPress && !(isHandled && event->isAccepted()) && field_->parentWidget()) {
        QCoreApplication::sendEvent(field_->parentWidget(), event);
    }
    return true;
}

void FieldAnswer::beginDraft() {
    isDrafting_ = true;
    draft_->setGeometry(line_->rect());
    draft_->setTextMargins(line_->textMargins());
    draft_->setAlignment(line_->alignment());
    draft_->show();
    frame_->raise();
    const bool hadFocus = field_->hasFocus();
    field_->setFocusProxy(draft_);
    if (hadFocus) {
        draft_->setFocus(Qt::OtherFocusReason);
    }
    refresh();
}

void FieldAnswer::endDraft() {
    if (!isDrafting_) {
        return;
    }
    isDrafting_ = false;
    const bool hadFocus = draft_->hasFocus();
    field_->setFocusProxy(nullptr);
    if (hadFocus) {
        field_->setFocus(Qt::OtherFocusReason);
    }
    draft_->hide();
    refresh();
}

void FieldAnswer::draftEdited() {
    if (!isDrafting_ || isOwnChange_) {
        return;
    }
    if (refuses(draft_->text())) {
        refresh();
        return;
    }
    const int position = draft_->cursorPosition();
    endDraft();
    const QScopedValueRollback<bool> writing(isOwnChange_, true);
    line_->setText(draft_->text());
    line_->setCursorPosition(position);
    refresh();
}

/// A text that comes from elsewhere replaces what was typed.
void FieldAnswer::fieldEdited() {
    if (!isOwnChange_) {
        endDraft();
    }
    refresh();
}

void FieldAnswer::refresh() {
    const bool taken = isTaken();
    frame_->setGeometry(field_->rect());
    frame_->setVisible(!taken);
    frame_->raise();
    if (note_) {
        tellNote(note_, noteText(), taken ? NoteTone::Plain : NoteTone::Refused);
    }
    tellPad(pad::isTaken, taken);
    emit answered();
}

}  // namespace lumo
