#pragma once

#include "app/path/pathpainter.h"

#include <QWidget>

namespace app {

/// The legend of the path view: its lines and signs with their meaning.
class PathLegend : public QWidget {
    Q_OBJECT
public:
    explicit PathLegend(QWidget* parent = nullptr);

private:
    QWidget* makeSample(PathSign sign);
};

}  // namespace app
