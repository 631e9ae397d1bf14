#pragma once

#include "runner/stress/dice.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace run::stress {

/// An input and the level that a program waits for.
struct AwaitedInput {
    QString name;
    bool level = true;
};

/// What a schedule may act upon.
struct Ground {
    int lines = 0;
    int sets = 0;
    std::vector<AwaitedInput> inputs;
    QJsonArray points;        ///< of the program's moves: where somebody jogs to
    QJsonObject replace;      ///< the entry that replaces the program, without its time
    qint64 runMs = 0;         ///< duration of an undisturbed run
    bool hasPages = true;     ///< whether pages are operated, too
    bool hasStation = false;  ///< whether a station's program stands in the tree

    /// The ground of a project whose file is named `file`.
    static Ground of(const QJsonArray& project, const QString& file, int sets, const QStringList& inputNames);
};

/// Draws a scenario: pauses, losses of power, jogs, edits, changes of modes and switches, faults, misbehaving
/// controllers. A third of the entries stand at a time, the others in a wait, inside an event, or behind the
/// entry before them.
class Course {
public:
    Course(const Ground& ground, Dice* dice);

    QJsonArray draw();

private:
    struct Deed;
    static const std::vector<Deed>& deeds();

    void addChain(const QJsonObject& when, bool isInside);
    void addFollowers(const QString& deed, bool isOn);
    void add(const QString& deed, const QJsonObject& when, QJsonObject keys);
    void addDevice(const QJsonObject& when, bool isOn);
    void addEnd();
    QJsonObject keysOf(const QString& deed, bool isOn);
    QJsonObject editKeys(const QString& deed, bool isOn);
    QString quirk();
    QJsonObject setParameter();
    QJsonObject place();
    int line();
    QJsonObject moment(bool* isInside);
    QJsonObject inWait();
    QJsonObject insideEvent();
    QJsonObject after(std::initializer_list<int> limits);

    const Ground& ground_;
    Dice* dice_;
    QJsonArray entries_;
};

/// Entries that give a run the inputs that it waits for.
QJsonArray supplies(const std::vector<AwaitedInput>& inputs);

}  // namespace run::stress
