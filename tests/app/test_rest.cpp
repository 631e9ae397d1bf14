#include "app/help/chapters.h"
#include "app/help/handbookview.h"
#include "app/help/helppage.h"
#include "app/menu/menutools.h"
#include "app/preferences.h"
#include "panelfixture.h"

#include <QHash>
#include <QTextBlock>

#include <algorithm>

/// A page that is shown is laid out a few times, by what it learns of its size, and then rests. A layout that
/// asks for another one each time would hang the panel.
class AppRest : public test::PanelTest {
    Q_OBJECT

    /// Counts how often each widget is laid out, and stops what does not end.
    class Layouts : public QObject {
    public:
        Layouts() { qApp->installEventFilter(this); }
        bool eventFilter(QObject* watched, QEvent* event) override {
            constexpr int most = 8;
            if (event->type() != QEvent::LayoutRequest) {
                return false;
            }
            const int times = ++times_[watched];
            if (times > most) {
                restless_ = watched->objectName() + " (" + watched->metaObject()->className() + ")";
            }
            return times > most;
        }
        bool areNone() const { return times_.isEmpty(); }
        QString restless() const { return restless_; }

    private:
        QHash<QObject*, int> times_;
        QString restless_;
    };

    /// Does something, and tells what does not come to rest after it; empty where all does.
    static QString restlessAfter(const Step& step) {
        const Layouts all;
        step();
        pass(0);
        const Layouts later;
        pass(0);
        return !all.restless().isEmpty() ? all.restless() : later.areNone() ? QString() : "something";
    }

    /// How many pictures the handbook has, but for those that the panel does not have.
    static int pictures(app::HandbookView& view) {
        int count = 0;
        for (QTextBlock block = view.document()->begin(); block.isValid(); block = block.next()) {
            for (const QTextLayout::FormatRange& range : block.textFormats()) {
                const QUrl name(range.format.toImageFormat().name());
                count += !view.loadResource(QTextDocument::ImageResource, name).isNull();
            }
        }
        return count;
    }
    void startAnew() {
        panel_.reset();
        panel_ = std::make_unique<app::Panel>();
        QString error;
        QVERIFY2(panel_->open(LUMO_LIBRARY, &error), qPrintable(error));
        window()->show();
        panel_->complete();
        pass(100);
    }

private slots:
    void pages_restWhenShown() {
        openSample();
        const QVector<QSize> sizes = {{1024, 768}, {1280, 800}, {1920, 1080}, {2560, 1440}};
        const QStringList pages = {"btnPort",          "btnParamCfg", "btnMonitor",
                                   "btnDeviceControl", "btnBind",     "btnProject"};
        for (const QSize& size : sizes) {
            for (const QString dock : {"", "path", "jog"}) {
                const QString where = QString("%1x%2 %3: ").arg(size.width()).arg(size.height()).arg(dock);
                const QString framed = restlessAfter([&] {
                    window()->resize(size);
                    docks()->closeAll();
                    if (!dock.isEmpty()) {
                        docks()->open(dock);
                    }
                });
                QVERIFY2(framed.isEmpty(), qPrintable(where + framed));
                for (const QString& page : pages) {
                    const QString restless = restlessAfter([this, &page] { click(page); });
                    QVERIFY2(restless.isEmpty(), qPrintable(where + page + ": " + restless));
                }
            }
        }
    }

    /// The docks that stood open, and the list's full text.
    void nextStart_looksAsTheLastOne() {
        window()->resize(1280, 800);
        docks()->closeAll();
        docks()->open("path");
        click("btnFullRows");
        startAnew();
        QVERIFY(app::Preferences::docks() == QStringList("path") && app::Preferences::fullRows());
        QVERIFY(docks()->isOpen("path") && find("btnFullRows")->isChecked());
        const QList<QWidget*> tables = window()->findChildren<QWidget*>("tableWidget");
        QVERIFY(std::any_of(tables.begin(), tables.end(),
                            [](const QWidget* table) { return table->property("fullRows").toBool(); }));
    }

    void handbook_isInTheLanguageOfTheStart_atTheChapterReadLast() {
        const QPair<const char*, const char*> languages[] = {
            {"ru", "handbook.ru.md"}, {"cn", "handbook.cn.md"}, {"en", "README.md"}};
        for (const auto& [language, file] : languages) {
            docks()->closeAll();
            docks()->open("help");
            panel_->menu()->help()->openChapter("ports");
            app::installLanguage(language);
            startAnew();
            QVERIFY(docks()->isOpen("help"));
            app::HandbookView* const view = panel_->menu()->help()->view();
            QCOMPARE(view->source().fileName(), file);
            QCOMPARE(view->shownChapter(), "ports");
            for (const QString& chapter : app::chapters()) {
                view->openChapter(chapter);
                QCOMPARE(view->shownChapter(), chapter);
            }
            QVERIFY(!view->toPlainText().contains("**"));  // bold that Markdown does not see
            const QString picture(QChar::ObjectReplacementCharacter);
            QCOMPARE(pictures(*view), view->toPlainText().count(picture));
        }
    }
};

LUMO_TEST(AppRest)
#include "test_rest.moc"
