#include "look/sheet.h"

#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QHash>

namespace look {

namespace {

QString pixels(int length) {
    return QString::number(length) + QLatin1String("px");
}

QHash<QString, QString> words() {
    QHash<QString, QString> result;
    for (const NamedColour& colour : colours) {
        result.insert(QLatin1String(colour.name), QColor(colour.rgb).name());
    }
    result.insert(QStringLiteral("caption"), pixels(sizePx(Size::Caption)));
    result.insert(QStringLiteral("text"), pixels(sizePx(Size::Text)));
    result.insert(QStringLiteral("title"), pixels(sizePx(Size::Title)));
    result.insert(QStringLiteral("figure"), pixels(sizePx(Size::Figure)));
    constexpr int cssPerQt = 8;  // a style sheet's weight is eight times that of QFont
    result.insert(QStringLiteral("strong"), QString::number(strongWeight() * cssPerQt));
    return result;
}

}  // namespace

QString filled(const QString& sheet) {
    const QHash<QString, QString> known = words();
    QString result;
    result.reserve(sheet.size() + sheet.size() / 4);
    int done = 0;
    for (int at = sheet.indexOf(QLatin1Char('@')); at >= 0; at = sheet.indexOf(QLatin1Char('@'), done)) {
        result += sheet.midRef(done, at - done);
        int end = at + 1;
        while (end < sheet.size() && sheet.at(end).isLetterOrNumber()) {
            ++end;
        }
        const QString word = sheet.mid(at + 1, end - at - 1);
        bool isLength = false;
        const int length = word.toInt(&isLength);
        result += isLength ? pixels(px(length)) : known.value(word, QLatin1Char('@') + word);
        done = end;
    }
    return result + sheet.midRef(done);
}

}  // namespace look
