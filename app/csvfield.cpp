#include "app/csvfield.h"

namespace app {

QByteArray csvField(const QString& text) {
    const bool isPlain = !text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('"')) &&
                         !text.contains(QLatin1Char('\n')) && !text.contains(QLatin1Char('\r'));
    QString doubled = text;
    doubled.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return isPlain ? text.toUtf8() : '"' + doubled.toUtf8() + '"';
}

}  // namespace app
