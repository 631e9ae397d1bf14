#include "tools/pictures/colours.h"

#include "look/contrast.h"
#include "tools/pictures/texts.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QVariant>
#include <QWidget>

#include <algorithm>

namespace pictures {

namespace {

QString textOf(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        return label->text();
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
        return button->text();
    }
    if (const auto* field = qobject_cast<const QLineEdit*>(&widget)) {
        return field->text();
    }
    const auto* box = qobject_cast<const QComboBox*>(&widget);
    return box ? box->currentText() : QString();
}

/// Words on the fixed colours, which are readable by their weight, and say the same by place or icon:
/// switches, the hand-operated laser and pilot light, the buttons of the point page.
bool hasFixedColour(const QWidget& widget) {
    static const QStringList names{QStringLiteral("btnLaserTest"), QStringLiteral("btnRedLight"),
                                   QStringLiteral("updateBtn1"),   QStringLiteral("updateBtn2"),
                                   QStringLiteral("okayBtn"),      QStringLiteral("cancelBtn")};
    const auto* label = qobject_cast<const QLabel*>(&widget);
    return widget.inherits("SwitchButton") || names.contains(widget.objectName()) ||
           widget.property("fixedColour").toBool() || (label && label->text() == QLatin1String("-->"));
}

/// Whether a veil dims it.
bool isVeiled(const QWidget& widget) {
    for (const QWidget* above = &widget; above; above = above->parentWidget()) {
        if (above->findChild<QWidget*>(QStringLiteral("veil"), Qt::FindDirectChildrenOnly)) {
            return true;
        }
        if (above->isWindow()) {
            break;  // a dialog lies over the veil of its page
        }
    }
    return false;
}

/// Whether another widget lies over this one's middle, for example a sheet with its veil.
bool isCovered(const QWidget& window, const QWidget& widget, const QRect& place) {
    const QWidget* top = window.childAt(place.center());
    return top && top != &widget && !widget.isAncestorOf(top) && !top->isAncestorOf(&widget);
}

QRect placeIn(const QWidget& window, const QWidget& widget) {
    const QRect shown = widget.visibleRegion().boundingRect();
    return QRect(widget.mapTo(&window, shown.topLeft()), shown.size());
}

void coverFixed(const QWidget& window, const QWidget& widget, QPainter* painter) {
    const bool isField = qobject_cast<const QLineEdit*>(&widget) || widget.inherits("QTextEdit") ||
                         widget.inherits("QAbstractSpinBox");
    const bool hasCaret = isField && widget.hasFocus();  // Qt paints it black
    if (widget.isVisible() &&
        (hasFixedColour(widget) || hasCaret || widget.property("drawsFixedColours").toBool())) {
        painter->fillRect(placeIn(window, widget), Qt::white);
    }
    for (const QObject* child : widget.children()) {
        const auto* inner = qobject_cast<const QWidget*>(child);
        if (inner && !inner->isWindow()) {
            coverFixed(window, *inner, painter);
        }
    }
}

}  // namespace

double faintContrast(const QWidget& window, const QWidget& widget, const QImage& picture) {
    const QRect place = placeIn(window, widget) & picture.rect();
    if (textOf(widget).trimmed().isEmpty() || place.height() < widget.height() || hasFixedColour(widget) ||
        isVeiled(widget) || isCovered(window, widget, place)) {
        return 0;
    }
    QHash<QRgb, int> colours;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x) {
            ++colours[picture.pixel(x, y)];
        }
    }
    const auto ground = std::max_element(colours.cbegin(), colours.cend());
    double best = 1;
    for (auto colour = colours.cbegin(); colour != colours.cend(); ++colour) {
        best = std::max(best, look::contrast(ground.key(), colour.key()));
    }
    // The thinnest strokes have no pixel of the whole colour.
    constexpr double smoothing = 0.9;
    const double needed = widget.isEnabled() ? 4.5 : 3.0;
    return best < needed * smoothing ? best : 0;
}

QStringList pureColours(const QWidget& window, const QImage& picture) {
    QImage free(picture.size(), QImage::Format_RGB32);
    free.fill(Qt::white);  // behind the round corners of a sheet
    QPainter painter(&free);
    painter.drawImage(0, 0, picture);
    coverFixed(window, window, &painter);
    painter.end();
    QStringList faults;
    const QHash<QRgb, QString> pure{{0xff000000, QStringLiteral("pure black")},
                                    {0xffff0000, QStringLiteral("pure red")},
                                    {0xff00ff00, QStringLiteral("pure green")}};
    for (int y = 0; y < free.height(); ++y) {
        for (int x = 0; x < free.width(); ++x) {
            const auto name = pure.constFind(free.pixel(x, y));
            if (name != pure.constEnd()) {
                const QWidget* there = window.childAt(x, y);
                faults << QStringLiteral("%1 has %2").arg(nameOf(there ? *there : window), *name);
            }
        }
    }
    faults.removeDuplicates();
    return faults;
}

}  // namespace pictures
