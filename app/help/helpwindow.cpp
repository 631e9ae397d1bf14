#include "app/help/helpwindow.h"

#include "app/appearance.h"
#include "app/cell/cellstrip.h"
#include "app/help/handbookview.h"
#include "app/panelwindow.h"
#include "app/views/viewswindow.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr int buttonSize = 48;

QPushButton* makeButton(const QString& name, const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setFocusPolicy(Qt::TabFocus);
    button->setMinimumSize(buttonSize, buttonSize);
    return button;
}

}  // namespace

HelpWindow::HelpWindow() : view_(new HandbookView), field_(new QLineEdit), result_(new QLabel) {
    setObjectName(QStringLiteral("helpWindow"));
    setWindowTitle(tr("手册"));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(frameStyleSheet());
    field_->setObjectName(QStringLiteral("edtHelpSearch"));
    field_->setPlaceholderText(tr("查找"));
    field_->setMinimumHeight(buttonSize);
    addClearButton(field_);
    auto* contents = makeButton(QStringLiteral("btnHelpContents"), tr("目录"));
    auto* back = makeButton(QStringLiteral("btnHelpBefore"), QStringLiteral("▲"));
    auto* next = makeButton(QStringLiteral("btnHelpNext"), QStringLiteral("▼"));
    back->setToolTip(tr("上一处"));
    next->setToolTip(tr("下一处"));
    auto* row = new QHBoxLayout;
    row->addWidget(contents);
    row->addWidget(field_, 1);
    row->addWidget(back);
    row->addWidget(next);
    result_->setObjectName(QStringLiteral("lblHelpResult"));
    result_->hide();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(8, 8, 8, 8);
    column->addLayout(row);
    column->addWidget(result_);
    column->addWidget(view_, 1);
    resize(ViewsWindow::fullWidth, ViewsWindow::fullWidth);
    connect(contents, &QPushButton::clicked, this, [this] { view_->openChapter(QString()); });
    connect(back, &QPushButton::clicked, this, [this] { search(true); });
    connect(next, &QPushButton::clicked, this, [this] { search(false); });
    connect(field_, &QLineEdit::returnPressed, this, [this] { search(false); });
    connect(field_, &QLineEdit::textChanged, result_, &QWidget::hide);
}

void HelpWindow::search(bool backward) {
    const bool found = view_->search(field_->text(), backward);
    result_->setText(tr("手册中没有“%1”").arg(field_->text()));
    result_->setVisible(!found);
}

void HelpWindow::open(const QString& chapter, const QWidget* panel) {
    if (!placed_) {
        placed_ = true;
        setGeometry(
            placeBeside(panel->geometry(), panel->screen()->availableGeometry(), ViewsWindow::fullWidth,
                        {0, PanelWindow::headerHeight, CellStrip::fullWidth, PanelWindow::statusHeight}));
    }
    show();
    raise();
    activateWindow();
    view_->openChapter(chapter);
    view_->setFocus();
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

}  // namespace app
