#include "look/contrast.h"
#include "look/dialog.h"
#include "look/icon.h"
#include "look/scale.h"
#include "look/sheet.h"
#include "look/tokens.h"
#include "look/type.h"
#include "support/suite.h"
#include "support/text.h"

#include <QDirIterator>
#include <QMessageBox>
#include <QPushButton>

using namespace look;

/// Colours, sizes and style sheets of package and panel.
class TestLook : public QObject {
    Q_OBJECT

    static QStringList filesBelow(const char* folder, const char* pattern) {
        QStringList files;
        QDirIterator found(SOURCE_FOLDER + QString(folder), {pattern}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (found.hasNext()) {
            files << found.next();
        }
        return files;
    }

private slots:
    void init() { setFactor(1); }
    void cleanup() { setFactor(1); }

    /// Text needs 4.5 : 1 on each ground where it is used; signs, edges of fields and disabled text need 3
    /// : 1.
    void colours_canBeToldFromTheirGrounds() {
        const struct {
            double least;
            std::initializer_list<QRgb> colours, grounds;
        } rows[] = {{4.5, {ink, ink2, ink3, blue, red, green}, {white, panel, frame, sel}},
                    {3.0, {off}, {white, panel, frame, sel}},
                    {3.0, {edge, steel, amberLine}, {white, panel, frame}},
                    {4.5, {white, fog, sky}, {navy, navy2}},
                    {4.5, {white}, {blue, blueDn, steel, red, redDn, green}},
                    {4.5, {ink}, {amber, estop, pressed}},
                    {4.5, {amberInk}, {amberTint, white, panel, frame}},
                    {4.5, {redDn}, {redTint, white}},
                    {3.0, {bead}, {steel}}};
        for (const auto& row : rows) {
            for (const QRgb colour : row.colours) {
                for (const QRgb ground : row.grounds) {
                    QVERIFY2(contrast(colour, ground) >= row.least,
                             qPrintable(QColor(colour).name() + " on " + QColor(ground).name()));
                }
            }
        }
        QCOMPARE(contrast(0xff000000, 0xffffffff), 21.0);
    }

    /// Enter answers with the button that was chosen as the safe one.
    void dressedQuestion_keepsItsDefault() {
        QWidget page;
        page.show();
        QMessageBox question(QMessageBox::Question, "Delete", "Delete?", QMessageBox::Yes | QMessageBox::No,
                             &page);
        question.setDefaultButton(QMessageBox::No);
        look::dress(&question);
        question.open();
        QCoreApplication::processEvents();
        const auto* const no = qobject_cast<QPushButton*>(question.button(QMessageBox::No));
        QVERIFY(no->isDefault() && question.focusWidget() == no);
    }

    /// A placeholder that is misspelt would make Qt drop the sheet.
    void everyPlaceholderOfTheSheets_isKnown() {
        const QStringList files = filesBelow("app", "*.qss") + filesBelow("lumo/resources", "style*.json") +
                                  filesBelow("lumo/resources/style", "*.json");
        QVERIFY(files.size() > 10);
        for (const QString& file : files) {
            const QString sheet = filled(QString::fromUtf8(test::contentOf(file)));
            const int at = sheet.indexOf('@');
            QVERIFY2(at < 0, qPrintable(file + ": " + sheet.mid(at, 20)));
        }
    }

    void everyIconThatIsNamed_isThere() {
        const QRegularExpression named(
            "look::(?:icon|picture)\\((?:QStringLiteral\\()?\"(\\w+)\"|:/look/(\\w+)\\.png");
        int count = 0;
        for (const char* folder : {"app", "lumo"}) {
            const QStringList files = filesBelow(folder, "*.cpp") + filesBelow(folder, "*.json") +
                                      filesBelow(folder, "*.qss") + filesBelow(folder, "*.ui");
            for (const QString& file : files) {
                auto uses = named.globalMatch(QString::fromUtf8(test::contentOf(file)));
                while (uses.hasNext()) {
                    const auto use = uses.next();
                    const QString name = use.captured(1) + use.captured(2);
                    QVERIFY2(!picture(name, 24).isNull(), qPrintable(file + ": " + name));
                    ++count;
                }
            }
        }
        QVERIFY(count > 0);
    }

    void lengthsAndTypeGrowWithTheWindow() {
        const struct {
            QSize window;
            double factor;
            const char* lengths;
        } rows[] = {{{1024, 768}, 1, "48px 14px 16px 20px 28px"},
                    {{1599, 1200}, 1, "48px 14px 16px 20px 28px"},
                    {{1920, 1080}, 1.125, "54px 16px 18px 22px 32px"},
                    {{2560, 1440}, 1.5, "72px 20px 24px 30px 42px"}};
        for (const auto& row : rows) {
            QCOMPARE(factorFor(row.window), row.factor);
            setFactor(factorFor(row.window));
            QCOMPARE(filled("@48 @caption @text @title @figure"), QString(row.lengths));
        }
        QWidget window;
        window.resize(1920, 1080);
        window.setProperty(scaleProperty, 1.5);  // chosen by the operator
        QCOMPARE(factorFor(window), 1.5);
    }

    void figures_haveARealMinusAndNoNegativeZero() {
        QCOMPARE(figure(-23.94, 1), QString::fromUtf8("\u221223.9"));
        QCOMPARE(figure(-0.04, 1), QString("0.0"));
        QCOMPARE(figure(100, 0), QString("100"));
    }
};

LUMO_TEST(TestLook)
#include "test_look.moc"
