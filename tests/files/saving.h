#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <vector>

namespace files {

/// One way in which the product writes a file of the working folder.
struct Saving {
    QString name;
    QString file;
    std::function<void(int document)> fill;   ///< puts a document into memory: each has another length
    std::function<bool()> save;               ///< writes it, and says whether it did
    std::function<void()> load = {};          ///< reads it; empty where there is no reading of its own
    std::function<QByteArray()> memory = {};  ///< what is in memory now
    QByteArray typed = {};  ///< what somebody typed into the file before, which must be kept; empty for none
    QString target = {};    ///< where the file is a link to another one
};

/// All of them, with the package's tree filled as at a start.
std::vector<Saving> savings();

}  // namespace files
