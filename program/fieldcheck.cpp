#include "program/fieldcheck.h"

#include "program/words.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace prog {

namespace {

constexpr int coordinates = 3;
constexpr int fewestAxes = 6;
constexpr int mostAxes = 7;

bool isText(const QVariant& value) {
    return value.userType() == QMetaType::QString;
}

bool isFlag(const QVariant& value) {
    return value.userType() == QMetaType::Bool;
}

bool isNumber(const QVariant& value) {
    switch (value.userType()) {
        case QMetaType::Double:
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::UInt:
        case QMetaType::ULongLong:
        case QMetaType::Float:
            return true;
        default:
            return false;
    }
}

bool isWhole(const QVariant& value) {
    return isNumber(value) && value.toDouble() == std::floor(value.toDouble());
}

/// Digits as dialogs store them, with a fraction or none; an empty text counts as 0. A sign is told as a
/// negative number.
bool isEntry(const QVariant& value, bool withFraction) {
    if (!isText(value)) {
        return false;
    }
    const QString text = value.toString();
    int dots = 0;
    for (int i = text.startsWith(QLatin1Char('-')) ? 1 : 0; i < text.size(); ++i) {
        const ushort letter = text.at(i).unicode();
        const bool isDot = letter == '.' && withFraction && i > 0 && i + 1 < text.size() && dots++ == 0;
        if (!isDot && (letter < '0' || letter > '9')) {
            return false;
        }
    }
    return text != QLatin1String("-");
}

bool isState(const QVariant& value) {
    const QString text = value.toString();
    return isText(value) && (text.isEmpty() || text == word::trueText || text == word::falseText);
}

/// Whether so many numbers stand in a list; else what stands in the place of one, or the list.
bool areNumbers(const Record& list, int least, int most, QVariant* found) {
    *found = list.isMap() ? QVariant(QVariantMap()) : list.isList() ? QVariant(QVariantList()) : list.value();
    if (!list.isList() || list.size() < least || list.size() > most) {
        return false;
    }
    for (int i = 0; i < list.size(); ++i) {
        const Record element = list.at(i);
        const QVariant value = element.value();
        if (!isNumber(value)) {
            *found = element.isMap()    ? QVariant(QVariantMap())
                     : element.isList() ? QVariant(QVariantList())
                                        : value;
            return false;
        }
    }
    return true;
}

bool isOfKind(const Record& field, const QVariant& value, FieldKind kind) {
    switch (kind) {
        case FieldKind::Text:
            return isText(value);
        case FieldKind::Flag:
            return isFlag(value);
        case FieldKind::Number:
            return isNumber(value);
        case FieldKind::Whole:
        case FieldKind::Set:
            return isWhole(value);
        case FieldKind::Entry:
            return isNumber(value) || isEntry(value, true);
        case FieldKind::Count:
            return isWhole(value) || isEntry(value, false);
        case FieldKind::State:
            return isState(value);
        case FieldKind::Map:
            return field.isMap();
        case FieldKind::Coordinates:
        case FieldKind::Joints:
            break;
    }
    return false;
}

bool isPoint(QLatin1String path) {
    return path == field::point || path == field::point1;
}

/// Whether a row describes a field inside a taught point: its coordinates or joint angles.
bool isOfPoint(const FieldRow& row) {
    constexpr QLatin1String inside[] = {"point."_l1, "point1."_l1};
    return std::any_of(std::begin(inside), std::end(inside), [&row](QLatin1String start) {
        return row.path.size() > start.size() && row.path.left(start.size()) == start;
    });
}

QString firstPart(const QString& path) {
    return path.section(QLatin1Char('.'), 0, 0);
}

QString lastPart(const QString& path) {
    return path.section(QLatin1Char('.'), -1);
}

}  // namespace

