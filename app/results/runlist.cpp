#include "app/results/runlist.h"

#include "app/clocktext.h"
#include "app/results/resulttext.h"
#include "look/tokens.h"

#include <QColor>

namespace app {

namespace {

constexpr double msPerS = 1000;

int alignmentOf(int column) {
    return int((column >= RunList::Duration ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

}  // namespace

RunList::RunList(const RunHistory* history, QObject* parent)
    : QAbstractTableModel(parent), history_(history) {
    connect(history, &RunHistory::changed, this, &RunList::reset);
}

void RunList::reset() {
    beginResetModel();
    endResetModel();
}

int RunList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : history_->count();
}

int RunList::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

RunList::Line RunList::lineOf(const RunResult& result) {
    const workcell::RunRecord& record = result.record;
    const int outside = result.violations().size();
    QString limits = QStringLiteral("–");
    if (result.limits) {
        limits = outside == 0 ? signOf(Mark::Within)
                              : QStringLiteral("%1 %2").arg(signOf(Mark::Outside)).arg(outside);
    } else if (!result.limitsFile.isEmpty()) {
        limits = QStringLiteral("⚠");
    }
    return {{result.begun.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")), result.title(),
             reasonText(record.reason), clockText(qint64(record.seconds * msPerS)),
             QString::number(record.seams.size()), limits},
            outside > 0};
}

RunList::Line RunList::line(int row) const {
    const QString file = history_->fileName(row);
    const auto known = lines_.constFind(file);
    if (known != lines_.constEnd()) {
        return *known;
    }
    const std::optional<RunResult> result = history_->at(row);
    const Line line = result ? lineOf(*result) : Line{{file, tr("无法读取")}, true};
    if (!file.isEmpty()) {
        lines_.insert(file, line);
    }
    return line;
}

QVariant RunList::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    switch (role) {
        case Qt::DisplayRole:
        case Qt::ToolTipRole:
            return line(index.row()).texts.value(index.column());
        case Qt::ForegroundRole:
            return index.column() == Limits && line(index.row()).isOutside ? QColor(look::amberInk)
                                                                           : QVariant();
        case Qt::TextAlignmentRole:
            return alignmentOf(index.column());
        default:
            return {};
    }
}

QVariant RunList::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole) {
        return alignmentOf(section);
    }
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    const QString headings[] = {tr("开始"), tr("工程"), tr("结束"), tr("时间"), tr("焊缝"), tr("限值")};
    return section < ColumnCount ? headings[section] : QString();
}

}  // namespace app
