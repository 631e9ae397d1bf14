#include "editor/inspector.h"

#include "editor/programtable.h"
#include "editor/rowsummary.h"
#include "editor/statementtext.h"
#include "look/icon.h"
#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"
#include "program/words.h"
#include "widgets/fieldanswer.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>

#include <algorithm>

using namespace prog;

namespace lumo {

namespace {

constexpr std::array fields{LineField::Speed, LineField::Zone, LineField::Note};

int titleHeight() {
    return look::px(32);
}

int lineHeight() {
    return look::px(18);
}

int gap() {
    return look::px(8);
}

int captionHeight() {
    return look::px(22);
}

int entryHeight() {
    return look::px(48);
}

QString captionOf(const LineEntry& entry) {
    return entry.field() == LineField::Note
               ? entry.caption()
               : QStringLiteral("%1 (%2)").arg(entry.caption(), unitText(entry.range().unit));
}

}  // namespace

Inspector::Inspector(ProgramTable* table, QWidget* parent) : QWidget(parent), table_(table) {
    setObjectName(QStringLiteral("inspector"));
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(table, &ProgramTable::itemSelectionChanged, this, &Inspector::refresh);
    connect(table, &ProgramTable::programShown, this, &Inspector::refresh);
    connect(table, &ProgramTable::editableChanged, this, &Inspector::enableEntries);
}

Inspector::~Inspector() = default;

void Inspector::setWithEntries(bool with) {
    if (isWithEntries_ != with) {
        isWithEntries_ = with;
        renewEntries();
        updateGeometry();
        update();
    }
}

void Inspector::setBrief(bool brief) {
    if (isBrief_ != brief) {
        isBrief_ = brief;
        update();
    }
}

// --- Content --------------------------------------------------------------------------------------

void Inspector::refresh() {
    if (!isVisible()) {
        return;  // a run moves the selection on from line to line; read when it is shown
    }
    const int before = heightForWidth(width());
    chosen_ = table_->selectedRows().size();
    row_ = chosen_ == 1 ? table_->selectedRow() : -1;
    ModuleObject* const statement = row_ >= 0 ? table_->statementAt(row_) : nullptr;
    const QString type = statement ? statement->c(field::type)->getString() : QString();
    const bool isOther = statement != statement_ || type != type_;
    statement_ = statement;
    type_ = type;
    details_ = statement ? statementDetails(statement) : QString();
    lines_ = linesAt(width());
    const SeamRows& seams = table_->seams();
    const int seam = row_ >= 0 ? seams.seamOf(row_) : 0;
    seam_ = seam > 0 ? tr("焊缝 %1 / %2").arg(seam).arg(seams.seamCount()) : QString();
    if (isOther) {
        renewEntries();
    } else {
        for (LineEntry* const entry : entries_) {
            if (entry && !entry->hasFocus()) {
                entry->revert();
            }
        }
    }
    if (heightForWidth(width()) != before) {
        updateGeometry();
    }
    setAccessibleName(row_ < 0 ? QString() : QString::number(row_ + 1) + QLatin1Char(' ') + type2cn(type_));
    setAccessibleDescription(details_);
    update();
}

void Inspector::renewEntries() {
    for (LineEntry*& entry : entries_) {
        if (entry) {
            entry->disconnect(this);
            entry->hide();
            entry->deleteLater();  // it may be what has just been stored
            entry = nullptr;
        }
    }
    if (!isWithEntries_ || !statement_) {
        return;
    }
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (fieldName(statement_, fields[i]).isEmpty()) {
            continue;
        }
        auto* const entry = new LineEntry(statement_, fields[i], this);
        entries_[i] = entry;
        connect(entry, &QLineEdit::editingFinished, this, [this, entry] { storeEntry(entry); });
        entry->show();
    }
    enableEntries();
    placeEntries();
}

/// An entry that is not taken keeps its text and its red frame.
void Inspector::storeEntry(LineEntry* entry) {
    if (table_->isEditable()) {
        entry->store(table_);
    }
}

void Inspector::enableEntries() {
    for (LineEntry* const entry : entries_) {
        if (entry) {
            entry->setEnabled(table_->isEditable());
        }
    }
}

// --- Places ---------------------------------------------------------------------------------------

QVector<FullLine> Inspector::linesAt(int width) const {
    const QFontMetrics metrics(look::font(look::Size::Caption));
    return fullLines(details_, width, look::px(16),
                     [&metrics](const QString& text) { return metrics.horizontalAdvance(text); });
}

int Inspector::heightOfEntries() const {
    if (!isWithEntries_ || !statement_) {
        return 0;
    }
    const int one = captionHeight() + entryHeight() + gap();
    return (entries_[0] || entries_[1] ? one : 0) + one;
}