FieldShape::FieldShape(std::initializer_list<const FieldRows*> rows, const QString& below) {
    for (const FieldRows* part : rows) {
        for (const FieldRow& row : *part) {
            const QString path = row.path;
            if (!path.startsWith(below) || path.indexOf(QLatin1Char('.'), below.size()) >= 0) {
                continue;
            }
            const QLatin1String name(row.path.data() + below.size(), row.path.size() - below.size());
            Role role = isPoint(row.path) ? Role::Point : Role::Plain;
            if (row.kind == FieldKind::Set) {
                role = Role::Set;
            } else if (row.path == field::zone) {
                role = Role::Zone;
            } else if (row.path == field::weldspeed) {
                role = Role::WeldSpeed;
            } else if (row.path == field::speed && row.kind == FieldKind::Number) {
                role = Role::Speed;
            }
            std::unique_ptr<FieldShape> inner;
            if (row.kind == FieldKind::Map) {
                inner.reset(new FieldShape(rows, path + QLatin1Char('.')));
            }
            entries_.push_back({name, &row, role, std::move(inner)});
        }
    }
}

/// One look at one record.
class FieldShape::Pass {
public:
    Pass(Source source, const FieldLimits& limits, Collector* found)
        : source_(source), limits_(limits), found_(*found) {}

    /// `below`: the path of the map; empty for the record itself.
    void look(const FieldShape& shape, const Record& record, QLatin1String below) {
        std::uint64_t seen = 0;
        record.eachEntry([&](const QString& name, const Record& value) {
            const auto entry = std::find_if(shape.entries_.begin(), shape.entries_.end(),
                                            [&name](const Entry& one) { return name == one.name; });
            if (entry == shape.entries_.end()) {
                const QString path = below.size() == 0 ? name : below + QLatin1Char('.') + name;
                found_.add(Fault::FieldUnknown, path, {path});
            } else if (lookAt(*entry, value)) {
                seen |= std::uint64_t(1) << (entry - shape.entries_.begin());
            } else if (!isNeeded(*entry->row)) {  // it may be missing, but not null
                addMissing(*entry->row);
            }
        });
        for (std::size_t i = 0; i < shape.entries_.size(); ++i) {
            if (!(seen >> i & 1U)) {
                miss(shape.entries_[i]);
            }
        }
    }
    void tellMissing() {
        if (!missing_.isEmpty()) {
            found_.add(Fault::FieldMissing, {}, {missing_.join(QLatin1String(", "))});
        }
    }

private:
    /// False where the field is missing.
    bool lookAt(const Entry& entry, const Record& record) {
        const FieldRow& row = *entry.row;
        if (row.kind == FieldKind::Coordinates || row.kind == FieldKind::Joints) {
            return lookAtList(row, record);
        }
        const QVariant value = record.value();
        if (!value.isValid() && record.isMissing()) {
            return false;
        }
        if (!isOfKind(record, value, row.kind)) {
            tellKind(row, record.isMap()    ? QVariant(QVariantMap())
                          : record.isList() ? QVariant(QVariantList())
                                            : value);
        } else if (entry.inner) {
            lookInside(entry, record);
        } else if (row.kind != FieldKind::Text && row.kind != FieldKind::Flag &&
                   row.kind != FieldKind::State) {
            lookAtAmount(entry, record.number());
        }
        return true;
    }

    void lookInside(const Entry& entry, const Record& record) {
        if (entry.role == Role::Point && record.size() == 0) {
            found_.add(Fault::PointNotTaught, entry.row->path, {QString(entry.row->path)});
            return;
        }
        look(*entry.inner, record, entry.row->path);
    }

