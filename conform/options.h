#pragma once

#include <QString>
#include <QStringList>

namespace conform {

/// The command line of lumo-conform.
struct Options {
    QString backend;  ///< "simulator", or as bridge::loadController() takes it
    QString device;   ///< as bridge::loadSignalPort() takes it; empty: none
    QString loopOutput, loopInput;
    QString bits, number;  ///< registers to be written; empty: chosen
    QStringList only;      ///< ids of the checks to be made; empty: all
    QString quirk;         ///< of the simulator
    bool repair = true;    ///< the adapter keeps faults of the backend from the package
    int repeats = 20;
    QString junit;
    bool list = false, help = false, version = false;

    bool isSimulator() const;
};

/// Returns what is wrong with the arguments; empty when nothing is.
QString readOptions(const QStringList& arguments, Options* options);
QString usage();

}  // namespace conform
