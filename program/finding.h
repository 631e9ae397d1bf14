#pragma once

#include <QLatin1String>
#include <QString>
#include <QVariant>

#include <vector>

namespace prog {

/// What a check looks at; its word stands before each finding.
enum class Rule {
    Type,
    Field,
    Pairing,
    Point,
    Speed,
    WeldSpeed,
    Zone,
    Arc,
    Circle,
    Reach,
    Set,
    Range,
    WeldEmpty,
    Standing,
    Port,
    Output,
    Input,
    Station,
    Drift,
};

/// "weld-speed".
[[nodiscard]] QLatin1String ruleWord(Rule rule);

enum class Severity {
    Error,    ///< a run is refused: what cannot be read, or would move or light wrongly
    Warning,  ///< a run goes on with what it reads instead
};

/// The document in which a finding's place is.
enum class Document { Project, Parameters, Ports, Stations, Scenario };

/// What exactly is wrong. Its row says the rule, the words and the remedy.
enum class Fault {
    TypeMissing,
    TypeIsNoText,
    TypeIsEmpty,
    TypeUnknown,   ///< the type
    FieldMissing,  ///< the names of the fields, joined by ", "
    FieldKind,     ///< the name, the kind it should have (FieldKind), what is found
    Negative,      ///< the name, the number
    NoSuchSet,     ///< the position that is named, the number of sets
};

/// Something that is wrong, as a value. Words are put to it where a person reads them.
struct Finding {
    Fault fault{};
    Severity severity = Severity::Warning;
    Document document = Document::Project;
    int element = -1;  ///< position in the document's list; -1: the document as a whole
    int line = -1;     ///< of the statement, from 0; -1: none
    QString path;      ///< dotted, of the field in the element
    QVariantList arguments;

    [[nodiscard]] Rule rule() const;
    [[nodiscard]] bool isError() const { return severity == Severity::Error; }
};

using Findings = std::vector<Finding>;

/// What is wrong, in English, without the place and without a full stop: `"speed" is negative`.
[[nodiscard]] QString englishText(const Finding& finding);
/// The sentence with %1, %2 … for the arguments as texts, English; the source of its translations (context
/// "Finding").
[[nodiscard]] const char* textPattern(const Finding& finding);
/// What to do about it, in the same way: "enter a speed above 0".
[[nodiscard]] const char* remedyPattern(const Finding& finding);
/// The arguments as texts, in the order of %1, %2 …
[[nodiscard]] QStringList argumentTexts(const Finding& finding);

}  // namespace prog
