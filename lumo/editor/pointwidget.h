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
namespace lumo {
class FieldAnswer;
class PointLayout;
}  // namespace lumo

/// The page of one move statement: target point, second point of circular moves, speed, zone and note.
///
/// The statement keeps m and rad, the page shows mm and degrees with six digits. A field whose text was not
/// changed is not written, so that it keeps its full precision. OK is enabled while every field holds a
/// figure that it takes. A statement that has left its program is not written.
class PointWidget final : public QWidget {
    Q_OBJECT
public:
    /// The statement is not owned. `row` is its row; okayBtnClicked tells the row it has then. `jointCount`
    /// is the number of the robot's axes.
    PointWidget(int row, ModuleObject* statement, int jointCount, QWidget* parent = nullptr);
    ~PointWidget() override;

    /// Shows a point as joint angles, or as Cartesian coordinates together with the statement's second point.
    /// Missing values show as 0.
    void p2t(ModuleObject* point, bool jointMode);
    /// Stores the fields in a point and, in Cartesian mode, in the statement's second point. Texts that are
    /// no number are stored as 0; a comma is read as the decimal point.
    void t2p(ModuleObject* point, bool jointMode);
    /// Sets captions and visibility for the statement's type.
    void refreshUIWithType();
    void hiddenPoint2();
    /// Writes the page into the statement.
    void save();
    /// Gives the focus to the note's caption, so that no field has it when the page opens.
    void testNofocus();

signals:
    void okayBtnClicked(int row);
    /// The robot is to move to the point of the statement, as a single step does. The page stays.
    void moveRequested(int row);
    void cancelBtnClicked();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

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
    void answerFields();
    [[nodiscard]] bool areTaken(const Coordinates& coordinates) const;
    void refreshOk();
    void showPlace();
    void showFocused();
    void requestMove();
    [[nodiscard]] int presentRow() const;
    void teachFirst();
    void teachSecond();
    void confirm();
    QString command() const;
    bool isStatementInPlace() const;

    const std::unique_ptr<Ui::PointWidget> ui_;
    std::unique_ptr<lumo::PointLayout> layout_;
    const QPointer<ModuleObject> statement_;
    const ModuleObject* const program_;
    const int row_;
    const int position_;  ///< of the statement in its program when the page was made
    const int jointCount_;
    bool jointMode_ = false;
    const bool hasSecondPoint_;
    QString shownNote_;
    QVector<lumo::FieldAnswer*> answers_;  ///< of the fields on the page
    /// Postures taken by the update buttons; empty until then.
    const std::unique_ptr<ModuleObject> p0_, p1_;
};
