#include "program/settingsrows.h"

#include "program/parameters.h"
#include "program/words.h"

#include <algorithm>
#include <iterator>

namespace prog {

namespace {

using Kind = FieldKind;

constexpr const char* edgeWords[] = {"上升沿",       "下降沿",    "Rising Edge",
                                     "Falling Edge", "По фронту", "По спаду"};

constexpr EntryRange holdTimes{0, EntryRange::unlimited, "ms"};

constexpr FieldRow ports[] = {
    {field::type, Kind::Text, Presence::Required},
    {field::name, Kind::Text, Presence::Optional},
    {field::enable, Kind::Flag, Presence::Optional},
    {field::tag, Kind::Text, Presence::Shown},
};

constexpr FieldRow stations[] = {
    {field::stationName, Kind::Text, Presence::Shown},
    {field::filePath, Kind::Text, Presence::Usual},
    {field::type, Kind::Text, Presence::Usual},
    {"type2"_l1, Kind::Text, Presence::Optional},
    {field::time, Kind::Count, Presence::Optional, nullptr, nullptr, Source::Any, &holdTimes},
    {field::status, Kind::Text, Presence::Shown},
    {"DI"_l1, Kind::Text, Presence::Optional},
    {"DI_type"_l1, Kind::Text, Presence::Usual},
    {"DI_reg"_l1, Kind::Map, Presence::Shown},
    {"DI_reg.name"_l1, Kind::Text, Presence::Shown},
    {"DI_reg.type"_l1, Kind::Text, Presence::Shown},
    {"DI_reg.bias"_l1, Kind::Count, Presence::Shown},
    {"DI2"_l1, Kind::Text, Presence::Optional},
    {"DI2_type"_l1, Kind::Text, Presence::Optional},
    {"DI2_reg"_l1, Kind::Map, Presence::Shown},
    {"DI2_reg.name"_l1, Kind::Text, Presence::Shown},
    {"DI2_reg.type"_l1, Kind::Text, Presence::Shown},
    {"DI2_reg.bias"_l1, Kind::Count, Presence::Shown},
    {"DO"_l1, Kind::Text, Presence::Optional},
    {"DO_type"_l1, Kind::Text, Presence::Optional},
    {"DO_reg"_l1, Kind::Map, Presence::Shown},
    {"DO_reg.name"_l1, Kind::Text, Presence::Shown},
    {"DO_reg.type"_l1, Kind::Text, Presence::Shown},
    {"DO_reg.bias"_l1, Kind::Count, Presence::Shown},
    {"DO2"_l1, Kind::Text, Presence::Optional},
    {"DO2_type"_l1, Kind::Text, Presence::Optional},
    {"DO2_reg"_l1, Kind::Map, Presence::Shown},
    {"DO2_reg.name"_l1, Kind::Text, Presence::Shown},
    {"DO2_reg.type"_l1, Kind::Text, Presence::Shown},
    {"DO2_reg.bias"_l1, Kind::Count, Presence::Shown},
};

FieldRows parameterRowsAsFields() {
    FieldRows rows{{field::name, Kind::Text, Presence::Required}};
    for (const ParameterRow& row : parameterRows()) {
        rows.push_back({row.name, Kind::Entry, Presence::Usual});
    }
    rows.push_back({field::note, Kind::Text, Presence::Shown});
    return rows;
}

}  // namespace

const FieldRows& parameterFields() {
    static const FieldRows rows = parameterRowsAsFields();
    return rows;
}

const FieldRows& portFields() {
    static const FieldRows rows(std::begin(ports), std::end(ports));
    return rows;
}

const FieldRows& stationFields() {
    static const FieldRows rows(std::begin(stations), std::end(stations));
    return rows;
}

EntryRange holdTimeRange() {
    return holdTimes;
}

bool isEdgeWord(const QString& word) {
    return std::any_of(std::begin(edgeWords), std::end(edgeWords),
                       [&word](const char* edge) { return word == QString::fromUtf8(edge); });
}

}  // namespace prog
