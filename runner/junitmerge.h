#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace run {

/// Makes one JUnit file of those of many runs.
class JunitMerge {
public:
    /// Adds the test suites of a run's file under the name of its project. A run that left no readable file
    /// is a suite with one test case in error; `errors`: what it printed.
    void add(const QString& project, const QByteArray& junit, const QString& errors);
    /// The file: `testsuites` with the sums of its suites.
    QByteArray text() const;

private:
    struct Suite {
        QByteArray xml;  ///< the element
        int tests = 0, failures = 0, errors = 0, skipped = 0;
        double seconds = 0.0;
    };
    static bool readSuites(const QString& project, const QByteArray& junit, std::vector<Suite>* suites);
    static Suite suiteInError(const QString& project, const QString& errors);

    std::vector<Suite> suites_;
};

}  // namespace run
