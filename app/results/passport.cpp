#include "app/results/passport.h"

#include "app/clocktext.h"
#include "app/path/pathpainter.h"
#include "app/results/bandpicture.h"
#include "app/results/programline.h"
#include "app/results/resulttext.h"
#include "app/results/weldpicture.h"
#include "look/tokens.h"
#include "mendo/modulemanager.h"
#include "program/parameters.h"
#include "program/words.h"

#include <QApplication>
#include <QCoreApplication>
#include <QFontMetricsF>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <tuple>

namespace app {

/// Translation context of the texts.
struct Passport {
    Q_DECLARE_TR_FUNCTIONS(app::Passport)
};

namespace {

using Cell = Sheets::Cell;
using Column = Sheets::Column;
using Row = Sheets::Row;

const QColor good(look::green);
const QColor bad(look::amberInk);
const QColor badFill(look::amberTint);
constexpr int textPx = 11;
constexpr int columnsAtOnce = 5;  // seams or sets beside each other
constexpr double headingWidth = 172;
constexpr double msPerS = 1000;

QString number(double value, int decimals) {
    return QString::number(value, 'f', decimals);
}

/// What the page of the parameter sets calls a value. The package's templates of a new set tell.
QString parameterName(const prog::ParameterRow& row) {
    const QList<mendo::ModuleObject*> templates = m(prog::key::defaultParam)->cmobjs();
    for (const mendo::ModuleObject* value : templates) {
        if (value->c(prog::field::name)->getString() == row.name) {
            return value->c(prog::field::tag)->getString();
        }
    }
    return row.name;
}

/// Columns beside a first one with the headings of the rows.
QVector<Column> sideBySide(int count) {
    QVector<Column> columns{{headingWidth, Qt::AlignLeft}};
    const double width = (Sheets::textWidth - headingWidth) / columnsAtOnce;
    for (int i = 0; i < count; ++i) {
        columns.append({width, Qt::AlignRight});
    }
    return columns;
}

/// A row for each of the first texts. The table of the seams has the rest.
void addSome(Sheets* sheets, const QStringList& texts, const QString& sign, const QColor& fill) {
    constexpr int most = 20;
    for (const QString& text : texts.mid(0, most)) {
        sheets->addRow({{}, {sign + text, false, bad, fill}});
    }
    if (texts.size() > most) {
        sheets->addRow({{}, {QStringLiteral("… +%1").arg(texts.size() - most), false, bad, fill}});
    }
}

void addOverview(Sheets* sheets, const RunResult& result) {
    const workcell::RunRecord& record = result.record;
    const QString project = result.projectFile.isEmpty() ? Passport::tr("没有工程文件") : result.projectFile;
    const QString origin = result.byStation ? Passport::tr("工位") : Passport::tr("手动启动");
    const bool isOutside = !result.violations().isEmpty();
    const QVector<QPair<QString, Cell>> rows{
        {Passport::tr("工程"), {project}},
        {Passport::tr("开始"), {result.begun.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))}},
        {Passport::tr("启动方式"), {origin}},
        {Passport::tr("结束"), {reasonText(record.reason)}},
        {Passport::tr("运行时间"), {clockText(qint64(record.seconds * msPerS))}},
        {Passport::tr("焊缝"), {QString::number(record.seams.size())}},
        {Passport::tr("焊接"), {weldedText(result)}},
        {Passport::tr("路径 mm"), {number(record.pathMm, 1)}},
        {Passport::tr("出光 / 送气 / 送丝 s"),
         {QStringLiteral("%1 / %2 / %3")
              .arg(number(record.laserOnS, 2), number(record.gasS, 2), number(record.wireS, 2))}},
        {Passport::tr("限值"), {limitsText(result), isOutside, isOutside ? bad : QColor(), {}}},
    };
    sheets->beginTable({{headingWidth}, {Sheets::textWidth - headingWidth}}, {});
    for (const auto& row : rows) {
        sheets->addRow({{row.first, true}, row.second});
    }
    addSome(sheets, violationTexts(result), QStringLiteral("✗ "), badFill);
    addSome(sheets, incidentTexts(result), QStringLiteral("⚠ "), {});
}

Cell cellOf(const SeamCell& cell) {
    QString text = cell.text;
    if (cell.mark != Mark::NoLimit) {
        text = QStringLiteral("%1 %2\n%3").arg(signOf(cell.mark), cell.text, cell.allowed);
    }
    switch (cell.mark) {
        case Mark::Outside:
            return {text, true, bad, badFill};
        case Mark::Within:
            return {text, false, good, {}};
        case Mark::NoLimit:
            break;
    }
    return {text};
}

