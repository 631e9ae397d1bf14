#pragma once

#include <QFont>
#include <QIcon>
#include <QSize>
#include <QStringList>

class QAbstractButton;
class QPainter;

namespace lumo {

/// What stands on a button: an icon over or before a caption, and maybe a second line in small type. A
/// caption that is too wide for one line takes two, between words or at a soft hyphen. Where there is no room
/// for that either, the icon is left out, and at last the type becomes smaller.
class ButtonFace {
public:
    enum class Place { Before, Over };

    Place place = Place::Before;
    QString text;    ///< caption; may hold soft hyphens
    QString second;  ///< second line; empty: none. Before only
    QIcon icon;      ///< null: none
    int iconPx = 0;
    int leftPx = -1;  ///< from the room's left to icon or caption, where there is room for that; -1: centred
    bool isPale = false;  ///< the icon is drawn as on a disabled button
    QFont font;           ///< of the caption at its usual size

    /// How it is drawn in a room.
    struct Setting {
        bool hasIcon = false;
        QStringList lines;
        int pixelSize = 0;
    };
    [[nodiscard]] Setting fit(const QSize& room) const;
    void paint(QPainter* painter, const QRect& room, const QAbstractButton* button) const;
    /// Of the face with its caption in one line, px.
    [[nodiscard]] QSize size() const;
    /// Of the caption alone, in two lines where it can be broken.
    [[nodiscard]] QSize leastSize() const;

private:
    [[nodiscard]] QSize sizeOf(const Setting& setting) const;
    [[nodiscard]] QSize sizeOfText(const Setting& setting) const;
    [[nodiscard]] QList<Setting> choices(int pixelSize) const;
    void paintText(QPainter* painter, const QRect& room, const Setting& setting) const;
};

}  // namespace lumo
