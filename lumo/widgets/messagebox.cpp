#include "widgets/messagebox.h"

#include "look/dialog.h"
#include "module/globals.h"
#include "module/host.h"

#include <QApplication>
#include <QPushButton>
#include <QStackedWidget>

namespace lumo {

namespace {

/// A message whose advice can be renewed while it is shown.
class AdvisingBox final : public QMessageBox {
public:
    AdvisingBox(Icon icon, const QString& title, const QString& text, QWidget* parent)
        : QMessageBox(icon, title, text, Ok, parent), way_(addButton(QString(), ActionRole)) {
        look::dress(this);
        setAttribute(Qt::WA_DeleteOnClose);
        setTextFormat(Qt::PlainText);
        setDefaultButton(Ok);
        setEscapeButton(Ok);  // a box of two buttons has no escape button of its own
        way_->setObjectName(QStringLiteral("btnWay"));
        connect(way_, &QAbstractButton::clicked, this, [this] { Guide::instance()->lead(to_); });
    }

    void advise(const Advice& advice) {
        to_ = advice.way;
        QString text = advice.reason;
        if (!advice.remedy.isEmpty()) {
            text += (text.isEmpty() ? QString() : QStringLiteral("\n\n")) + advice.remedy;
        }
        setInformativeText(text);
        way_->setText(Guide::caption(to_));
        way_->setVisible(to_.to != Way::To::Nowhere && Guide::instance()->canLead());
    }

private:
    QPushButton* way_;
    Way to_;
};

/// The box that shows this message; null when none does.
QMessageBox* standing(const QString& title, const QString& text) {
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        auto* box = qobject_cast<QMessageBox*>(window);
        if (box && box->isVisible() && box->windowTitle() == title && box->text() == text) {
            return box;
        }
    }
    return nullptr;
}

}  // namespace

void showMessage(QMessageBox::Icon icon, const QString& title, const QString& text, const Advice& advice) {
    if (QMessageBox* const shown = standing(title, text)) {
        if (auto* const renewed = dynamic_cast<AdvisingBox*>(shown)) {
            renewed->advise(advice);
        }
        shown->raise();
        return;
    }
    const QStackedWidget* center = instantiatedCenterWidget();
    auto* box = new AdvisingBox(icon, title, text, center ? center->currentWidget() : nullptr);
    box->advise(advice);
    if (isRunning()) {  // a modal box would block the Stop button
        box->setModal(false);
        box->show();
    } else {
        box->open();
    }
}

}  // namespace lumo
