#include "app/help/helppage.h"

#include "app/appearance.h"
#include "app/help/handbookview.h"
#include "app/preferences.h"
#include "look/icon.h"
#include "look/scale.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

namespace app {

namespace {

QToolButton* makeButton(const QString& name, const QString& icon, const QString& told) {
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setIcon(look::icon(icon));
    button->setAccessibleName(told);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

}  // namespace

HelpPage::HelpPage(QWidget* parent)
    : QWidget(parent),
      view_(new HandbookView),
      contents_(makeButton(QStringLiteral("btnHelpContents"), QStringLiteral("document"), tr("目录"))),
      field_(new QLineEdit),
      result_(new QLabel) {
    setObjectName(QStringLiteral("helpPage"));
    field_->setObjectName(QStringLiteral("edtHelpSearch"));
    field_->setPlaceholderText(tr("查找"));
    addClearButton(field_);
    contents_->setText(tr("目录"));
    auto* back = makeButton(QStringLiteral("btnHelpBefore"), QStringLiteral("up"), tr("上一处"));
    auto* next = makeButton(QStringLiteral("btnHelpNext"), QStringLiteral("down"), tr("下一处"));
    auto* row = new QHBoxLayout;
    row->addWidget(contents_);
    row->addWidget(field_, 1);
    row->addWidget(back);
    row->addWidget(next);
    result_->setObjectName(QStringLiteral("lblHelpResult"));
    result_->setWordWrap(true);
    result_->hide();
    auto* column = new QVBoxLayout(this);
    column->addLayout(row);
    column->addWidget(result_);
    column->addWidget(view_, 1);
    connect(contents_, &QToolButton::clicked, this, [this] { view_->openChapter(QString()); });
    connect(back, &QToolButton::clicked, this, [this] { search(true); });
    connect(next, &QToolButton::clicked, this, [this] { search(false); });
    connect(field_, &QLineEdit::returnPressed, this, [this] { search(false); });
    connect(field_, &QLineEdit::textChanged, result_, &QWidget::hide);
    fit();
}

HelpPage::~HelpPage() {
    if (!view_->source().isEmpty()) {
        Preferences::rememberHelpChapter(view_->shownChapter());
    }
}

void HelpPage::fit() {
    const int margin = look::px(16);
    layout()->setContentsMargins(margin, 0, margin, margin);
    layout()->setSpacing(look::px(8));
    const QList<QToolButton*> buttons = findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly);
    for (QToolButton* const button : buttons) {
        button->setIconSize(QSize(look::px(20), look::px(20)));
    }
}

/// The word where it leaves the search enough of the row.
void HelpPage::fitContents() {
    constexpr int searchPx = 110, restPx = 156;
    contents_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const bool isRoomy = width() - contents_->sizeHint().width() >= look::px(searchPx + restPx);
    contents_->setToolButtonStyle(isRoomy ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonIconOnly);
}

void HelpPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fitContents();
}

void HelpPage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fit();
        fitContents();
    }
}

void HelpPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (view_->source().isEmpty()) {
        view_->openChapter(Preferences::helpChapter());
    }
}

void HelpPage::search(bool backward) {
    const bool found = view_->search(field_->text(), backward);
    result_->setText(tr("手册中没有“%1”").arg(field_->text()));
    result_->setVisible(!found);
}

void HelpPage::openChapter(const QString& chapter) {
    view_->openChapter(chapter);
    view_->setFocus();
}

}  // namespace app
