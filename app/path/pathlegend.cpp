#include "app/path/pathlegend.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>

#include <utility>

namespace app {

namespace {

constexpr int columns = 3;
constexpr QSize sampleSize(34, 22);

}  // namespace

PathLegend::PathLegend(QWidget* parent) : QWidget(parent) {
    const std::pair<PathSign, QString> entries[] = {
        {PathSign::Weld, tr("焊接")},           {PathSign::Move, tr("空程")},
        {PathSign::JointMove, tr("关节运动")},  {PathSign::Point, tr("示教点")},
        {PathSign::Seam, tr("已焊")},           {PathSign::Selected, tr("选中行")},
        {PathSign::Tool, tr("工具")},           {PathSign::ToolWithLaser, tr("出光")},
        {PathSign::Impossible, tr("无法运动")},
    };
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(10, 2, 10, 2);
    grid->setVerticalSpacing(2);
    int index = 0;
    for (const auto& [sign, text] : entries) {
        const int row = index / columns, column = index % columns * 2;
        grid->addWidget(makeSample(sign), row, column);
        grid->addWidget(new QLabel(text), row, column + 1);
        grid->setColumnStretch(column + 1, 1);
        ++index;
    }
}

QWidget* PathLegend::makeSample(PathSign sign) {
    QPixmap picture(sampleSize * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    PathPainter::paintSample(&painter, sign, QRectF(QPointF(), QSizeF(sampleSize)).adjusted(2, 2, -2, -2));
    painter.end();
    auto* sample = new QLabel;
    sample->setPixmap(picture);
    return sample;
}

}  // namespace app
