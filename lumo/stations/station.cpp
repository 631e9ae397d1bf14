#include "stations/station.h"

#include "equipment/signalio.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTranslator>
#include <QVariant>

using namespace prog;

namespace lumo {

namespace {

/// Texts of the stations' page and of the page of one station.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(SignalsBindingParamWidget)
};

struct Fields {
    SignalFields signal;
    QLatin1String edge;  ///< of inputs
};

constexpr Fields stationFields[] = {
    {startInput, "type"_l1},
    {stopInput, "type2"_l1},
    {startOutput, QLatin1String()},
    {stopOutput, QLatin1String()},
};

const Fields& fieldsOf(StationSignal which) {
    return stationFields[static_cast<int>(which)];
}

const char* const edgeSources[] = {nullptr, QT_TRANSLATE_NOOP("SignalsBindingParamWidget", "上升沿"),
                                   QT_TRANSLATE_NOOP("SignalsBindingParamWidget", "下降沿")};

/// An edge's word in every language that the package has.
QStringList edgeWords(Edge edge) {
    const char* const source = edgeSources[static_cast<int>(edge)];
    QStringList words{QString::fromUtf8(source)};
    for (const char* language : {"en", "ru"}) {
        QTranslator catalogue;
        if (catalogue.load(QStringLiteral(":/lumo/language/lumo_%1.qm").arg(QLatin1String(language)))) {
            words << catalogue.translate("SignalsBindingParamWidget", source);
        }
    }
    words.removeAll(QString());
    return words;
}

}  // namespace

bool triggers(Edge edge, Level baseline, Level latest) {
    switch (edge) {
        case Edge::Rising:
            return !baseline.value_or(false) && latest.value_or(false);
        case Edge::Falling:
            return baseline.value_or(false) && latest == Level(false);
        case Edge::None:
            break;
    }
    return false;
}

bool isAtTriggerLevel(Edge edge, const Signal& input, bool level) {
    return edge != Edge::None && !input.name().isEmpty() && level == (edge == Edge::Rising);
}

Edge edgeFrom(const QString& word) {
    if (word.isEmpty()) {
        return Edge::None;  // without reading the catalogues, while the panel starts
    }
    static const QStringList rising = edgeWords(Edge::Rising);
    static const QStringList falling = edgeWords(Edge::Falling);
    if (rising.contains(word)) {
        return Edge::Rising;
    }
    return falling.contains(word) ? Edge::Falling : Edge::None;
}

QString edgeWord(Edge edge) {
    return edge == Edge::None ? QString() : Text::tr(edgeSources[static_cast<int>(edge)]);
}

// --- The record -----------------------------------------------------------------------------------

Signal readSignal(const ModuleObject* station, StationSignal which) {
    return Signal::from(station, fieldsOf(which).signal);
}

void storeSignal(QObject* sender, ModuleObject* station, StationSignal which, const Signal& signal) {
    signal.store(sender, station, fieldsOf(which).signal, Text::tr("寄存器"), !signal.isIo);
}

Edge readEdge(const ModuleObject* station, StationSignal input) {
    return edgeFrom(station->c(fieldsOf(input).edge)->getString());
}

void writeEdge(QObject* sender, ModuleObject* station, StationSignal input, Edge edge) {
    station->set(sender, fieldsOf(input).edge, edgeWord(edge));
}

// --- The controller -------------------------------------------------------------------------------

void switchOutput(QObject* sender, const Signal& output, bool on) {
    if (!output.name().isEmpty()) {
        writeSignal(sender, output, on);
    }
}

// --- What the operator reads ----------------------------------------------------------------------

QString kindText(StationSignal which, const Signal& signal) {
    const QString caption = isStart(which) ? Text::tr("启动: ") : Text::tr("停止: ");
    return caption + (signal.isIo ? QString(word::io) : Text::tr("寄存器"));
}

QString signalText(const Signal& signal) {
    return signal.registerName.isEmpty() || signal.bit < 0 ? signal.name() : signal.text();
}

QString edgeText(const ModuleObject* station, StationSignal input) {
    const Edge edge = readEdge(station, input);
    return edge == Edge::None ? station->c(fieldsOf(input).edge)->getString() : edgeWord(edge);
}

int samplePeriodMs(const QString& text) {
    constexpr int usualMs = 100;
    const int period = text.toInt();
    return period > 0 ? period : usualMs;
}

bool isReservedName(const QString& name) {
    static const QStringList reserved{
        QStringLiteral("工位一"),    QStringLiteral("工位二"),    QStringLiteral("工位三"),
        QStringLiteral("工位四"),    QStringLiteral("Station 1"), QStringLiteral("Station 2"),
        QStringLiteral("Station 3"), QStringLiteral("Station 4"),
    };
    return reserved.contains(name);
}

}  // namespace lumo
