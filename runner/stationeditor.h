#pragma once

#include <QJsonObject>
#include <QString>

class QComboBox;
class QWidget;

namespace run {

/// The package's page on which one station is edited, as a hand fills it.
class StationEditor {
public:
    /// `page` must outlive it.
    explicit StationEditor(QWidget* page) : page_(page) {}

    /// Fills what belongs to the fields of a record, as the editor writes them. What cannot be typed or
    /// chosen is told in plain English; empty when all could.
    QString fill(const QJsonObject& fields) const;
    /// Presses OK; false when the page refuses.
    bool accept() const;
    void cancel() const;

private:
    QString fillName(const QString& name) const;
    QString fillTime(const QString& time) const;
    QString chooseProject(const QString& file) const;
    QString chooseEdge(const char* combo, const QString& word) const;
    QString chooseSignal(const QJsonObject& fields, const QString& field) const;
    QString choose(const QString& combo, const QString& text) const;
    template <class Widget>
    Widget* widget(const QString& name) const;

    QWidget* page_;
};

}  // namespace run
