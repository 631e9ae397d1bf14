#include "app/scope/scopeplot.h"

#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"

#include <qwt_date_scale_draw.h>
#include <qwt_date_scale_engine.h>
#include <qwt_picker_machine.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_layout.h>
#include <qwt_plot_marker.h>
#include <qwt_plot_picker.h>
#include <qwt_plot_renderer.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_widget.h>
#include <QKeyEvent>
#include <QPainter>
#include <QWheelEvent>

namespace app {

namespace {

constexpr double traceHeight = 0.4;  // of a row; above it stands the name
constexpr int minRow = 40;           // px at factor 1, as are the following
constexpr int axisPixels = 44;
constexpr int valuesPixels = 60;
constexpr double stretchStep = 1.6;
constexpr int mostTimes = 4;

QwtPlotMarker* makeMarker(QwtPlot* plot, QRgb colour, Qt::PenStyle style) {
    auto* marker = new QwtPlotMarker;
    marker->setLineStyle(QwtPlotMarker::VLine);
    marker->setLinePen(QColor(colour), 2, style);
    marker->setZ(50);
    marker->attach(plot);
    marker->setVisible(false);
    return marker;
}

}  // namespace

/// The names of the rows in their lanes, with a line between two lanes.
class ScopePlot::LaneNames : public QwtPlotItem {
public:
    void setTexts(const QStringList& texts) { texts_ = texts; }

