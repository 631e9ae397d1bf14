#pragma once

#include <QFileDialog>

namespace lumo {

/// Asks for a project file with Qt's own dialog, arranged for a finger: a list of names, and the two places
/// where projects are. It changes no files. Show it with open(); it deletes itself when it is answered.
class ProjectChooser : public QFileDialog {
public:
    explicit ProjectChooser(QWidget* parent);
};

}  // namespace lumo
