#pragma once

#include <QStringList>
#include <QVector>

namespace app {

/// The letters and signs on the three rows of keys of the keyboard, from left to right.
struct KeyboardLayout {
    QString language;  ///< "en", "ru" or "cn"
    QString mark;      ///< on the key that changes the language
    QStringList letters;
    QStringList digits;  ///< digits and signs
};

/// English, Russian, Chinese.
const QVector<KeyboardLayout>& keyboardLayouts();

/// The place of the layout of a language; 0 where there is none.
int layoutOf(const QString& language);

}  // namespace app