    bool lookAtList(const FieldRow& row, const Record& record) {
        if (record.isMissing()) {
            return false;
        }
        const bool areJoints = row.kind == FieldKind::Joints;
        const bool isShort = record.isList() && record.size() < (areJoints ? fewestAxes : coordinates);
        QVariant other;
        if (isShort && isOfPoint(row)) {
            found_.add(Fault::PointIncomplete, row.path, {firstPart(row.path), lastPart(row.path)});
        } else if (!areNumbers(record, areJoints ? fewestAxes : coordinates,
                               areJoints ? mostAxes : coordinates, &other)) {
            tellKind(row, other);
        } else if (areJoints && row.presence != Presence::Shown && limits_.axes > 0 &&
                   record.size() != limits_.axes) {
            found_.add(Fault::PointOtherAxes, row.path, {firstPart(row.path), record.size(), limits_.axes});
        }
        return true;
    }

    void lookAtAmount(const Entry& entry, double number) {
        const QLatin1String path = entry.row->path;
        switch (entry.role) {
            case Role::Speed:
                lookAtSpeed(path, number, Fault::SpeedNotPositive, Fault::SpeedTooHigh);
                break;
            case Role::WeldSpeed:
                lookAtSpeed(path, number, Fault::WeldSpeedNotPositive, Fault::WeldSpeedTooHigh);
                break;
            case Role::Zone:
                if (number < 0) {
                    found_.add(Fault::ZoneNegative, path, {number});
                }
                break;
            case Role::Set:
                if (number < 0) {
                    found_.add(Fault::NoSetChosen, path);
                } else if (number >= limits_.sets) {
                    found_.add(Fault::NoSuchSet, path, {number + 1, limits_.sets});
                }
                break;
            default:
                if (number < 0) {
                    found_.add(Fault::Negative, path, {QString(path), number});
                }
                break;
        }
    }

    void lookAtSpeed(QLatin1String path, double speed, Fault notPositive, Fault tooHigh) {
        if (speed <= 0) {
            found_.add(notPositive, path, {speed});
        } else if (speed > limits_.highestSpeedMmPerS) {
            found_.add(tooHigh, path, {speed, limits_.highestSpeedMmPerS});
        }
    }

    void tellKind(const FieldRow& row, const QVariant& other) {
        found_.add(Fault::FieldKind, row.path, {QString(row.path), static_cast<int>(row.kind), other});
    }

    bool isNeeded(const FieldRow& row) const {
        return row.presence == Presence::Required ||
               (row.presence == Presence::Usual && (row.source == Source::Any || row.source == source_));
    }

    void addMissing(const FieldRow& row) { missing_.append(QLatin1Char('"') + row.path + QLatin1Char('"')); }

    void miss(const Entry& entry) {
        const FieldRow& row = *entry.row;
        const QString path = row.path;
        if (!isNeeded(row)) {
            return;
        }
        if (entry.role == Role::Point) {
            found_.add(Fault::PointMissing, {}, {path});
        } else if (entry.role == Role::Speed) {
            found_.add(Fault::SpeedMissing);
        } else if (entry.role == Role::WeldSpeed) {
            found_.add(Fault::WeldSpeedMissing);
        } else if (isOfPoint(row)) {
            found_.add(Fault::PointIncomplete, firstPart(path), {firstPart(path), lastPart(path)});
        } else {
            addMissing(row);
        }
    }

    Source source_;
    const FieldLimits& limits_;
    Collector& found_;
    QStringList missing_;
};

void FieldShape::check(const Record& record, Source source, const FieldLimits& limits,
                       Collector* found) const {
    Pass pass(source, limits, found);
    pass.look(*this, record, QLatin1String());
    pass.tellMissing();
}

const FieldShape* statementShape(const QString& type) {
    static const std::map<QString, FieldShape> shapes = [] {
        std::map<QString, FieldShape> all;
        for (const StatementRow& row : statementRows()) {
            all.emplace(
                std::piecewise_construct, std::forward_as_tuple(row.word),
                std::forward_as_tuple(std::initializer_list<const FieldRows*>{&commonFields(), &row.fields},
                                      QString()));
        }
        return all;
    }();
    const auto shape = shapes.find(type);
    return shape == shapes.end() ? nullptr : &shape->second;
}

}  // namespace prog