void addSeams(Sheets* sheets, const RunResult& result) {
    const int count = int(result.record.seams.size());
    if (count == 0) {
        return;
    }
    sheets->addHeading(Passport::tr("焊缝"));
    const QStringList headings = seamHeadings();
    for (int first = 0; first < count; first += columnsAtOnce) {
        const int shown = std::min(columnsAtOnce, count - first);
        Row header{{Passport::tr("焊缝")}};
        QVector<QVector<SeamCell>> cells;
        for (int i = first; i < first + shown; ++i) {
            header << Cell{QString::number(i + 1)};
            cells << seamCells(result.record.seams[std::size_t(i)], result);
        }
        if (first > 0) {
            sheets->addSpace(14);
        }
        sheets->beginTable(sideBySide(shown), header);
        for (int row = 0; row < headings.size(); ++row) {
            Row line{{headings[row]}};
            for (const QVector<SeamCell>& seam : cells) {
                line << cellOf(seam[row]);
            }
            sheets->addRow(line);
        }
    }
}

/// From above, and from the side below it.
void paintPath(QPainter* painter, const QRectF& area, const RunResult& result) {
    constexpr double margin = 34, leastPart = 0.35;
    const Extent extent = weldExtent(result);
    const double y = extent.most.y - extent.least.y + 0.02, z = extent.most.z - extent.least.z + 0.02;
    const double above = area.height() * std::clamp(y / (y + z), leastPart, 1 - leastPart);
    const std::tuple<QRectF, double, QString> views[] = {
        {QRectF(area.topLeft(), QSizeF(area.width(), above)), Camera::fromAbove, Passport::tr("俯视")},
        {area.adjusted(0, above, 0, 0), 0.0, Passport::tr("侧视")},
    };
    Camera camera;
    for (const auto& [place, height, title] : views) {
        camera.setArea(place);
        camera.look(camera.turn(), height);
        if (height > 0) {
            camera.fitTurned(extent, margin);
        } else {
            camera.fit(extent, margin);  // turned as the view above it
        }
        PathPainter path(painter, camera);
        path.paintWelded(result.moves, extent, result.gapPieces(), result.track.litPieces());
        path.paintFrame(title, Passport::tr("%1 mm").arg(camera.scaleBar(PathPainter::barPixels()).metres *
                                                         prog::mmPerM));
        painter->setPen(QPen(QColor(look::line), 1));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(place);
    }
}

void paintLegend(QPainter* painter, const QRectF& area, const QFont& font) {
    const std::pair<PathSign, QString> entries[] = {
        {PathSign::Weld, Passport::tr("编程焊缝")},       {PathSign::Move, Passport::tr("空程")},
        {PathSign::Seam, Passport::tr("已焊")},           {PathSign::Gap, Passport::tr("未焊")},
        {PathSign::Impossible, Passport::tr("无法运动")},
    };
    constexpr double sample = 34, gap = 18;
    double left = area.left();
    painter->setFont(font);
    for (const auto& [sign, text] : entries) {
        const double width = QFontMetricsF(font).horizontalAdvance(text) + sample + gap;
        PathPainter::paintSample(painter, sign,
                                 QRectF(left, area.top(), sample, area.height()).adjusted(2, 4, -2, -4));
        painter->setPen(Qt::black);
        painter->drawText(QRectF(left + sample + 4, area.top(), width - sample - 4, area.height()),
                          Qt::AlignLeft | Qt::AlignVCenter, text);
        left += width;
    }
}

void addPath(Sheets* sheets, const RunResult& result, const QFont& font) {
    constexpr double height = 430, legend = 24;
    if (result.moves.empty() && result.track.path().size() < 2) {
        return;
    }
    sheets->addHeading(Passport::tr("路径"));
    sheets->addPicture(height,
                       [result](QPainter* painter, const QRectF& area) { paintPath(painter, area, result); });
    sheets->addPicture(legend,
                       [font](QPainter* painter, const QRectF& area) { paintLegend(painter, area, font); });
}

void addSignals(Sheets* sheets, const RunResult& result, const QFont& font) {
    if (result.bands.isEmpty()) {
        return;
    }
    sheets->addHeading(Passport::tr("信号"));
    sheets->addPicture(bandPictureHeight(result.bands.size()),
                       [bands = result.bands, font](QPainter* painter, const QRectF& area) {
                           painter->setFont(font);
                           paintBands(painter, area, bands);
                       });
}

