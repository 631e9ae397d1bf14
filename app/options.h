#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace app {

/// What the command line asks for. File names are absolute; what was not given is empty.
struct Options {
    QString language;                  ///< "cn", "en" or "ru"
    QString settings;                  ///< working directory of the package
    QString project;                   ///< to be opened at start
    QString example;                   ///< whose copy to open instead
    std::optional<double> ratedWatts;  ///< of the laser source
    QString controller;                ///< a robot that is not simulated, by its name; empty: simulated
    QString device;                    ///< the same of inputs and outputs
    QString vcd;                       ///< where the cell's signals are written at the end
    int flightMb = 64;                 ///< size of the flight recorder's file, MiB; 0: none
    bool help = false;
    bool version = false;
};

/// Reads the arguments (without the program's name). Nothing, with one line in `error`, when they make
/// no sense. File names are taken relative to the current directory.
std::optional<Options> parseOptions(const QStringList& arguments, QString* error);

/// The line that --version prints.
QString versionText();
/// The text that --help prints.
QString usage();

}  // namespace app
