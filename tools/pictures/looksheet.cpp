#include "tools/pictures/looksheet.h"

#include "kord/thememanager.h"
#include "look/icon.h"
#include "look/seam.h"
#include "look/sheet.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QDir>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QWidget>

#include <functional>

namespace pictures {

namespace {

constexpr int sheetWidth = 1280;
constexpr int sheetHeight = 912;
constexpr int margin = 32;

class LookSheet : public QWidget {
public:
    LookSheet() {
        resize(sheetWidth, sheetHeight);
        setStyleSheet(look::filled(kord::ThemeManager::genStyleSheet(QStringLiteral(":/UI/style.json")) +
                                   QStringLiteral("LookSheet { background: @white; }")));
        addControls();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(look::white));
        paintColours(&painter);
        paintType(&painter);
        paintSeams(&painter);
        paintIcons(&painter);
    }

private:
    static constexpr int controlsTop = 336;
    static constexpr int seamTop = 424;
    static constexpr int typeTop = 424;
    static constexpr int iconsTop = 632;

    void addControls() {
        struct State {
            const char* words;
            QRgb sign;
            std::function<void(QPushButton*)> enter;
        };
        const State states[] = {
            {"Copy", look::ink2, [](QPushButton*) {}},
            {"Disabled", look::ink2, [](QPushButton* button) { button->setEnabled(false); }},
            {"Checked", look::ink2,
             [](QPushButton* button) {
                 button->setCheckable(true);
                 button->setChecked(true);
             }},
            {"Primary", look::white, [](QPushButton* button) { button->setProperty("primary", "true"); }},
            {"Refused", look::blue, [](QPushButton* button) { button->setProperty("primary", "refused"); }},
            {"Warned", look::amberInk, [](QPushButton* button) { button->setProperty("warned", true); }}};
        int left = margin;
        for (const State& state : states) {
            auto* button = new QPushButton(QLatin1String(state.words), this);
            button->setIcon(look::icon(QStringLiteral("copy"), state.sign, look::white));
            state.enter(button);
            button->setGeometry(left, controlsTop, 136, 48);
            left += 144;
        }
        for (const char* property : {"", "invalid", "warned"}) {
            auto* field = new QLineEdit(QStringLiteral("30"), this);
            field->setAlignment(Qt::AlignRight);
            field->setProperty(property, *property != 0);
            field->setGeometry(left, controlsTop, 104, 48);
            left += 112;
        }
    }

    static void title(QPainter* painter, int x, int y, const char* words) {
        painter->setFont(look::font(look::Size::Title, look::Weight::Strong));
        painter->setPen(QColor(look::ink));
        painter->drawText(x, y, QLatin1String(words));
    }

    static void paintColours(QPainter* painter) {
        title(painter, margin, 40, "Colours");
        constexpr int columns = 11;
        constexpr QSize cell(112, 84);
        int number = 0;
        for (const look::NamedColour& colour : look::colours) {
            const QPoint place(margin + number % columns * cell.width(),
                               56 + number / columns * cell.height());
            painter->setPen(QColor(look::line));
            painter->setBrush(QColor(colour.rgb));
            painter->drawRoundedRect(QRect(place, QSize(100, 36)), 4, 4);
            painter->setFont(look::font(look::Size::Caption));
            painter->setPen(QColor(look::ink2));
            painter->drawText(place + QPoint(0, 52), QLatin1String(colour.name));
            painter->drawText(place + QPoint(0, 68), QColor(colour.rgb).name().toUpper());
            ++number;
        }
        title(painter, margin, controlsTop - 16, "Controls");
    }

    static void paintType(QPainter* painter) {
        title(painter, margin, typeTop, "Type");
        const struct {
            look::Size size;
            look::Weight weight;
            const char* words;
        } rows[] = {{look::Size::Figure, look::Weight::Strong, "95.2 mm  28 figures that matter"},
                    {look::Size::Title, look::Weight::State, "LASER ON 激光出光 ЛАЗЕР ВКЛЮЧЁН"},
                    {look::Size::Text, look::Weight::Plain, "16 text and values  480.0  −150.0  54.0"},
                    {look::Size::Caption, look::Weight::Plain, "14 captions, units, remarks  Дуга 圆弧 Arc"}};
        int baseline = typeTop + 44;
        for (const auto& row : rows) {
            painter->setFont(look::font(row.size, row.weight));
            painter->drawText(margin, baseline, QString::fromUtf8(row.words));
            baseline += 36;
        }
    }

    static void paintSeams(QPainter* painter) {
        constexpr int left = sheetWidth / 2;
        title(painter, left, seamTop, "The seam");
        const struct {
            double share;
            bool laser;
            const char* words;
        } rows[] = {{0, false, "to weld"},
                    {0.45, true, "the laser is on"},
                    {0.45, false, "stopped here"},
                    {1, false, "welded"}};
        int top = seamTop + 20;
        for (const auto& row : rows) {
            look::paintSeamBar(painter, QRectF(left, top, 280, 28), row.share, row.laser);
            painter->setFont(look::font(look::Size::Text));
            painter->setPen(QColor(look::ink2));
            painter->drawText(left + 296, top + 20, QLatin1String(row.words));
            top += 36;
        }
    }

    static void paintIcons(QPainter* painter) {
        title(painter, margin, iconsTop, "Icons");
        constexpr int columns = 11;
        constexpr QSize cell(112, 32);
        int number = 0;
        const QStringList names = QDir(QStringLiteral(":/look")).entryList();
        painter->setFont(look::font(look::Size::Caption));
        painter->setPen(QColor(look::ink2));
        for (const QString& file : names) {
            const QString name = file.section(QLatin1Char('.'), 0, 0);
            const QPoint place(margin + number % columns * cell.width(),
                               iconsTop + 16 + number / columns * cell.height());
            painter->drawPixmap(place, look::picture(name, 24));
            const QRect room(place + QPoint(28, 0), QSize(cell.width() - 30, 24));
            painter->drawText(room, Qt::AlignVCenter | Qt::AlignLeft,
                              painter->fontMetrics().elidedText(name, Qt::ElideRight, room.width()));
            ++number;
        }
    }
};

}  // namespace

bool writeLookSheet(const QString& fileName) {
    LookSheet sheet;
    return sheet.grab().save(fileName);
}

}  // namespace pictures
