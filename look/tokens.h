#pragma once

#include <QColor>

/// The one place for the colours of package and panel: code takes the constants, style sheets write "@ink"
/// (look/sheet.h). The contrasts hold on the grounds named with each; text needs 4.5, signs and disabled
/// text 3.0.
namespace look {

// Grounds.
constexpr QRgb white = 0xffffffff;  ///< page, list, fields, knobs
constexpr QRgb panel = 0xfff4f6f9;  ///< tool column, cards, disabled controls
constexpr QRgb frame = 0xffe7ecf1;  ///< rail, bars, header of a table
constexpr QRgb sel = 0xffdce9f6;    ///< selected row, chosen page
constexpr QRgb navy = 0xff1e3146;   ///< header; edge of sheets and of the marker
constexpr QRgb navy2 = 0xff2c4460;  ///< raised or checked on the header

// Text and signs on white, panel, frame and sel.
constexpr QRgb ink = 0xff17273a;   ///< text and values
constexpr QRgb ink2 = 0xff3f5064;  ///< second text, icons
constexpr QRgb ink3 = 0xff55667a;  ///< captions, units, normal states in lists
constexpr QRgb off = 0xff738190;   ///< disabled
constexpr QRgb fog = 0xffb9c8d8;   ///< second text on the header
constexpr QRgb sky = 0xff9cc7f2;   ///< focus and checked line on the header

// Lines.
constexpr QRgb rule = 0xffd6dee6;  ///< between rows, round cards
constexpr QRgb line = 0xffafbcc9;  ///< round buttons and columns
constexpr QRgb edge = 0xff728292;  ///< round fields; scroll bars

// Blue: primary, selected, focus, harmless things that are on.
constexpr QRgb blue = 0xff1b5c9c;
constexpr QRgb blueDn = 0xff144674;
constexpr QRgb pressed = 0xffc9ddf1;
constexpr QRgb halo = 0xffb9d3ee;  ///< selected line in the path

// The seam.
constexpr QRgb steel = 0xff4a5e75;      ///< seam, progress, lamps that are on
constexpr QRgb bead = 0xffa9b8c8;       ///< scales on the bead
constexpr QRgb laneFill = 0xffcbd6e1;   ///< lanes of the timing picture, edge steel
constexpr QRgb laserFill = 0xfff6cfcb;  ///< its laser lanes, edge red

// Red: laser, stop, a value that is not taken.
constexpr QRgb red = 0xffc5221b;
constexpr QRgb redDn = 0xff9c1812;
constexpr QRgb redTint = 0xfffceae8;

// Amber: something is wrong or armed.
constexpr QRgb amber = 0xfff2b01e;      ///< ground of FAULT, text on it ink
constexpr QRgb amberLine = 0xffa86c00;  ///< frame of a control with a warning
constexpr QRgb amberInk = 0xff7a4b00;   ///< text and sign of a warning
constexpr QRgb amberTint = 0xfffff3d6;  ///< behind a warning

constexpr QRgb green = 0xff246b4a;  ///< a program runs, all is well, a seam is good
constexpr QRgb estop = 0xffffd100;  ///< plate under the emergency stop
constexpr QRgb veil = 0x7317273a;   ///< over page and navigation under a sheet; has alpha

/// A colour by its name in style sheets.
struct NamedColour {
    const char* name;
    QRgb rgb;
};

/// Every colour that style sheets may name.
constexpr NamedColour colours[] = {
    {"white", white},
    {"panel", panel},
    {"frame", frame},
    {"sel", sel},
    {"navy", navy},
    {"navy2", navy2},
    {"ink", ink},
    {"ink2", ink2},
    {"ink3", ink3},
    {"off", off},
    {"fog", fog},
    {"sky", sky},
    {"rule", rule},
    {"line", line},
    {"edge", edge},
    {"blue", blue},
    {"blueDn", blueDn},
    {"pressed", pressed},
    {"halo", halo},
    {"steel", steel},
    {"bead", bead},
    {"laneFill", laneFill},
    {"laserFill", laserFill},
    {"red", red},
    {"redDn", redDn},
    {"redTint", redTint},
    {"amber", amber},
    {"amberLine", amberLine},
    {"amberInk", amberInk},
    {"amberTint", amberTint},
    {"green", green},
    {"estop", estop},
};

}  // namespace look
