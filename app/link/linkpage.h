#pragma once

#include "bridge/linkreason.h"

#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace app {

class LinkWatch;

/// A robot controller, or an I/O device, that is not simulated: whether it can be reached, when it could not
/// the last time and why, and what the controller does wrong.
class LinkPage : public QWidget {
    Q_OBJECT
public:
    /// `note`: what is left out of the cell, and why.
    LinkPage(const LinkWatch* links, const QString& note, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    struct Block {
        QLabel* sign;
        QLabel* state;
        QLabel* loss;
    };
    Block addBlock(const QString& heading, const QString& name, const QString& objectName);
    QLabel* addText(const QString& objectName);
    void refresh();
    void show(const Block& block, bridge::LinkEnd end);
    void fit();

    const LinkWatch* links_;
    QVBoxLayout* column_;
    Block robot_, device_;
    QLabel* rules_;
};

}  // namespace app
