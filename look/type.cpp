#include "look/type.h"

#include "look/scale.h"

#include <QFontMetrics>
#include <QHash>
#include <QPair>
#include <QStringList>

namespace look {

namespace {

bool chinese = true;

int weightOf(Weight weight) {
    switch (weight) {
        case Weight::Plain:
            return QFont::Normal;
        case Weight::Strong:
            return strongWeight();
        case Weight::State:
            return QFont::Bold;
    }
    return QFont::Normal;
}

}  // namespace

int sizePx(Size size) {
    // At a factor of 1.5 the smallest type would be wider than its columns; it grows a little less.
    const bool large = factor() >= 1.5;
    switch (size) {
        case Size::Caption:
            return large ? qRound(20 * factor() / 1.5) : qRound(14 * factor());
        case Size::Text:
            return px(16);
        case Size::Title:
            return large ? px(20) : qRound(20 * factor() - 0.5);
        case Size::Figure:
            return px(28);
    }
    return px(16);
}

QFont font(Size size, Weight weight) {
    QFont result;
    result.setFamilies({QStringLiteral("Roboto"), QStringLiteral("Noto Sans CJK SC")});
    result.setPixelSize(sizePx(size));
    result.setWeight(weightOf(weight));
    return result;
}

int textWidth(const QFont& font, const QString& text) {
    constexpr int mostKept = 4000;  // texts that change, as a time that runs, come and go
    static QHash<QPair<QFont, QString>, int> kept;
    const auto key = qMakePair(font, text);
    const auto known = kept.constFind(key);
    if (known != kept.constEnd()) {
        return *known;
    }
    if (kept.size() >= mostKept) {
        kept.clear();
    }
    return *kept.insert(key, QFontMetrics(font).horizontalAdvance(text));
}

void setLanguage(const QString& language) {
    chinese = language == QLatin1String("cn");
}

int strongWeight() {
    return chinese ? QFont::Bold : QFont::Medium;
}

QString figure(double value, int decimals) {
    QString text = QString::number(value, 'f', decimals);
    if (text.startsWith(QLatin1Char('-'))) {
        const bool zero = text.toDouble() == 0;
        text = zero ? text.mid(1) : QChar(0x2212) + text.mid(1);
    }
    return text;
}

}  // namespace look
