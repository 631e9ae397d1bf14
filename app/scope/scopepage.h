#pragma once

#include "app/scope/scopeexport.h"
#include "app/scope/timewindow.h"

#include <QTimer>
#include <QWidget>

class QComboBox;
class QLabel;
class QLayout;
class QScrollBar;
class QToolButton;

namespace app {

class ScopePlot;

/// The signal scope: inputs and outputs over time with cursor, hold, zoom and export. It only reads.
class ScopePage : public QWidget {
    Q_OBJECT
public:
    /// Make it after the package's page. `recorder` must outlive it.
    explicit ScopePage(const SignalRecorder* recorder, QWidget* parent = nullptr);

    ScopePlot* plot() const { return plot_; }
    /// Writes a file in the format of its extension (png, csv or vcd). Shows a message on failure.
    void exportTo(const QString& file);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    enum Range { Shown, LastRun, All };
    QLayout* makeControls();
    QLayout* makePlot();
    QLayout* makeCursor();
    QLayout* makeExport();
    QToolButton* makeButton(const QString& name, const QString& icon, const QString& text);
    QToolButton* makeSign(const QString& name, const QString& icon, const QString& meaning);
    void arrange();
    void tell(const QString& text);

    void refresh();
    void refreshScrollBar(const TimeSpan& shown);
    void refreshRows();
    void refreshReadout();
    void setHeld(bool held);
    void stretch(double factor);
    void scrollTo(int position);
    void setCursor(qint64 ms);
    void jump(int direction);
    void toggleMark();

    TimeSpan shown() const;
    TimeSpan chosen() const;
    void askFile(const QString& ending);
    void confirm(const QString& file);
    bool write(QIODevice* device, const QString& ending, QString* error) const;

    const SignalRecorder* recorder_;
    TimeWindow window_;
    ScopePlot* plot_;
    QList<QToolButton*> buttons_;
    QToolButton* hold_ = nullptr;
    QToolButton* mark_ = nullptr;
    QLabel* length_;
    QLabel* readout_;
    QScrollBar* scroll_;
    QScrollBar* rows_;
    QComboBox* range_;
    QLabel* written_;
    QTimer tick_;
};

}  // namespace app
