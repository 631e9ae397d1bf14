#include "app/help/handbookview.h"

#include "app/help/chapters.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>
#include <cstdlib>

namespace app {

namespace {

constexpr int pictureMargin = 48;  // also of the scroll bar that comes with long text
constexpr int headingReach = 24;
constexpr int resizeStep = 40;

QString resourceOf(const QUrl& url) {
    return QLatin1Char(':') + url.path();
}

}  // namespace

HandbookView::HandbookView(QWidget* parent) : QTextBrowser(parent) {
    setOpenLinks(false);
    connect(this, &QTextBrowser::anchorClicked, this, &HandbookView::follow);
}

void HandbookView::openChapter(const QString& anchor) {
    const QUrl handbook = handbookUrl();
    if (source() != handbook) {
        showPage(handbook);
    }
    if (!goTo(anchor)) {
        verticalScrollBar()->setValue(0);
    }
}

/// Lines of code may be longer than the view is wide, and Qt's paragraphs of Markdown stand without a gap.
void HandbookView::dressText() {
    constexpr double gap = 8;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format = block.blockFormat();
        const bool isCode = format.nonBreakableLines();
        format.setNonBreakableLines(false);
        if (!isCode && !QTextCursor(block).currentTable()) {
            format.setBottomMargin(gap);
        }
        QTextCursor(block).setBlockFormat(format);
    }
}

void HandbookView::showPage(const QUrl& page) {
    setSource(page);
    dressText();
}

/// Of the headings shown: the English ones for the handbook, else their own.
QStringList HandbookView::anchors() const {
    const QVector<QTextBlock> headings = headingsOf(*document());
    const bool isHandbook = source().path().startsWith(QLatin1String("/app/docs/handbook/"));
    if (isHandbook && handbookAnchors().size() == headings.size()) {
        return handbookAnchors();
    }
    QStringList own;
    for (const QTextBlock& heading : headings) {
        own << anchorOf(heading.text());
    }
    return own;
}

/// Qt gives headings of Markdown no anchors. Links within a handbook name the headings of its own language.
bool HandbookView::goTo(const QString& anchor) {
    const QVector<QTextBlock> headings = headingsOf(*document());
    const QStringList names = anchors();
    for (int i = 0; i < headings.size(); ++i) {
        if (names[i] == anchor || anchorOf(headings[i].text()) == anchor) {
            setTextCursor(QTextCursor(headings[i]));
            const double top = document()->documentLayout()->blockBoundingRect(headings[i]).top();
            verticalScrollBar()->setValue(int(top));
            return true;
        }
    }
    return false;
}

QString HandbookView::shownChapter() const {
    const int top = verticalScrollBar()->value() + headingReach;
    const QVector<QTextBlock> headings = headingsOf(*document());
    const QStringList names = anchors();
    QString chapter;
    for (int i = 0; i < headings.size(); ++i) {
        if (document()->documentLayout()->blockBoundingRect(headings[i]).top() <= top) {
            chapter = names[i];
        }
    }
    return chapter;
}

/// Links to documents that the panel does not have lead nowhere.
void HandbookView::follow(const QUrl& link) {
    const QUrl target = source().resolved(link);
    const QString anchor = link.fragment();
    if (link.path().isEmpty()) {
        goTo(anchor);
    } else if (target.scheme() == QLatin1String("qrc") && QFile::exists(resourceOf(target))) {
        QUrl document = target;
        document.setFragment(QString());
        showPage(document);
        goTo(anchor);
    }
}

bool HandbookView::search(const QString& text, bool backward) {
    if (text.isEmpty()) {
        return true;
    }
    const auto flags = backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (find(text, flags)) {
        return true;
    }
    const QTextCursor before = textCursor();
    QTextCursor end(document());
    end.movePosition(backward ? QTextCursor::End : QTextCursor::Start);
    setTextCursor(end);
    const bool found = find(text, flags);
    if (!found) {
        setTextCursor(before);
    }
    return found;
}

QVariant HandbookView::loadResource(int type, const QUrl& name) {
    const QUrl url = name.isRelative() ? source().resolved(name) : name;
    if (type != QTextDocument::ImageResource) {
        return QTextBrowser::loadResource(type, name);
    }
    QFile file(resourceOf(url));
    QImage picture;
    if (!file.open(QIODevice::ReadOnly) || !picture.loadFromData(file.readAll())) {
        return {};
    }
    const int most = std::max(resizeStep, viewport()->width() - pictureMargin);
    return picture.width() > most ? picture.scaledToWidth(most, Qt::SmoothTransformation) : picture;
}

/// The document keeps the pictures that it has loaded.
void HandbookView::resizeEvent(QResizeEvent* event) {
    const QString chapter = shownChapter();  // before the text is laid out anew
    QTextBrowser::resizeEvent(event);
    if (std::abs(viewport()->width() - pictureWidth_) >= resizeStep && !source().isEmpty()) {
        pictureWidth_ = viewport()->width();
        reload();
        dressText();
        goTo(chapter);
    }
}

}  // namespace app
