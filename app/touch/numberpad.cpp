#include "app/touch/numberpad.h"

#include "app/touch/paddisplay.h"
#include "look/icon.h"
#include "look/scale.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <QVariant>

namespace app {

namespace {

constexpr int keyWidth = 70, keyHeight = 80, gap = 8, margin = 16;
constexpr int headHeight = 48, displayHeight = 72, limitsHeight = 48, answerHeight = 56;
constexpr int columns = 4;

void setState(QWidget* widget, const char* property, bool on) {
    if (widget->property(property).toBool() != on) {
        widget->setProperty(property, on);
        widget->style()->unpolish(widget);
        widget->style()->polish(widget);
    }
}

}  // namespace

NumberPad::NumberPad(QWidget* parent)
    : QWidget(parent),
      caption_(new QLabel),
      off_(new QToolButton),
      display_(new PadDisplay),
      sign_(new QLabel),
      limits_(new QLabel) {
    setObjectName(QStringLiteral("numberPad"));
    setAttribute(Qt::WA_StyledBackground);
    new QVBoxLayout(this);
    makeHead();
    makeKeys();
    makeAnswers();
    fit();
}

void NumberPad::makeHead() {
    auto* const column = static_cast<QVBoxLayout*>(layout());
    caption_->setObjectName(QStringLiteral("lblPadCaption"));
    caption_->setTextFormat(Qt::PlainText);
    caption_->setWordWrap(true);
    auto* const name = new QLabel(tr("数字键盘"));
    name->setObjectName(QStringLiteral("lblPadName"));
    off_->setObjectName(QStringLiteral("btnPadOff"));
    off_->setAccessibleName(tr("不再使用数字键盘"));
    off_->setFocusPolicy(Qt::NoFocus);
    connect(off_, &QToolButton::clicked, this, &NumberPad::switchedOff);
    auto* const head = new QHBoxLayout;
    head->addWidget(caption_, 1);
    head->addWidget(name);
    head->addWidget(off_);
    column->addLayout(head);
    column->addWidget(display_);
    auto* const note = new QHBoxLayout;
    limits_->setObjectName(QStringLiteral("lblPadLimits"));
    limits_->setTextFormat(Qt::PlainText);
    limits_->setWordWrap(true);
    note->addWidget(sign_);
    note->addWidget(limits_, 1);
    column->addLayout(note);
}

QPushButton* NumberPad::addKey(const QString& name, const QString& text) {
    auto* const key = new QPushButton(text);
    key->setObjectName(QStringLiteral("pad_") + name);
    key->setFocusPolicy(Qt::NoFocus);
    key->setAutoDefault(false);
    keys_.push_back(key);
    return key;
}

void NumberPad::makeKeys() {
    auto* const grid = new QGridLayout;
    const char digits[] = "789456123";
    for (int place = 0; digits[place] != 0; ++place) {
        const QChar digit = QLatin1Char(digits[place]);
        QPushButton* const key = addKey(digit, digit);
        key->setProperty("figure", true);
        grid->addWidget(key, place / 3, place % 3);
        connect(key, &QPushButton::clicked, this, [this, digit] { type(digit); });
    }
    QPushButton* const zero = addKey(QStringLiteral("0"), QStringLiteral("0"));
    zero->setProperty("figure", true);
    grid->addWidget(zero, 3, 0, 1, 2);
    connect(zero, &QPushButton::clicked, this, [this] { type(QLatin1Char('0')); });
    point_ = addKey(QStringLiteral("point"), QStringLiteral("."));
    point_->setProperty("figure", true);
    connect(point_, &QPushButton::clicked, this, [this] { type(field_.point()); });
    erase_ = addKey(QStringLiteral("erase"), QString());
    erase_->setAccessibleName(tr("删除一位"));
    erase_->setAutoRepeat(true);
    connect(erase_, &QPushButton::clicked, this, [this] {
        field_.press(Qt::Key_Backspace);
        refreshSoon();
    });
    clear_ = addKey(QStringLiteral("clear"), tr("清空"));
    connect(clear_, &QPushButton::clicked, this, &NumberPad::clear);
    minus_ = addKey(QStringLiteral("minus"), QStringLiteral("±"));
    minus_->setProperty("figure", true);
    connect(minus_, &QPushButton::clicked, this, [this] {
        field_.turnSign();
        refreshSoon();
    });
    back_ = addKey(QStringLiteral("before"), QString());
    connect(back_, &QPushButton::clicked, this, &NumberPad::takeBack);
    auto* const words = new QVBoxLayout(back_);
    auto* const before = new QLabel(tr("原值"));
    before->setObjectName(QStringLiteral("lblPadBefore"));
    backValue_ = new QLabel;
    backValue_->setObjectName(QStringLiteral("lblPadBeforeValue"));
    words->addStretch(1);
    for (QLabel* const label : {before, backValue_}) {
        label->setAlignment(Qt::AlignCenter);
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
        words->addWidget(label);
    }
    words->addStretch(1);
    grid->addWidget(erase_, 0, columns - 1);
    grid->addWidget(clear_, 1, columns - 1);
    grid->addWidget(minus_, 2, columns - 1);
    grid->addWidget(point_, 3, 2);
    grid->addWidget(back_, 3, columns - 1);
    auto* const column = static_cast<QVBoxLayout*>(layout());
    column->addLayout(grid);
    column->addStretch(1);
}

void NumberPad::makeAnswers() {
    ok_ = new QPushButton(tr("确定"));
    ok_->setObjectName(QStringLiteral("btnPadOk"));
    ok_->setProperty("primary", true);
    cancel_ = new QPushButton(tr("取消"));
    cancel_->setObjectName(QStringLiteral("btnPadCancel"));
    connect(ok_, &QPushButton::clicked, this, &NumberPad::accept);
    connect(cancel_, &QPushButton::clicked, this, &NumberPad::cancel);
    auto* const row = new QHBoxLayout;
    for (QPushButton* const button : {ok_, cancel_}) {
        button->setFocusPolicy(Qt::NoFocus);
        button->setAutoDefault(false);
    }
    row->addWidget(ok_, 3);
    row->addWidget(cancel_, 2);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void NumberPad::fit() {
    using look::px;
    auto* const column = static_cast<QVBoxLayout*>(layout());
    column->setContentsMargins(px(margin), 0, px(margin), px(margin));
    column->setSpacing(0);
    const QSize icon(px(24), px(24));
    off_->setIcon(look::icon(QStringLiteral("close")));
    off_->setIconSize(QSize(px(20), px(20)));
    caption_->setFixedHeight(px(headHeight));
    display_->setFixedHeight(px(displayHeight));
    limits_->setFixedHeight(px(limitsHeight));
    sign_->setPixmap(look::picture(QStringLiteral("warn"), px(20), look::red));
    for (QPushButton* const key : keys_) {
        key->setIconSize(icon);
    }
    erase_->setIcon(look::icon(QStringLiteral("backspace"), look::ink));
    back_->layout()->setContentsMargins(0, 0, 0, 0);
    back_->layout()->setSpacing(0);
    ok_->setIcon(look::icon(QStringLiteral("check"), look::white));
    ok_->setIconSize(icon);
    for (int i = 0; i < column->count(); ++i) {
        if (QLayout* const inner = column->itemAt(i)->layout()) {
            inner->setSpacing(px(gap));
        }
    }
}

QSize NumberPad::sizeHint() const {
    const int rows =
        headHeight + displayHeight + limitsHeight + 4 * keyHeight + 3 * gap + 2 * margin + answerHeight;
    return {look::px(columns * keyWidth + (columns - 1) * gap + 2 * margin), look::px(rows)};
}

void NumberPad::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fit();
    }
}

