#include "widgets/titlelabel.h"

#include <QStyle>
#include <QStylePainter>
#include <QTextDocument>
#include <QTextDocumentFragment>

namespace lumo {

QString TitleLabel::plain() const {
    return Qt::mightBeRichText(text()) ? QTextDocumentFragment::fromHtml(text()).toPlainText() : text();
}

QSize TitleLabel::sizeHint() const {
    ensurePolished();
    return fontMetrics().size(Qt::TextSingleLine, plain());
}

void TitleLabel::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    painter.drawItemText(contentsRect(), static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), palette(),
                         isEnabled(), plain(), foregroundRole());
}

}  // namespace lumo
