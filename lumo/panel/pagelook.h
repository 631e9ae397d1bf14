#pragma once

#include <QObject>

class QWidget;

namespace lumo {

/// Gives the package's page its look: style sheet and type, larger in a large window (look/scale.h). Widgets
/// that paint themselves learn of a new size by QEvent::StyleChange.
class PageLook : public QObject {
    Q_OBJECT
public:
    /// `page` owns it.
    explicit PageLook(QWidget* page);

    /// The theme's style sheet, with its placeholders filled in.
    static QString sheet();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void dress();

    QWidget* page_;
    double factor_ = 0;  ///< that the page was dressed for; 0: not yet
};

}  // namespace lumo
