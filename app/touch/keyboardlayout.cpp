#include "app/touch/keyboardlayout.h"

namespace app {

const QVector<KeyboardLayout>& keyboardLayouts() {
    static const QString digits = QStringLiteral("1234567890");
    static const QStringList latin{QStringLiteral("qwertyuiop"), QStringLiteral("asdfghjkl"),
                                   QStringLiteral("zxcvbnm,.")};
    static const QVector<KeyboardLayout> layouts{
        {QStringLiteral("en"),
         QStringLiteral("EN"),
         latin,
         {digits, QStringLiteral("-_/:;()#&\""), QStringLiteral(".,?!'+=%°*")}},
        {QStringLiteral("ru"),
         QStringLiteral("РУ"),
         {QStringLiteral("йцукенгшщзхъ"), QStringLiteral("фывапролджэ"), QStringLiteral("ячсмитьбюё.")},
         {digits, QStringLiteral("-_/:;()№«»"), QStringLiteral(".,?!'+=%°*")}},
        {QStringLiteral("cn"),
         QStringLiteral("中"),
         latin,
         {digits, QStringLiteral("-_/：；（）#“”"), QStringLiteral("。，、？！+=%°*")}}};
    return layouts;
}

int layoutOf(const QString& language) {
    const QVector<KeyboardLayout>& layouts = keyboardLayouts();
    for (int place = 0; place < layouts.size(); ++place) {
        if (layouts[place].language == language) {
            return place;
        }
    }
    return 0;
}

}  // namespace app
