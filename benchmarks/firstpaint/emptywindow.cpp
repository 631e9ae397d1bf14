// A program that only shows an empty window: the reference for the panel's start.

#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(1280, 800);
    window.show();
    return QApplication::exec();
}
