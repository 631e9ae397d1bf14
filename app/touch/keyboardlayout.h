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

/// The index in keyboardLayouts() of a language's layout; the English one for other languages.
int layoutOf(const QString& language);

}  // namespace app