// --- The field ------------------------------------------------------------------------------------

void NumberPad::begin(const EntryField& field) {
    end();
    field_ = field;
    before_ = field.text();
    field_.selectAll();
    field_.widget()->installEventFilter(this);
    const QList<QLineEdit*> lines = field_.widget()->findChildren<QLineEdit*>();
    for (QLineEdit* const line : lines + QList<QLineEdit*>{qobject_cast<QLineEdit*>(field_.widget())}) {
        if (line) {
            connect(line, &QLineEdit::textChanged, this, &NumberPad::refreshSoon);
            connect(line, &QLineEdit::cursorPositionChanged, this, &NumberPad::refreshSoon);
            connect(line, &QLineEdit::selectionChanged, this, &NumberPad::refreshSoon);
        }
    }
    caption_->setText(field_.caption());
    backValue_->setText(before_);
    point_->setText(field_.point());
    refresh();
}

void NumberPad::end() {
    if (QWidget* const widget = field_.widget()) {
        widget->removeEventFilter(this);
        const QList<QLineEdit*> lines = widget->findChildren<QLineEdit*>();
        for (QLineEdit* const line : lines) {
            line->disconnect(this);
        }
        widget->disconnect(this);
    }
    field_ = {};
}

bool NumberPad::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::DynamicPropertyChange) {
        refreshSoon();
    }
    return false;
}

void NumberPad::type(QChar letter) {
    field_.press(letter.unicode(), letter);
    refreshSoon();
}

void NumberPad::clear() {
    field_.selectAll();
    field_.press(Qt::Key_Backspace);
    refreshSoon();
}

void NumberPad::takeBack() {
    field_.replace(before_);
    refreshSoon();
}

void NumberPad::accept() {
    const EntryField field = field_;
    end();
    field.finish();
    emit done();
}

/// An entry in a cell is left as by Escape, which writes nothing.
void NumberPad::cancel() {
    const EntryField field = field_;
    end();
    field.replace(before_);
    if (field.isInCell()) {
        field.press(Qt::Key_Escape);
    } else {
        field.finish();
    }
    emit done();
}

/// After the field has answered what was typed.
void NumberPad::refreshSoon() {
    if (!due_) {
        due_ = true;
        QMetaObject::invokeMethod(
            this, [this] { refresh(); }, Qt::QueuedConnection);
    }
}

void NumberPad::refresh() {
    due_ = false;
    const QLineEdit* const line = field_.line();
    if (!line) {
        return;
    }
    const QString text = field_.text();
    const bool taken = field_.isTaken(before_);
    const bool isSelected = line->hasSelectedText();
    const int start = isSelected ? line->selectionStart() : 0;
    display_->show({text, field_.unit(), qBound(0, line->cursorPosition(), text.size()),
                    isSelected ? qMin(line->selectionLength() + start, text.size()) : 0, taken});
    const QString limits = field_.limits();
    const QString unit = field_.unit();
    limits_->setText(limits.isEmpty()
                         ? QString()
                         : tr("允许：%1").arg(unit.isEmpty() ? limits : limits + QLatin1Char(' ') + unit));
    sign_->setVisible(!taken && !limits.isEmpty());
    setState(limits_, "refused", !taken);
    refreshKeys();
    ok_->setEnabled(taken);
}

void NumberPad::refreshKeys() {
    const QString text = field_.text();
    const bool isWhole = field_.line()->selectedText().size() >= text.size();
    erase_->setEnabled(!text.isEmpty());
    clear_->setEnabled(!text.isEmpty());
    minus_->setEnabled(field_.takesSign());
    point_->setEnabled(field_.takesPoint() && (isWhole || !text.contains(field_.point())));
    back_->setEnabled(text != before_);
}

}  // namespace app
