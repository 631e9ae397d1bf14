#include "app/touch/keyboard.h"

#include "app/touch/keyboardlayout.h"
#include "look/icon.h"
#include "look/scale.h"
#include "look/tokens.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>
#include <QToolButton>

#include <algorithm>

namespace app {

namespace {

constexpr int drawerHeight = 320, headHeight = 48, gap = 8, margin = 8, sideMargin = 16;
constexpr int mostLetters = 12;
constexpr int mostWords = 8;
constexpr int letterShare = 4, wideShare = 6, spaceShare = 20;
constexpr int chinese = 2;

bool isPinyin(const QString& letter) {
    const QChar sign = letter.at(0);
    return (sign >= QLatin1Char('a') && sign <= QLatin1Char('z')) || sign == QLatin1Char('\'');
}

}  // namespace

Keyboard::Keyboard(const QString& language, QWidget* parent)
    : QWidget(parent),
      layout_(layoutOf(language)),
      caption_(new QLabel),
      name_(new QLabel(tr("键盘"))),
      off_(new QToolButton) {
    setObjectName(QStringLiteral("letterKeyboard"));
    setAttribute(Qt::WA_StyledBackground);
    setProperty("covers", true);
    new QVBoxLayout(this);
    makeHead();
    makeRows();
    makeLastRow();
    fit();
    fillRows();
}

Keyboard::~Keyboard() = default;

QString Keyboard::language() const {
    return keyboardLayouts()[layout_].language;
}

QHBoxLayout* Keyboard::addRow() {
    auto* const row = new QHBoxLayout;
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    rows_.push_back(row);
    return row;
}

QPushButton* Keyboard::addKey(QHBoxLayout* row, const QString& name, int share) {
    auto* const key = new QPushButton;
    key->setObjectName(QStringLiteral("key_") + name);
    key->setFocusPolicy(Qt::NoFocus);
    key->setAutoDefault(false);
    key->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    row->addWidget(key, share);
    keys_.push_back(key);
    return key;
}

void Keyboard::makeHead() {
    QHBoxLayout* const head = addRow();
    caption_->setObjectName(QStringLiteral("lblKeyboardCaption"));
    caption_->setTextFormat(Qt::PlainText);
    name_->setObjectName(QStringLiteral("lblKeyboardName"));
    off_->setObjectName(QStringLiteral("btnKeyboardOff"));
    off_->setAccessibleName(tr("不再使用键盘"));
    off_->setFocusPolicy(Qt::NoFocus);
    connect(off_, &QToolButton::clicked, this, &Keyboard::switchedOff);
    head->addWidget(caption_);
    for (int word = 0; word < mostWords; ++word) {
        QPushButton* const key = addKey(head, QStringLiteral("word%1").arg(word), 0);
        key->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        key->setProperty("word", true);
        connect(key, &QPushButton::clicked, this, [this, word] { choose(word); });
        words_.push_back(key);
    }
    head->addStretch(1);
    head->addWidget(name_);
    head->addWidget(off_);
}

void Keyboard::makeRows() {
    constexpr int rows = 3;
    for (int line = 0; line < rows; ++line) {
        QHBoxLayout* const row = addRow();
        if (line == rows - 1) {
            shiftKey_ = addKey(row, QStringLiteral("shift"), wideShare);
            shiftKey_->setCheckable(true);
            shiftKey_->setAccessibleName(tr("大写"));
            connect(shiftKey_, &QPushButton::clicked, this, &Keyboard::turnShift);
        }
        letters_.emplace_back();
        for (int place = 0; place < mostLetters; ++place) {
            QPushButton* const key = addKey(row, QStringLiteral("%1_%2").arg(line).arg(place), letterShare);
            key->setProperty("figure", true);
            letters_.back().push_back(key);
            connect(key, &QPushButton::clicked, this,
                    [this, key] { type(key->property("letter").toString()); });
        }
        if (line == 0) {
            QPushButton* const erase = addKey(row, QStringLiteral("erase"), wideShare);
            erase->setAutoRepeat(true);
            erase->setIcon(look::icon(QStringLiteral("backspace"), look::ink));
            erase->setAccessibleName(tr("退格"));
            connect(erase, &QPushButton::clicked, this, &Keyboard::erase);
        } else if (line == 1) {
            QPushButton* const enter = addKey(row, QStringLiteral("enter"), wideShare);
            enter->setText(tr("回车"));
            connect(enter, &QPushButton::clicked, this, &Keyboard::enter);
        }
    }
}

void Keyboard::makeLastRow() {
    QHBoxLayout* const row = addRow();
    digitsKey_ = addKey(row, QStringLiteral("digits"), wideShare);
    connect(digitsKey_, &QPushButton::clicked, this, &Keyboard::turnDigits);
    languageKey_ = addKey(row, QStringLiteral("language"), wideShare);
    languageKey_->setAccessibleName(tr("语言"));
    connect(languageKey_, &QPushButton::clicked, this, &Keyboard::turnLanguage);
    spaceKey_ = addKey(row, QStringLiteral("space"), spaceShare);
    spaceKey_->setText(tr("空格"));
    connect(spaceKey_, &QPushButton::clicked, this, &Keyboard::space);
    const struct {
        const char* name;
        const char* icon;
        QString spoken;
        int key;
    } arrows[] = {{"left", "chevron_left", tr("光标左移"), Qt::Key_Left},
                  {"right", "chevron_right", tr("光标右移"), Qt::Key_Right}};
    for (const auto& arrow : arrows) {
        QPushButton* const key = addKey(row, QLatin1String(arrow.name), wideShare);
        key->setIcon(look::icon(QLatin1String(arrow.icon), look::ink));
        key->setAccessibleName(arrow.spoken);
        key->setAutoRepeat(true);
        connect(key, &QPushButton::clicked, this, [this, code = arrow.key] { move(code); });
    }
    QPushButton* const hide = addKey(row, QStringLiteral("hide"), wideShare);
    hide->setText(tr("收起"));
    hide->setIcon(look::icon(QStringLiteral("chevron_down"), look::ink));
    connect(hide, &QPushButton::clicked, this, [this] {
        takeTyped();
        emit done();
    });
}

void Keyboard::fit() {
    using look::px;
    auto* const column = static_cast<QVBoxLayout*>(layout());
    column->setContentsMargins(px(sideMargin), px(margin), px(sideMargin), px(margin));
    column->setSpacing(px(gap));
    for (QHBoxLayout* const row : rows_) {
        row->setSpacing(px(gap));
    }
    for (QPushButton* const key : keys_) {
        key->setIconSize(QSize(px(24), px(24)));
    }
    caption_->setFixedHeight(px(headHeight));
    off_->setIcon(look::icon(QStringLiteral("close")));
    off_->setIconSize(QSize(px(20), px(20)));
}

QSize Keyboard::sizeHint() const {
    constexpr int leastWidth = 800;
    return {look::px(leastWidth), look::px(drawerHeight)};
}

void Keyboard::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fit();
    }
}

