#include "editor/startline.h"
#include "language.h"

#include <QTest>

Q_DECLARE_METATYPE(lumo::StartOutlook)

using lumo::StartOutlook;
using Weld = StartOutlook::Weld;

/// The words in which the line above the table says where Start would go on.
class TestStartLine : public QObject {
    Q_OBJECT

    static StartOutlook outlook(int lines, int resume, int selected, Weld weld = Weld::None) {
        StartOutlook result;
        result.projectOpen = true;
        result.lineCount = lines;
        result.resumeLine = resume;
        result.selectedLine = selected;
        result.weld = weld;
        return result;
    }
    static void row(const char* what, const StartOutlook& outlook, const char* cn, const char* en,
                    const char* ru) {
        const std::pair<const char*, const char*> texts[] = {{"cn", cn}, {"en", en}, {"ru", ru}};
        for (const auto& [language, text] : texts) {
            QTest::addRow("%s, %s", what, language) << outlook << QString(language) << QString(text);
        }
    }

private slots:
    void words_data() {
        QTest::addColumn<StartOutlook>("outlook");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("text");
        row("fresh", outlook(9, 0, -1), "开始：从第 1 行执行", "Start begins at line 1",
            "Пуск начнёт со строки 1");
        row("stopped outside a weld, its line selected", outlook(9, 6, 6), "开始：从第 7 行继续",
            "Start continues at line 7", "Пуск продолжит со строки 7");
        row("stopped in a weld", outlook(9, 6, -1, Weld::Reopens), "开始：从第 7 行继续，激光将重新打开",
            "Start continues at line 7, the laser reopens",
            "Пуск продолжит со строки 7, лазер включится снова");
        row("stopped in a weld that is not resumed", outlook(9, 6, -1, Weld::StaysOff),
            "开始：从第 7 行继续，激光不会打开", "Start continues at line 7, the laser stays off",
            "Пуск продолжит со строки 7, лазер останется выключен");
        row("stopped in a weld in the first line", outlook(9, 0, 0, Weld::Reopens),
            "开始：从第 1 行继续，激光将重新打开", "Start continues at line 1, the laser reopens",
            "Пуск продолжит со строки 1, лазер включится снова");
        row("another line selected", outlook(9, 6, 2, Weld::Reopens), "开始：确认后从选中的第 3 行执行",
            "Start asks, then begins at the selected line 3", "Пуск спросит и начнёт с выбранной строки 3");
        row("its line was deleted", outlook(4, 6, -1), "第 7 行已不存在：请复位或选择一行",
            "Line 7 is gone: reset or select a line",
            "Строки 7 больше нет: сделайте сброс или выберите строку");
        row("no statement", outlook(0, 0, -1), "程序为空", "The program is empty", "Программа пуста");
        row("no project", StartOutlook(), "请先新建或打开工程", "Create or open a project first",
            "Сначала создайте или откройте проект");
        StartOutlook running = outlook(9, 3, 3);
        running.run = StartOutlook::Run::ByHand;
        running.runningLine = 3;
        row("running", running, "正在执行第 4 行", "Running line 4", "Выполняется строка 4");
        running.run = StartOutlook::Run::OfStation;
        row("a station runs", running, "工位程序正在运行", "A station's program is running",
            "Выполняется программа поста");
        running.station = "S 1";
        running.project = "lap";
        row("a known station runs", running, "工位程序正在运行：S 1，工程 lap",
            "A station's program is running: S 1, project lap",
            "Выполняется программа поста: S 1, проект lap");
    }

    void words() {
        QFETCH(StartOutlook, outlook);
        QFETCH(QString, language);
        const Language shown(language);
        QTEST(lumo::startText(outlook), "text");
    }
};

QTEST_GUILESS_MAIN(TestStartLine)
#include "test_startline.moc"
