#pragma once

#include "module/host.h"

#include <QString>
#include <QVector>

#include <array>

namespace lumo {

/// What a compact row tells of a statement, as texts in the operator's language with real minus signs.
struct RowSummary {
    static constexpr int columns = 3;

    QString type;     ///< as the record holds it
    QString command;  ///< the type's word
    /// Each point in mm, or the angles of its joints in degrees, three a line.
    QVector<std::array<QString, columns>> figures;
    QString title;   ///< of other statements: name of the set, or signal and state
    QString second;  ///< below it: the set's power, and the wire where it is fed
    QString speed;   ///< of a move, of a weld; a delay's time
    QString speedUnit;
    QString zone;  ///< mm
    QString tool;  ///< tool and work object of a move, by their names
    QString note;
    bool executed = true;
};

[[nodiscard]] RowSummary summaryOf(const ModuleObject* statement);

/// Tool and work object of a move; empty for other statements.
[[nodiscard]] QString toolOf(const ModuleObject* statement);

/// The lines of figures that a statement of this type has on this robot.
[[nodiscard]] int figureLines(const QString& type, int joints);

/// Name of the icon of a type; empty for an unknown one.
[[nodiscard]] QString statementIcon(const QString& type);

}  // namespace lumo
