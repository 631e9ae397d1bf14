#pragma once

#include "module/host.h"

#include <QPointer>
#include <QString>
#include <QVector>
#include <QWidget>

#include <memory>

class QLineEdit;

namespace Ui {
class PointWidget;
}

/// The page for one move statement: its target point, the second point of circular moves, speed, zone
/// and note.
///
/// The statement keeps metres and radians, the page shows millimetres and degrees with six digits. A
/// field whose text still says what is stored is not written back, so that it keeps its full
/// precision. OK is offered while there is a speed. A statement that leaves its program while the page is
/// open is not written any more.
class PointWidget final : public QWidget {
    Q_OBJECT
public:
    /// `row` is handed back by okayBtnClicked (moved along with the statement); the statement is not
    /// owned; `jointCount` is the number of the robot's axes.
    PointWidget(int row, ModuleObject* statement, int jointCount, QWidget* parent = nullptr);
    ~PointWidget() override;

    /// Shows a point as joint angles or Cartesian. In Cartesian mode the second point is the
    /// statement's own. What is missing shows as 0.
    void p2t(ModuleObject* point, bool jointMode);
    /// Stores the fields in a point (and, in Cartesian mode, in the statement's second point). What is
    /// no number is stored as 0; a comma is taken for the decimal point.
    void t2p(ModuleObject* point, bool jointMode);
    /// Captions and visibility for the statement's type.
    void refreshUIWithType();
    void hiddenPoint2();
    /// Writes the page into the statement.
    void save();
    /// Gives the keyboard to the note's caption, so that no field has it when the page opens.
    void testNofocus();

signals:
    void okayBtnClicked(int row);
    void cancelBtnClicked();

private:
    enum class Unit { Millimetre, Degree };
    struct Coordinate {
        QLineEdit* field;
        QString path;  ///< in the point
        Unit unit;
    };
    using Coordinates = QVector<Coordinate>;

    Coordinates firstPoint(bool jointMode) const;
    Coordinates secondPoint() const;
    static QString shownText(const ModuleObject* point, const Coordinate& coordinate);
    static void showPoint(const ModuleObject* point, const Coordinates& coordinates);
    void storePoint(ModuleObject* point, const Coordinates& coordinates);
    void storeNumber(QLatin1String name, const QLineEdit* line);
    void connectControls();
    void refreshOk();
    void teachFirst();
    void teachSecond();
    void confirm();
    bool isStatementInPlace() const;

    const std::unique_ptr<Ui::PointWidget> ui_;
    const QPointer<ModuleObject> statement_;
    const ModuleObject* const program_;
    const int row_;
    const int position_;  ///< of the statement in its program when the page was made
    const int jointCount_;
    bool jointMode_ = false;
    const bool hasSecondPoint_;
    QString shownNote_;
    /// What the update buttons took; empty until then.
    const std::unique_ptr<ModuleObject> p0_, p1_;
};
