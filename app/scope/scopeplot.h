#pragma once

#include "app/scope/scoperow.h"
#include "app/scope/signalrecorder.h"

#include <qwt_plot.h>
#include <QImage>

#include <optional>

class QwtPlotCurve;
class QwtPlotMarker;
class QwtScaleDraw;

namespace app {

/// Draws signals over the time of day, a lane each: the name above its curve, the value at the cursor
/// (without a cursor, at the end) on the right.
class ScopePlot : public QwtPlot {
    Q_OBJECT
public:
    /// `recorder` must outlive it.
    explicit ScopePlot(const SignalRecorder* recorder, QWidget* parent = nullptr);
    ~ScopePlot() override;

    const std::vector<ScopeRow>& rows() const { return rows_; }
    void setRows(const std::vector<ScopeRow>& rows);
    /// Draws a section of the record.
    void showSpan(const TimeSpan& span);
    /// Milliseconds of the host's clock; no value hides the cursor or mark.
    void setCursor(std::optional<qint64> ms);
    void setMark(std::optional<qint64> ms);
    std::optional<qint64> cursorMs() const { return cursorMs_; }
    std::optional<qint64> markMs() const { return markMs_; }
    /// The value shown on the right of a row.
    QString valueText(int row) const;
    /// Number of rows that fit.
    int rowsThatFit() const;
    /// Scrolls to a row.
    void setFirstRow(int row);
    /// An image with all rows.
    QImage picture();

    QSize minimumSizeHint() const override { return {240, 160}; }

signals:
    void cursorAsked(qint64 ms);
    void resized();
    /// The operator wants the next edge to the right (1) or left (-1).
    void edgeAsked(int direction);
    /// The operator wants a time window longer by this factor.
    void stretchAsked(double factor);

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    class RowScale;
    class LaneNames;
    void setUpTime();
    void setUpRows();
    void setUpCursor();
    void setFonts();
    void showRows(int first, int count);
    void fillCurves(const TimeSpan& span);
    void fillValues(const TimeSpan& span);
    void setMarkerTime(QwtPlotMarker* marker, std::optional<qint64> ms);
    double bottomOf(size_t row) const { return double(rows_.size() - 1 - row) + 0.1; }

    const SignalRecorder* recorder_;
    std::vector<ScopeRow> rows_;
    std::vector<QwtPlotCurve*> curves_;  ///< one for each row, owned by the plot
    LaneNames* names_;                   ///< owned by the plot, as are the following
    RowScale* values_;
    QwtPlotMarker* cursor_;
    QwtPlotMarker* mark_;
    std::optional<qint64> cursorMs_, markMs_;
    int firstRow_ = 0;
};

}  // namespace app
