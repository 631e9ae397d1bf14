#pragma once

#include "app/path/pathpainter.h"

#include <QWidget>

namespace app {

/// Says what the lines and signs of the path view mean.
class PathLegend : public QWidget {
    Q_OBJECT
public:
    explicit PathLegend(QWidget* parent = nullptr);

private:
    QWidget* makeSample(PathSign sign);
};

}  // namespace app
