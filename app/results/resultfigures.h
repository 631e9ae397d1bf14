#pragma once

#include "app/results/runresult.h"

#include <QVector>
#include <QWidget>

class QGridLayout;
class QLabel;

namespace app {

/// The figures of a part: welded length, time, laser on, gas, and the verdict. In one row, or in two where
/// the page is narrow.
class ResultFigures : public QWidget {
    Q_OBJECT
public:
    explicit ResultFigures(QWidget* parent = nullptr);

    /// Null: a result that cannot be read.
    void show(const RunResult* result);
    void arrange(bool isWide);

private:
    struct Figure {
        QLabel* caption;
        QLabel* value;
    };
    void set(int figure, const QString& value, const QString& remark);
    void showVerdict(const RunResult& result);

    QGridLayout* grid_;
    QVector<Figure> figures_;
    QLabel* sign_;
};

}  // namespace app