void addSets(Sheets* sheets, const RunResult& result) {
    if (result.sets.isEmpty()) {
        return;
    }
    sheets->addHeading(Passport::tr("参数组"));
    for (int first = 0; first < result.sets.size(); first += columnsAtOnce) {
        const QVector<SetValues> shown = result.sets.mid(first, columnsAtOnce);
        Row header{{Passport::tr("参数")}};
        for (const SetValues& set : shown) {
            header << Cell{set.name};
        }
        if (first > 0) {
            sheets->addSpace(14);
        }
        sheets->beginTable(sideBySide(shown.size()), header);
        int position = 0;
        for (const prog::ParameterRow& row : prog::parameterRows()) {
            Row line{{parameterName(row)}};
            for (const SetValues& set : shown) {
                line << Cell{QString::number(set.values.value(position))};
            }
            ++position;
            sheets->addRow(line);
        }
    }
}

void addProgram(Sheets* sheets, const RunResult& result) {
    constexpr int longest = 300;
    const QColor skipped(look::off);
    sheets->addHeading(Passport::tr("程序"));
    if (!result.isSaved) {
        sheets->addText(Passport::tr("程序有未保存的更改：工程文件与运行的程序不同"));
    }
    sheets->beginTable({{44, Qt::AlignRight},
                        {130},
                        {160},
                        {62, Qt::AlignRight},
                        {62, Qt::AlignRight},
                        {Sheets::textWidth - 458}},
                       {{Passport::tr("行")},
                        {Passport::tr("指令")},
                        {Passport::tr("目标 mm")},
                        {Passport::tr("速度 mm/s")},
                        {Passport::tr("转弯区 mm")},
                        {Passport::tr("内容")}});
    for (int line = 0; line < result.lines.size(); ++line) {
        const ProgramLine& statement = result.lines[line];
        const QColor ink = statement.executed ? QColor() : skipped;
        const QString command = commandText(statement);
        sheets->addRow(
            {{QString::number(line + 1), false, ink, {}},
             {statement.executed ? command : Passport::tr("%1（跳过）").arg(command), false, ink, {}},
             {statement.target, false, ink, {}},
             {statement.speed, false, ink, {}},
             {statement.zone, false, ink, {}},
             {statement.details.left(longest), false, ink, {}}});
    }
    if (result.lineCount > result.lines.size()) {
        sheets->addText(Passport::tr("其余行数：%1").arg(result.lineCount - result.lines.size()));
    }
}

void addFiles(Sheets* sheets, const RunResult& result) {
    sheets->addHeading(Passport::tr("文件和校验和（SHA-256）"));
    sheets->beginTable({{headingWidth}, {Sheets::textWidth - headingWidth}}, {});
    for (const FileDigest& file : result.files) {
        sheets->addRow({{file.name}, {file.sha256.isEmpty() ? Passport::tr("没有此文件") : file.sha256}});
    }
    sheets->addRow({{Passport::tr("软件")}, {QStringLiteral("lumo-panel ") + result.version}});
    sheets->addSpace(50);
    const double third = Sheets::textWidth / 3;
    sheets->beginTable({{third}, {third}, {third}}, {});
    sheets->addRow({{Passport::tr("操作员")}, {Passport::tr("检验员")}, {Passport::tr("日期、签名")}});
}

QFont textFont() {
    QFont font = QApplication::font();
    font.setPixelSize(textPx);
    return font;
}

}  // namespace

Sheets seamPassport(const RunResult& result) {
    const QFont font = textFont();
    Sheets sheets(font);
    sheets.addTitle(Passport::tr("焊缝档案：%1").arg(result.title()));
    addOverview(&sheets, result);
    addSeams(&sheets, result);
    addPath(&sheets, result, font);
    addSignals(&sheets, result, font);
    addSets(&sheets, result);
    addProgram(&sheets, result);
    addFiles(&sheets, result);
    return sheets;
}

bool writePassport(QIODevice* device, const RunResult& result) {
    constexpr int dotsPerInch = 1200;
    constexpr double pixelsPerInch = 96;
    QPdfWriter writer(device);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF());
    writer.setResolution(dotsPerInch);
    writer.setCreator(QStringLiteral("lumo-panel ") + result.version);
    writer.setTitle(Passport::tr("焊缝档案：%1").arg(result.title()));
    QPainter painter;
    if (!painter.begin(&writer)) {
        return false;
    }
    painter.scale(dotsPerInch / pixelsPerInch, dotsPerInch / pixelsPerInch);
    const Sheets sheets = seamPassport(result);
    const QString footer = QStringLiteral("%1 · %2").arg(
        result.title(), result.begun.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    for (int page = 0; page < sheets.pageCount(); ++page) {
        if (page > 0) {
            writer.newPage();
        }
        sheets.paint(&painter, page, footer);
    }
    return painter.end();
}

}  // namespace app
