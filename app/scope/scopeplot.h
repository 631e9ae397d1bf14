#pragma once

#include "app/scope/lanes.h"
#include "app/scope/signalrecorder.h"

#include <qwt_plot.h>
#include <QImage>

#include <optional>

class QwtPlotCurve;
class QwtPlotMarker;
class QwtScaleDraw;

namespace app {

/// Draws signals over the time of day, each in a row of its own: its name on the left, its value at the
/// cursor (or, without one, at the end) on the right.
class ScopePlot : public QwtPlot {
    Q_OBJECT
public:
    /// `recorder` must outlive it.
    explicit ScopePlot(const SignalRecorder* recorder, QWidget* parent = nullptr);
    ~ScopePlot() override;

    const std::vector<Lane>& lanes() const { return lanes_; }
    void setLanes(const std::vector<Lane>& lanes);
    /// Draws what is recorded now.
    void showSpan(const TimeSpan& span);
    /// Milliseconds of the host's clock; without a value there is none.
    void setCursor(std::optional<qint64> ms);
    void setMark(std::optional<qint64> ms);
    std::optional<qint64> cursorMs() const { return cursorMs_; }
    std::optional<qint64> markMs() const { return markMs_; }
    /// A lane's value as it stands on the right.
    QString valueText(int lane) const;
    /// Rows that there is room for, and the first one that is shown of more.
    int rowsThatFit() const;
    void setFirstRow(int row);
    /// As large as all rows need it.
    QImage picture();

    QSize minimumSizeHint() const override { return {300, 200}; }

signals:
    void cursorAsked(qint64 ms);
    void resized();
    /// The next edge to the right (1) or left (-1).
    void edgeAsked(int direction);
    /// Show that much more.
    void stretchAsked(double factor);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    class RowScale;
    void setUpTime();
    void setUpRows();
    void setUpCursor();
    void showRows(int first, int count);
    void fillCurves(const TimeSpan& span);
    void fillValues(const TimeSpan& span);
    void place(QwtPlotMarker* marker, std::optional<qint64> ms);
    double bottomOf(size_t lane) const { return double(lanes_.size() - 1 - lane) + 0.16; }

    const SignalRecorder* recorder_;
    std::vector<Lane> lanes_;
    std::vector<QwtPlotCurve*> curves_;  ///< one for each lane, owned by the plot
    RowScale* names_;                    ///< owned by the plot, as the others
    RowScale* values_;
    QwtPlotMarker* cursor_;
    QwtPlotMarker* mark_;
    std::optional<qint64> cursorMs_, markMs_;
    int firstRow_ = 0;
};

}  // namespace app
