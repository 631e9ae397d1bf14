#pragma once

#include <QWidget>

namespace app {

/// The figure that is typed, large, with its unit: as in the field itself, with cursor and selection.
class PadDisplay : public QWidget {
    Q_OBJECT
public:
    explicit PadDisplay(QWidget* parent = nullptr);

    struct Shown {
        QString text;
        QString unit;
        int cursor = 0;    ///< before which letter
        int selected = 0;  ///< letters from the first one on
        bool taken = true;

        bool operator==(const Shown& other) const;
    };
    void show(const Shown& shown);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Shown shown_;
};

}  // namespace app
