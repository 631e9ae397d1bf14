#include "editor/fulltext.h"

namespace lumo {

namespace {

bool isOpening(QChar letter) {
    return letter == QLatin1Char('(') || letter == QChar(0xff08);
}

bool isClosing(QChar letter) {
    return letter == QLatin1Char(')') || letter == QChar(0xff09);
}

bool isColon(QChar letter) {
    return letter == QLatin1Char(':') || letter == QChar(0xff1a);
}

/// The parts of an entry between the places where it may be broken, with the blanks behind them.
/// `inGroups`: also behind the commas of groups.
QStringList partsOf(const QString& entry, bool inGroups) {
    QStringList parts;
    int begin = 0;
    int depth = 0;
    for (int i = 0; i < entry.size(); ++i) {
        depth += isOpening(entry.at(i)) ? 1 : 0;
        depth -= isClosing(entry.at(i)) && depth > 0 ? 1 : 0;
        const bool before = i + 1 < entry.size() && entry.at(i + 1).isSpace();
        const bool isBlank = entry.at(i).isSpace() && !before;
        const bool isComma = entry.at(i) == QLatin1Char(',') && !before;
        const bool ends =
            depth > 0 ? inGroups && (isBlank || isComma) : isBlank || (isColon(entry.at(i)) && !before);
        if (ends) {
            parts << entry.mid(begin, i + 1 - begin);
            begin = i + 1;
        }
    }
    if (begin < entry.size()) {
        parts << entry.mid(begin);
    }
    return parts;
}

/// Puts the parts of one entry into lines.
class Filling {
public:
    Filling(QVector<FullLine>* lines, int width, int indent, const WidthOfText& widthOf)
        : lines_(lines), width_(width), indent_(indent), widthOf_(widthOf) {}

    void fill(const QString& entry) {
        lines_->append({QString(), false});
        const QStringList parts = partsOf(entry, false);
        for (const QString& part : parts) {
            if (fits(lines_->last().text + part)) {
                lines_->last().text += part;
            } else if (widthOf_(part.trimmed()) <= width_ - indent_) {
                begin(part);
            } else {
                divide(part);
            }
        }
    }

private:
    bool fits(const QString& text) const {
        return widthOf_(text.trimmed()) <= width_ - (lines_->last().goesOn ? indent_ : 0);
    }
    /// Writes a part into the last line if that is still empty, else into a new one.
    void begin(const QString& part) {
        if (lines_->last().text.isEmpty()) {
            lines_->last().text = part;
        } else {
            lines_->append({part, true});
        }
    }
    /// A part that is wider than a line.
    void divide(const QString& part) {
        const QStringList pieces = partsOf(part, true);
        for (const QString& piece : pieces) {
            if (fits(lines_->last().text + piece)) {
                lines_->last().text += piece;
            } else {
                begin(piece);
            }
        }
    }

    QVector<FullLine>* lines_;
    const int width_;
    const int indent_;
    const WidthOfText& widthOf_;
};

}  // namespace

QVector<FullLine> fullLines(const QString& details, int width, int indent, const WidthOfText& widthOf) {
    QVector<FullLine> lines;
    if (details.isEmpty()) {
        return lines;
    }
    Filling filling(&lines, width, indent, widthOf);
    const QStringList entries = details.split(QLatin1Char('\n'));
    for (const QString& entry : entries) {
        if (!entry.isEmpty()) {
            filling.fill(entry);
        }
    }
    for (FullLine& line : lines) {
        line.text = line.text.trimmed();
    }
    return lines;
}

}  // namespace lumo
