#include "tools/pictures/scene.h"
#include "tools/pictures/tour.h"

#include <iterator>

namespace pictures {

namespace {

/// Opens the page of a straight weld.
void editSeam(Scene& s) {
    s.openProject(sampleFile);
    s.selectRow(table, MoveL);
    press(s, "btnEdit");
}

/// The keyboard at a remark, with the letters of a language.
void keyboard(Scene& s, const QString& mark) {
    editSeam(s);
    s.tap(QStringLiteral("textEditNote"));
    for (int language = 0; language < 3 && s.textOf(QStringLiteral("key_language")) != mark; ++language) {
        press(s, "key_language");
    }
}

const Stop touchRows[] = {
    {"touch_numberpad",
     [](Scene& s) {
         editSeam(s);
         s.tap(QStringLiteral("lineEditSpeed"));
         for (const char* key : {"pad_2", "pad_5", "pad_0"}) {
             press(s, key);
         }
         s.shoot();
         press(s, "btnPadCancel");
     }},
    {"touch_numberpad_dialog",
     [](Scene& s) {
         s.openProject(sampleFile);
         press(s, "btnDelay");
         s.tap(QStringLiteral("lineEdit"));
         s.shoot();
     }},
    {"touch_keyboard_en",
     [](Scene& s) {
         keyboard(s, QStringLiteral("EN"));
         s.shoot();
         press(s, "key_hide");
     }},
    {"touch_keyboard_ru",
     [](Scene& s) {
         keyboard(s, QStringLiteral("РУ"));
         press(s, "key_shift");
         s.shoot();
         press(s, "key_hide");
     }},
    {"touch_keyboard_cn",
     [](Scene& s) {
         keyboard(s, QStringLiteral("中"));
         for (const char* key :
              {"key_1_5", "key_1_0", "key_2_5", "key_1_3", "key_0_2", "key_2_5", "key_1_4"}) {
             press(s, key);
         }
         s.shoot();
         press(s, "key_hide");
     }},
    {"touch_keyboard_digits",
     [](Scene& s) {
         keyboard(s, QStringLiteral("EN"));
         press(s, "key_digits");
         s.shoot();
         press(s, "key_hide");
     }},
    {"touch_keyboard_dialog",
     [](Scene& s) {
         s.openProject(sampleFile);
         press(s, "btnOpen");
         s.tap(QStringLiteral("fileNameEdit"));
         s.shoot();
     }},
};

}  // namespace

std::vector<Stop> touchStops() {
    return {std::begin(touchRows), std::end(touchRows)};
}

}  // namespace pictures
