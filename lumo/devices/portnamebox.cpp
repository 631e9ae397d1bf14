#include "devices/portnamebox.h"

#include "look/icon.h"
#include "look/scale.h"
#include "look/type.h"

#include <QListView>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QWheelEvent>

namespace lumo {

namespace {

constexpr int fieldHeight = 40;
constexpr int padding = 12;
constexpr int arrowSide = 20;
constexpr int arrowGap = 4;

class PortNameDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->text = shownPortName(index.data().toString());
    }
};

}  // namespace

QString shownPortName(const QString& name) {
    return name.isEmpty() ? PortNameBox::tr("未分配") : name;
}

PortNameBox::PortNameBox(QRgb ground, QWidget* parent) : QComboBox(parent), ground_(ground) {
    constexpr int atOnce = 6;  // the list stays within the page
    setFocusPolicy(Qt::StrongFocus);
    setMaxVisibleItems(atOnce);
}

void PortNameBox::setWarned(bool warned) {
    if (isWarned_ != warned) {
        isWarned_ = warned;
        update();
    }
}

QSize PortNameBox::sizeHint() const {
    QFont strong = font();
    strong.setWeight(look::strongWeight());
    const int text = QFontMetrics(strong).horizontalAdvance(shownPortName(QString()));
    const int name = QFontMetrics(strong).horizontalAdvance(QStringLiteral("LUMO_DO.#00"));
    return {qMax(text, name) + 2 * look::px(padding) + look::px(arrowGap + arrowSide), look::px(fieldHeight)};
}

/// The list is made for the first opening: it costs more than the rest of the row.
void PortNameBox::showPopup() {
    if (!hasList_) {
        hasList_ = true;
        setView(new QListView);
        setItemDelegate(new PortNameDelegate(this));
    }
    QComboBox::showPopup();
}

void PortNameBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

void PortNameBox::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), QColor(ground_));
    const bool isStrong = isWarned_ || hasFocus();
    const qreal line = isStrong ? 2 : 1;
    QRectF field(0, 0, width(), look::px(fieldHeight));
    field.moveCenter(QRectF(rect()).center());
    const QRgb enabledFrame = hasFocus() ? look::blue : isWarned_ ? look::amberLine : look::edge;
    painter.setPen(QPen(QColor(isEnabled() ? enabledFrame : look::rule), line));
    painter.setBrush(QColor(isEnabled() ? look::white : look::panel));
    constexpr qreal radius = 6;
    painter.drawRoundedRect(field.adjusted(line / 2, line / 2, -line / 2, -line / 2), radius, radius);

    const int side = look::px(arrowSide);
    const int pad = look::px(padding);
    const QRgb colour = !isEnabled() ? look::off : isWarned_ ? look::amberInk : look::ink;
    painter.drawPixmap(
        width() - pad - side, (height() - side) / 2,
        look::picture(QStringLiteral("chevron_down"), side, isEnabled() ? look::ink2 : look::off));
    QFont font = this->font();
    font.setWeight(isWarned_ ? look::strongWeight() : QFont::Normal);
    painter.setFont(font);
    painter.setPen(QColor(colour));
    painter.drawText(rect().adjusted(pad, 0, -pad - side, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     shownPortName(currentText()));
}

}  // namespace lumo
