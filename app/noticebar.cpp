#include "app/noticebar.h"

#include "app/appearance.h"
#include "app/fileproblem.h"
#include "look/icon.h"
#include "look/scale.h"
#include "look/type.h"
#include "mendo/clock.h"

#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVariant>

namespace app {

namespace {

constexpr int mostListed = 10;
constexpr int shownPathWidth = 320;
constexpr int leastPathWidth = 80;
constexpr int pathStep = 20;

QToolButton* makeButton(QWidget* parent, const QString& name) {
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

}  // namespace

NoticeBar::NoticeBar(QWidget* window)
    : QFrame(window),
      window_(window),
      sign_(new QLabel(this)),
      text_(new QLabel(this)),
      more_(makeButton(this, QStringLiteral("btnNotices"))),
      close_(makeButton(this, QStringLiteral("btnDismiss"))),
      list_(new QLabel(window)) {
    setObjectName(QStringLiteral("noticeBar"));
    text_->setObjectName(QStringLiteral("lblNotice"));
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    text_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    more_->setCheckable(true);
    close_->setIcon(look::icon(QStringLiteral("close"), look::amberInk));
    close_->setAccessibleName(tr("关闭提示"));
    auto* row = new QHBoxLayout(this);
    row->setSpacing(0);
    row->addWidget(sign_);
    row->addWidget(text_, 1);
    row->addWidget(more_);
    row->addWidget(close_);
    list_->setObjectName(QStringLiteral("noticeList"));
    list_->setProperty("covers", true);
    list_->setTextFormat(Qt::PlainText);
    list_->setWordWrap(true);
    list_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    list_->hide();
    hide();
    window_->installEventFilter(this);
    connect(more_, &QToolButton::toggled, this, &NoticeBar::showList);
    connect(close_, &QToolButton::clicked, this, &NoticeBar::dismiss);
}

void NoticeBar::fit() {
    layout()->setContentsMargins(look::px(12), 0, 0, 0);
    sign_->setPixmap(look::picture(QStringLiteral("warn"), look::px(18), look::amberInk));
    sign_->setContentsMargins(0, 0, look::px(8), 0);
    close_->setFixedWidth(look::px(56));
    close_->setIconSize(QSize(look::px(20), look::px(20)));
    text_->setFont(look::font(look::Size::Caption));
}

void NoticeBar::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::StyleChange && !texts_.isEmpty()) {
        fit();
    }
}

void NoticeBar::report(const mendo::FileProblem& problem) {
    if (!texts_.isEmpty() && problem == newest_) {
        return;
    }
    newest_ = problem;
    newestMessage_.clear();
    add(problemText(problem, QDir::toNativeSeparators(QFileInfo(problem.file).absoluteFilePath())) +
        QStringLiteral("\n→ ") + remedyText(problem));
}

void NoticeBar::tell(const QString& message) {
    if (!texts_.isEmpty() && message == newestMessage_) {
        return;
    }
    newest_ = {};
    newestMessage_ = message;
    add(message);
}

void NoticeBar::add(const QString& text) {
    texts_.prepend(mendo::Clock::current().now().toString(QStringLiteral("HH:mm:ss  ")) + text);
    if (texts_.size() > mostListed) {
        texts_.removeLast();
    }
    fit();
    show();
    refresh();
}

QWidget* NoticeBar::list() const {
    return list_;
}

void NoticeBar::dismiss() {
    more_->setChecked(false);
    texts_.clear();
    hide();
}

void NoticeBar::showList(bool shown) {
    if (shown && list_->styleSheet().isEmpty()) {
        dress(list_, {QStringLiteral("base"), QStringLiteral("frame")});
    }
    list_->setVisible(shown);
    if (shown) {
        placeList();
        list_->raise();
    }
}

void NoticeBar::placeList() {
    const QPoint place = mapTo(window_, QPoint(0, 0));
    const int above = place.y();
    const int below = window_->height() - above - height();
    const int needed = qMin(list_->heightForWidth(width()), qMax(above, below));
    list_->setGeometry(place.x(), below >= above ? above + height() : above - needed, width(), needed);
}

void NoticeBar::refresh() {
    const QString path = QDir::toNativeSeparators(QFileInfo(newest_.file).absoluteFilePath());
    showText(path);
    more_->setText(tr("全部（%1）").arg(texts_.size()));
    list_->setText(texts_.join(QStringLiteral("\n\n")));
    placeList();
}

/// Shortens the path until the text fits, with the remedy if there is room for it; in a small room its end is
/// left out, too.
void NoticeBar::showText(const QString& path) {
    const auto fits = [this] { return text_->heightForWidth(text_->width()) <= text_->height(); };
    QString whole = newestMessage_;
    if (newestMessage_.isEmpty()) {
        for (const QString& remedy : {QStringLiteral(" → ") + remedyText(newest_), QString()}) {
            for (int width = shownPathWidth; width >= leastPathWidth; width -= pathStep) {
                const QString shown = text_->fontMetrics().elidedText(path, Qt::ElideLeft, width);
                whole = problemText(newest_, shown) + remedy;
                text_->setText(whole);
                if (fits()) {
                    return;
                }
            }
        }
    }
    text_->setText(whole);
    for (int end = whole.size() - 1; end > 0 && !fits(); --end) {
        text_->setText(whole.left(end).trimmed() + QStringLiteral("…"));
    }
}

void NoticeBar::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    layout()->activate();
    if (!texts_.isEmpty()) {
        refresh();
    }
    placeList();
}

bool NoticeBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && watched == window_) {
        placeList();
    }
    return QFrame::eventFilter(watched, event);
}

}  // namespace app