void Keyboard::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    refresh();
}

/// What the keys write now.
void Keyboard::fillRows() {
    const KeyboardLayout& layout = keyboardLayouts()[layout_];
    const QStringList& rows = digits_ ? layout.digits : layout.letters;
    for (std::size_t line = 0; line < letters_.size(); ++line) {
        const QString& signs = rows[static_cast<int>(line)];
        for (int place = 0; place < mostLetters; ++place) {
            QPushButton* const key = letters_[line][static_cast<std::size_t>(place)];
            key->setVisible(place < signs.size());
            if (place < signs.size()) {
                const QString sign = signs.mid(place, 1);
                const QString letter = shift_ == Shift::Off ? sign : sign.toUpper();
                key->setText(letter == QLatin1String("&") ? QStringLiteral("&&") : letter);
                key->setProperty("letter", letter);
            }
        }
    }
    shiftKey_->setEnabled(!digits_);
    shiftKey_->setChecked(shift_ != Shift::Off);
    shiftKey_->setIcon(look::icon(shift_ == Shift::Locked ? QStringLiteral("lock") : QStringLiteral("up"),
                                  look::ink, look::white));
    digitsKey_->setText(digits_ ? layout.letters.first().left(3).toUpper() : QStringLiteral("123"));
    languageKey_->setText(layout.mark);
    refresh();
}

// --- Typing ---------------------------------------------------------------------------------------

void Keyboard::begin(const EntryField& field) {
    end();
    field_ = field;
    refresh();
}

void Keyboard::end() {
    typed_.clear();
    if (pinyin_) {
        pinyin_->reset();
    }
    field_ = {};
}

