#pragma once

#include <QObject>

namespace lumo {

/// A place of the panel that a message or a hint can lead to.
struct Way {
    enum class To { Nowhere, Line, Ports, Devices };

    To to = To::Nowhere;
    int line = -1;  ///< of the program on the project page, from 0; for To::Line

    [[nodiscard]] static Way toLine(int line) { return {line < 0 ? To::Nowhere : To::Line, line}; }
};

/// Passes on where the operator wants to be led. The page of pages follows.
class Guide : public QObject {
    Q_OBJECT
public:
    static Guide* instance();

    void lead(const Way& way) { emit asked(way); }
    /// Whether a page is there that follows.
    [[nodiscard]] bool canLead() const;
    /// The caption of a button that leads there: "Show Line", "Ports".
    [[nodiscard]] static QString caption(const Way& way);

signals:
    void asked(const lumo::Way& way);
};

}  // namespace lumo