QRect Inspector::entryPlace(LineField field) const {
    const int top = titleHeight() + gap() + captionHeight();
    const int one = captionHeight() + entryHeight() + gap();
    const int half = std::min((width() - gap()) / 2, look::px(120));
    switch (field) {
        case LineField::Speed:
            return {0, top, half, entryHeight()};
        case LineField::Zone:
            return {half + gap(), top, half, entryHeight()};
        default:
            return {0, top + (entries_[0] || entries_[1] ? one : 0), width(), entryHeight()};
    }
}

void Inspector::placeEntries() {
    for (LineEntry* const entry : entries_) {
        if (entry) {
            entry->setGeometry(entryPlace(entry->field()));
        }
    }
}

int Inspector::heightForWidth(int width) const {
    const int lines = linesAt(width).size();
    return titleHeight() + (heightOfEntries() > 0 ? gap() + heightOfEntries() : 0) + lines * lineHeight();
}

QSize Inspector::sizeHint() const {
    const int wide = look::px(256);
    return {wide, heightForWidth(std::max(width(), wide))};
}

QSize Inspector::minimumSizeHint() const {
    return {look::px(160), titleHeight()};
}

// --- Events ---------------------------------------------------------------------------------------

void Inspector::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (row_ < 0) {
        painter.setFont(look::font(look::Size::Text));
        painter.setPen(QColor(look::ink3));
        painter.drawText(QRect(0, 0, width(), titleHeight()), Qt::AlignLeft | Qt::AlignVCenter,
                         chosen_ > 1 ? tr("已选 %1 行").arg(chosen_) : QString());
        return;
    }
    paintTitle(&painter);
    paintCaptions(&painter);
    painter.setFont(look::font(look::Size::Caption));
    painter.setPen(QColor(look::ink2));
    int y = titleHeight() + (heightOfEntries() > 0 ? gap() + heightOfEntries() : 0);
    for (const FullLine& line : lines_) {
        painter.drawText(QRect(line.goesOn ? look::px(16) : 0, y, width(), lineHeight()),
                         Qt::AlignLeft | Qt::AlignVCenter, line.text);
        y += lineHeight();
    }
}

/// Number, icon and word; at the right the seam, where there is room.
void Inspector::paintTitle(QPainter* painter) const {
    const QRect title(0, 0, width(), titleHeight());
    painter->setPen(QColor(look::ink));
    const QString number = QString::number(row_ + 1);
    if (isBrief_) {
        painter->setFont(look::font(look::Size::Caption, look::Weight::Strong));
        painter->drawText(title, Qt::AlignLeft | Qt::AlignVCenter,
                          QCoreApplication::translate("ProgramWidget", "第 %1 行").arg(number));
        return;
    }
    painter->setFont(look::font(look::Size::Title, look::Weight::Strong));
    painter->drawText(title, Qt::AlignLeft | Qt::AlignVCenter, number);
    int x = painter->fontMetrics().horizontalAdvance(number) + gap();
    const int icon = look::px(22);
    painter->drawPixmap(x, (title.height() - icon) / 2, look::picture(statementIcon(type_), icon));
    x += icon + gap();
    painter->setFont(look::font(look::Size::Title));
    const QString command = type2cn(type_);
    painter->drawText(title.adjusted(x, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, command);
    x += painter->fontMetrics().horizontalAdvance(command) + gap();
    if (seam_.isEmpty()) {
        return;
    }
    painter->setFont(look::font(look::Size::Caption));
    painter->setPen(QColor(look::ink3));
    if (x + painter->fontMetrics().horizontalAdvance(seam_) <= width()) {
        painter->drawText(title, Qt::AlignRight | Qt::AlignVCenter, seam_);
    }
}

void Inspector::paintCaptions(QPainter* painter) const {
    painter->setFont(look::font(look::Size::Caption));
    painter->setPen(QColor(look::ink3));
    for (const LineEntry* const entry : entries_) {
        if (entry) {
            const QRect place = entryPlace(entry->field());
            const QRect caption(place.left(), place.top() - captionHeight(), place.width(), captionHeight());
            painter->drawText(caption, Qt::AlignLeft | Qt::AlignVCenter, captionOf(*entry));
        }
    }
}

void Inspector::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    lines_ = linesAt(width());
    placeEntries();
}

void Inspector::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    table_->setInspected(true);
    refresh();
}

void Inspector::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    table_->setInspected(false);
}

void Inspector::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::LanguageChange) {
        refresh();
        renewEntries();
        updateGeometry();
    }
}

}  // namespace lumo