    void draw(QPainter* painter, const QwtScaleMap&, const QwtScaleMap& rows,
              const QRectF& canvas) const override {
        painter->setFont(look::font(look::Size::Caption));
        for (int i = 0; i < texts_.size(); ++i) {
            const double top = rows.transform(texts_.size() - i);
            const double bottom = rows.transform(texts_.size() - i - 1);
            if (top < canvas.top() - 1 || bottom > canvas.bottom() + 1) {
                continue;
            }
            painter->setPen(QColor(look::rule));
            painter->drawLine(QPointF(canvas.left(), bottom), QPointF(canvas.right(), bottom));
            painter->setPen(QColor(look::ink2));
            painter->drawText(QRectF(canvas.left() + 4, top + 1, canvas.width() - 8, look::px(18)),
                              Qt::AlignLeft | Qt::AlignVCenter, texts_[i]);
        }
    }

private:
    QStringList texts_;
};

/// A scale with a text for each row instead of numbers.
class ScopePlot::RowScale : public QwtScaleDraw {
public:
    RowScale() {
        enableComponent(Backbone, false);
        enableComponent(Ticks, false);
    }
    void setTexts(const QStringList& texts) {
        texts_ = texts;
        invalidateCache();
    }
    const QStringList& texts() const { return texts_; }
    QwtText label(double value) const override { return texts_.value(texts_.size() - 1 - int(value)); }

private:
    QStringList texts_;
};

ScopePlot::ScopePlot(const SignalRecorder* recorder, QWidget* parent)
    : QwtPlot(parent),
      recorder_(recorder),
      names_(new LaneNames),
      values_(new RowScale),
      cursor_(makeMarker(this, look::blue, Qt::SolidLine)),
      mark_(makeMarker(this, look::ink2, Qt::DashLine)) {
    setObjectName(QStringLiteral("scopePlot"));
    setFocusPolicy(Qt::StrongFocus);
    setMinimumHeight(ScopePlot::minimumSizeHint().height());  // independent of the axes, which show what fits
    setAutoReplot(false);
    setUpTime();
    setUpRows();
    setUpCursor();
}

ScopePlot::~ScopePlot() = default;

void ScopePlot::setUpTime() {
    auto* times = new QwtDateScaleDraw(Qt::LocalTime);
    times->setDateFormat(QwtDate::Millisecond, QStringLiteral("hh:mm:ss.zzz"));
    for (const auto interval : {QwtDate::Second, QwtDate::Minute, QwtDate::Hour, QwtDate::Day}) {
        times->setDateFormat(interval, QStringLiteral("hh:mm:ss"));
    }
    setAxisScaleDraw(xBottom, times);
    setAxisScaleEngine(xBottom, new QwtDateScaleEngine(Qt::LocalTime));
    setAxisMaxMajor(xBottom, mostTimes);
    auto* grid = new QwtPlotGrid;
    grid->enableY(false);
    grid->setMajorPen(QColor(look::rule), 1, Qt::SolidLine);
    grid->attach(this);
}

void ScopePlot::setUpRows() {
    enableAxis(yRight);
    enableAxis(yLeft, false);
    setAxisScaleDraw(yRight, values_);
    names_->setZ(40);
    names_->attach(this);
    setFonts();
    plotLayout()->setAlignCanvasToScales(true);
    auto* frame = qobject_cast<QwtPlotCanvas*>(canvas());
    frame->setFrameStyle(QFrame::NoFrame);
    frame->setPalette(Qt::white);
    frame->setFocusPolicy(Qt::NoFocus);
    frame->setBorderRadius(0);
}

void ScopePlot::setFonts() {
    for (const int axis : {int(yRight), int(xBottom)}) {
        setAxisFont(axis, look::font(look::Size::Caption));
    }
    values_->setMinimumExtent(look::px(valuesPixels));
}

void ScopePlot::changeEvent(QEvent* event) {
    QwtPlot::changeEvent(event);
    if (event->type() == QEvent::StyleChange && values_) {
        setFonts();
        setFirstRow(firstRow_);
    }
}

void ScopePlot::setUpCursor() {
    auto* picker = new QwtPlotPicker(xBottom, yLeft, canvas());
    picker->setStateMachine(new QwtPickerDragPointMachine);
    const auto ask = [this](const QPointF& point) {
        emit cursorAsked(qint64(point.x()) - recorder_->epochMs());
    };
    connect(picker, QOverload<const QPointF&>::of(&QwtPlotPicker::appended), this, ask);
    connect(picker, QOverload<const QPointF&>::of(&QwtPlotPicker::moved), this, ask);
}

void ScopePlot::setRows(const std::vector<ScopeRow>& rows) {
    rows_ = rows;
    for (QwtPlotCurve* curve : curves_) {
        curve->detach();
        delete curve;
    }
    curves_.clear();
    QStringList names;
    for (size_t i = 0; i < rows_.size(); ++i) {
        auto* curve = new QwtPlotCurve;
        curve->setPen(QColor(rows_[i].laser ? look::red : look::steel), 1.6);
        curve->setBrush(QColor(rows_[i].laser ? look::laserFill : look::laneFill));
        curve->setBaseline(bottomOf(i));
        curve->setPaintAttribute(QwtPlotCurve::FilterPoints);
        curve->attach(this);
        curves_.push_back(curve);
        names << rows_[i].label;
    }
    names_->setTexts(names);
    setFirstRow(firstRow_);
}

int ScopePlot::rowsThatFit() const {
    return std::max(1, (height() - look::px(axisPixels)) / look::px(minRow));
}

void ScopePlot::setFirstRow(int row) {
    const int count = std::min(int(rows_.size()), rowsThatFit());
    firstRow_ = std::clamp(row, 0, int(rows_.size()) - count);
    showRows(firstRow_, count);
}

/// `first` becomes the topmost row.
void ScopePlot::showRows(int first, int count) {
    const double top = double(rows_.size()) - first;
    QList<double> middles;
    for (int i = count; i > 0; --i) {
        middles << top - i + 0.5;
    }
    const QwtScaleDiv rows(top - count, top, {}, {}, middles);
    setAxisScaleDiv(yLeft, rows);
    setAxisScaleDiv(yRight, rows);
}

QImage ScopePlot::picture() {
    QImage image(width(), int(rows_.size()) * look::px(minRow) + look::px(axisPixels), QImage::Format_RGB32);
    image.fill(Qt::white);
    showRows(0, int(rows_.size()));
    QwtPlotRenderer().renderTo(this, image);
    setFirstRow(firstRow_);
    return image;
}

void ScopePlot::showSpan(const TimeSpan& span) {
    const double epoch = double(recorder_->epochMs());
    setAxisScale(xBottom, double(span.fromMs) + epoch, double(span.toMs) + epoch);
    fillCurves(span);
    fillValues(span);
    setMarkerTime(cursor_, cursorMs_);
    setMarkerTime(mark_, markMs_);
    replot();
}

/// Each change has two points, which draw a vertical edge. The curve ends now.
void ScopePlot::fillCurves(const TimeSpan& span) {
    const SignalRecord& record = recorder_->record();
    const double epoch = double(recorder_->epochMs());
    const qint64 from = std::max(span.fromMs, record.beginMs());
    const qint64 to = std::min(span.toMs, SignalRecorder::nowMs());
    std::vector<double> values = record.before(from);
    std::vector<int> rowOf(values.size(), -1);
    std::vector<QVector<QPointF>> lines(rows_.size());
    const auto append = [&](size_t row, qint64 ms) {
        const double level = rows_[row].level(values[size_t(rows_[row].signal)]);
        lines[row].append({double(ms) + epoch, bottomOf(row) + level * traceHeight});
    };
    for (size_t row = 0; row < rows_.size(); ++row) {
        rowOf[size_t(rows_[row].signal)] = int(row);
        append(row, from);
    }
    const size_t end = record.firstAt(to + 1);
    for (size_t i = record.firstAt(from); i < end; ++i) {
        const SignalRecord::Change& change = record.changes()[i];
        const int row = rowOf[size_t(change.signal)];
        if (row >= 0) {
            append(size_t(row), change.ms);
        }
        values[size_t(change.signal)] = change.value;
        if (row >= 0) {
            append(size_t(row), change.ms);
        }
    }
    for (size_t row = 0; row < rows_.size(); ++row) {
        append(row, std::max(from, to));
        curves_[row]->setSamples(lines[row]);
    }
}

void ScopePlot::fillValues(const TimeSpan& span) {
    const std::vector<double> values = recorder_->record().at(cursorMs_.value_or(span.toMs));
    QStringList texts;
    for (const ScopeRow& row : rows_) {
        texts << row.text(values[size_t(row.signal)]);
    }
    if (texts == values_->texts()) {
        return;
    }
    values_->setTexts(texts);
    axisWidget(yRight)->update();
}

void ScopePlot::setMarkerTime(QwtPlotMarker* marker, std::optional<qint64> ms) {
    marker->setVisible(ms.has_value());
    if (ms) {
        marker->setXValue(double(*ms + recorder_->epochMs()));
    }
}

void ScopePlot::setCursor(std::optional<qint64> ms) {
    cursorMs_ = ms;
}

void ScopePlot::setMark(std::optional<qint64> ms) {
    markMs_ = ms;
}

QString ScopePlot::valueText(int row) const {
    return values_->texts().value(row);
}

void ScopePlot::resizeEvent(QResizeEvent* event) {
    QwtPlot::resizeEvent(event);
    setFirstRow(firstRow_);
    emit resized();
}

void ScopePlot::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
            emit edgeAsked(-1);
            break;
        case Qt::Key_Right:
            emit edgeAsked(1);
            break;
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            emit stretchAsked(1 / stretchStep);
            break;
        case Qt::Key_Minus:
            emit stretchAsked(stretchStep);
            break;
        default:
            QwtPlot::keyPressEvent(event);
    }
}

void ScopePlot::wheelEvent(QWheelEvent* event) {
    emit stretchAsked(event->angleDelta().y() > 0 ? 1 / stretchStep : stretchStep);
}

}  // namespace app
