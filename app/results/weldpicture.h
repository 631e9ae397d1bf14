#pragma once

#include "app/path/camera.h"
#include "app/results/runresult.h"

#include <QPixmap>
#include <QWidget>

#include <memory>

namespace app {

/// The path of a run from above, as it was welded. Kept as a pixmap.
class WeldPicture : public QWidget {
    Q_OBJECT
public:
    explicit WeldPicture(QWidget* parent = nullptr);

    /// Nothing without a result.
    void show(const std::shared_ptr<const RunResult>& result);

    QSize minimumSizeHint() const override { return {240, 160}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void draw();

    std::shared_ptr<const RunResult> result_;
    QPixmap picture_;
};

/// The welds; of a run without any, all of its path.
[[nodiscard]] Extent weldExtent(const RunResult& result);

}  // namespace app
