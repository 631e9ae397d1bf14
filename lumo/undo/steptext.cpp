#include "undo/steptext.h"

#include <QCoreApplication>

namespace lumo::steptext {

namespace {

struct Text {
    Q_DECLARE_TR_FUNCTIONS(lumo::steptext)
};

QString ofLine(const QString& text, int row, const QString& command) {
    return text.arg(row + 1).arg(command);
}

}  // namespace

QString lineInserted(int row, const QString& command) {
    return ofLine(Text::tr("插入第 %1 行：%2"), row, command);
}

QString lineDeleted(int row, const QString& command) {
    return ofLine(Text::tr("删除第 %1 行：%2"), row, command);
}

QString linePasted(int row, const QString& command) {
    return ofLine(Text::tr("粘贴第 %1 行：%2"), row, command);
}

QString lineMoved(int from, int to) {
    return Text::tr("移动第 %1 行到第 %2 行").arg(from + 1).arg(to + 1);
}

QString lineEdited(int row, const QString& command) {
    return ofLine(Text::tr("编辑第 %1 行：%2"), row, command);
}

QString lineTaught(int row, const QString& command) {
    return ofLine(Text::tr("示教第 %1 行：%2"), row, command);
}

QString runFlag(int firstRow, int count) {
    return count == 1 ? Text::tr("第 %1 行：运行/不运行").arg(firstRow + 1)
                      : Text::tr("运行/不运行（%1 行）").arg(count);
}

QString speed(int count) {
    return Text::tr("修改速度（%1 行）").arg(count);
}

QString zone(int count) {
    return Text::tr("修改转弯区（%1 行）").arg(count);
}

QString setAdded(const QString& name) {
    return Text::tr("新建参数组 %1").arg(name);
}

QString setDeleted(const QString& name) {
    return Text::tr("删除参数组 %1").arg(name);
}

QString setRenamed(const QString& from, const QString& to) {
    return Text::tr("参数组 %1 改名为 %2").arg(from, to);
}

QString setEdited(const QString& name) {
    return Text::tr("编辑参数组 %1").arg(name);
}

QString setMoved(const QString& name) {
    return Text::tr("移动参数组 %1").arg(name);
}

QString setsImported(int count) {
    return Text::tr("导入参数组（%1 组）").arg(count);
}

QString portsChanged() {
    return Text::tr("端口配置");
}

QString stationAdded(const QString& name) {
    return Text::tr("新建工位 %1").arg(name);
}

QString stationDeleted(const QString& name) {
    return Text::tr("删除工位 %1").arg(name);
}

QString stationEdited(const QString& name) {
    return Text::tr("编辑工位 %1").arg(name);
}

}  // namespace lumo::steptext
