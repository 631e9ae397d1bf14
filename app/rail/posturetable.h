#pragma once

#include <QWidget>

#include <array>

class QLabel;

namespace app {

/// The tool's pose or the joint angles of the robot service, in millimetres and degrees.
class PostureTable : public QWidget {
    Q_OBJECT
public:
    explicit PostureTable(QWidget* parent = nullptr);

    void showJoints(bool joints);

private:
    void refresh();

    bool joints_ = false;
    std::array<QLabel*, 6> names_{}, values_{};
};

}  // namespace app
