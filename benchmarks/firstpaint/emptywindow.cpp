// The least that a program with a window does: what the panel's start is measured against.

#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(1280, 800);
    window.show();
    return QApplication::exec();
}
