#pragma once

#include <QFont>
#include <QString>

namespace look {

/// The four sizes of type.
enum class Size {
    Caption,  ///< 14 px: captions, units, remarks, second lines
    Text,     ///< 16 px: text and values
    Title,    ///< 20 px: titles and states
    Figure    ///< 28 px: the one figure that matters
};

enum class Weight {
    Plain,
    Strong,  ///< medium for Latin and Cyrillic, bold for Chinese
    State    ///< bold
};

/// Height of the type in px, at the factor in force.
int sizePx(Size size);

/// Roboto, whose digits are equally wide, and Noto Sans CJK SC, which has a real bold.
QFont font(Size size, Weight weight = Weight::Plain);

/// Width of a text in px. Measured once for a font and a text: layouts ask for the same words again and
/// again.
int textWidth(const QFont& font, const QString& text);

/// The language of the captions decides what strong type is: "cn", "en" or "ru".
void setLanguage(const QString& language);
/// Weight of strong type on the scale of QFont.
int strongWeight();

/// A number as summaries write it: with a real minus.
QString figure(double value, int decimals);

}  // namespace look
