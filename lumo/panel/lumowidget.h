#pragma once

#include "module/export.h"

#include <QWidget>

/// The package's page in the operator panel. The first one made in a process also fills the `lumo`
/// subtree and makes the executor, both of which outlive it.
class LumoWidget : public QWidget {
    Q_OBJECT
public:
    explicit LumoWidget(QWidget* parent = nullptr);
    ~LumoWidget() override;

    /// Path of the open project file; empty when there is none. Outlives the page.
    static QString filePath;

    /// Registers the `lumo` subtree, fills it from the defaults in the panel's language and from the
    /// settings files in the working directory, and makes the executor. The constructor calls it
    /// when there is no subtree yet.
    void load();
    /// Appends the stations 1 to 4, unbound, to `lumo.signalsConfig`.
    void addFourDefaultSignalsConfig();

private:
    void loadPorts();
    void loadList(const QString& fileName, const QString& path);
};

/// A message without a title; returns at once, the box stays until the operator closes it.
LUMO_EXPORT void showAlertDialog(const QString& text);