void Keyboard::type(const QString& letter) {
    if (letter.isEmpty()) {
        return;
    }
    if (writesWords() && isPinyin(letter)) {
        typed_ += letter;
        showWords(typed_);
        return;
    }
    takeTyped();
    field_.press(letter.at(0).toUpper().unicode(), letter);
    if (shift_ == Shift::Once) {
        shift_ = Shift::Off;
        fillRows();
    }
}

void Keyboard::erase() {
    if (typed_.isEmpty()) {
        field_.press(Qt::Key_Backspace);
        return;
    }
    typed_.chop(1);
    showWords(typed_);
}

void Keyboard::space() {
    if (!typed_.isEmpty()) {
        choose(0);
    } else {
        field_.press(Qt::Key_Space, QStringLiteral(" "));
    }
}

/// A text of several lines goes on.
void Keyboard::enter() {
    if (!typed_.isEmpty()) {
        takeTyped();
        return;
    }
    const EntryField field = field_;
    const bool isText =
        qobject_cast<QTextEdit*>(field.widget()) || qobject_cast<QPlainTextEdit*>(field.widget());
    field.press(Qt::Key_Return, QStringLiteral("\r"));
    if (!isText) {
        emit done();
    }
}

void Keyboard::move(int key) {
    takeTyped();
    field_.press(key);
}

/// A second tap keeps the capitals.
void Keyboard::turnShift() {
    shift_ = shift_ == Shift::Off ? Shift::Once : shift_ == Shift::Once ? Shift::Locked : Shift::Off;
    fillRows();
}

void Keyboard::turnLanguage() {
    takeTyped();
    layout_ = (layout_ + 1) % keyboardLayouts().size();
    digits_ = false;
    shift_ = Shift::Off;
    fillRows();
}

void Keyboard::turnDigits() {
    takeTyped();
    digits_ = !digits_;
    shift_ = Shift::Off;
    fillRows();
}

// --- Chinese --------------------------------------------------------------------------------------

/// The dictionary is read when it is needed first.
bool Keyboard::writesWords() const {
    return layout_ == chinese && !digits_ && shift_ == Shift::Off && pinyin_ && pinyin_->isReady();
}

void Keyboard::showWords(const QString& typed) {
    const QStringList words = typed_.isEmpty() ? QStringList() : pinyin_->words(typed, mostWords);
    for (int place = 0; place < mostWords; ++place) {
        words_[static_cast<std::size_t>(place)]->setText(place < words.size() ? words[place] : QString());
    }
    if (typed_.isEmpty()) {
        pinyin_->reset();
    }
    refresh();
}

void Keyboard::choose(int word) {
    if (word > 0 && words_[static_cast<std::size_t>(word)]->text().isEmpty()) {
        return;
    }
    if (words_.front()->text().isEmpty()) {
        takeTyped();
        return;
    }
    if (!pinyin_->choose(word)) {
        showWords(QString());
        return;
    }
    field_.commit(pinyin_->result());
    typed_.clear();
    showWords(typed_);
}

/// The letters themselves, where no word was chosen.
void Keyboard::takeTyped() {
    if (typed_.isEmpty()) {
        return;
    }
    field_.commit(typed_);
    typed_.clear();
    showWords(typed_);
}

/// The head: what is typed and its words, or the field's name. As many words as have room.
void Keyboard::refresh() {
    if (layout_ == chinese && !pinyin_) {
        pinyin_ = std::make_unique<Pinyin>();
    }
    const bool missing = layout_ == chinese && !pinyin_->isReady();
    QString caption = field_.caption();
    if (!typed_.isEmpty()) {
        caption = typed_;
    } else if (missing) {
        caption = tr("没有拼音词库，字母直接输入");
    }
    caption_->setText(caption);
    name_->setVisible(typed_.isEmpty());
    int room = width() - 2 * look::px(sideMargin) - look::px(headHeight) - caption_->sizeHint().width();
    for (QPushButton* const word : words_) {
        const int needed = std::max(look::px(headHeight + gap), word->sizeHint().width() + 2 * look::px(gap));
        room -= needed + look::px(gap);
        word->setMinimumWidth(needed);
        word->setVisible(!typed_.isEmpty() && !word->text().isEmpty() && room >= 0);
    }
}

}  // namespace app
