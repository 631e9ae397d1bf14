#pragma once

#include "app/status/statustext.h"

#include <QColor>
#include <QString>

namespace app {

/// A place of the panel that a message leads to.
enum class Place { Project, Monitor, Device, Stations, Results, Rail };

/// What the state block in the header shows: one state, the most important one.
struct PanelState {
    /// In the order of precedence.
    enum class Kind { EmergencyStop, Fault, LaserOn, Paused, Running, Listening, Finished, DrivesOff, Ready };

    Kind kind = Kind::Ready;
    QString word;    ///< "RUNNING", in the panel's language
    QString detail;  ///< the second line: project, line, who lit the laser
    Place place = Place::Project;
    int line = -1;             ///< of the program on the project page, from 0; -1: none
    QString shortDetail = {};  ///< the second line without the project, where that leaves something

    friend bool operator==(const PanelState& a, const PanelState& b) {
        return a.kind == b.kind && a.word == b.word && a.detail == b.detail && a.place == b.place &&
               a.line == b.line;
    }
    friend bool operator!=(const PanelState& a, const PanelState& b) { return !(a == b); }
};

/// The state block of a state of the cell. A fault while the laser is on says in its detail that it is on.
PanelState panelState(const CellStatus& status);

/// The most important state.
PanelState::Kind stateKind(const CellStatus& status);
/// A word for it that does not depend on the panel's language: "laser_on".
QString stateWord(PanelState::Kind kind);

/// How a state looks. The shape says the same as the colour.
struct StateLook {
    const char* sign;  ///< an icon of look/icon.h
    QRgb ground;
    QRgb ink;
    QRgb detailInk;
    QRgb signInk;
    QRgb edge = 0;  ///< 2 px; 0: no edge
};
StateLook lookOf(PanelState::Kind kind);

}  // namespace app
