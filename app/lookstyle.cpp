#include "app/lookstyle.h"

#include "look/icon.h"
#include "look/scale.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace app {

namespace {

struct Named {
    QStyle::StandardPixmap icon;
    const char* name;
    QRgb colour = look::ink2;
};

constexpr Named icons[] = {
    {QStyle::SP_MessageBoxInformation, "info", look::blue},
    {QStyle::SP_MessageBoxQuestion, "info", look::blue},
    {QStyle::SP_MessageBoxWarning, "warn", look::amberInk},
    {QStyle::SP_MessageBoxCritical, "octagon", look::red},
    {QStyle::SP_DirIcon, "open"},
    {QStyle::SP_DirOpenIcon, "open"},
    {QStyle::SP_DirClosedIcon, "open"},
    {QStyle::SP_DirLinkIcon, "open"},
    {QStyle::SP_DirHomeIcon, "open"},
    {QStyle::SP_FileIcon, "document"},
    {QStyle::SP_FileLinkIcon, "document"},
    {QStyle::SP_FileDialogNewFolder, "new"},
    {QStyle::SP_FileDialogToParent, "up"},
    {QStyle::SP_FileDialogBack, "back"},
    {QStyle::SP_FileDialogDetailedView, "table"},
    {QStyle::SP_FileDialogListView, "menu"},
    {QStyle::SP_FileDialogContentsView, "search"},
    {QStyle::SP_FileDialogInfoView, "info"},
    {QStyle::SP_ArrowBack, "chevron_left"},
    {QStyle::SP_ArrowLeft, "chevron_left"},
    {QStyle::SP_ArrowForward, "chevron_right"},
    {QStyle::SP_ArrowRight, "chevron_right"},
    {QStyle::SP_ArrowUp, "up"},
    {QStyle::SP_ArrowDown, "down"},
    {QStyle::SP_ComputerIcon, "monitor"},
    {QStyle::SP_DesktopIcon, "monitor"},
    {QStyle::SP_DriveHDIcon, "device"},
    {QStyle::SP_DriveNetIcon, "device"},
    {QStyle::SP_TrashIcon, "delete"},
    {QStyle::SP_LineEditClearButton, "close"},
    {QStyle::SP_DialogOkButton, "check"},
    {QStyle::SP_DialogYesButton, "check"},
    {QStyle::SP_DialogApplyButton, "check"},
    {QStyle::SP_DialogCancelButton, "close"},
    {QStyle::SP_DialogNoButton, "close"},
    {QStyle::SP_DialogCloseButton, "close"},
    {QStyle::SP_DialogSaveButton, "save"},
    {QStyle::SP_DialogOpenButton, "open"},
    {QStyle::SP_DialogDiscardButton, "delete"},
    {QStyle::SP_DialogResetButton, "reset"},
    {QStyle::SP_BrowserReload, "reset"},
};

const Named* find(QStyle::StandardPixmap icon) {
    for (const Named& row : icons) {
        if (row.icon == icon) {
            return &row;
        }
    }
    return nullptr;
}

}  // namespace

LookStyle::LookStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

/// Dialog buttons have words only.
int LookStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* data) const {
    return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0
                                                       : QProxyStyle::styleHint(hint, option, widget, data);
}

int LookStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
        case PM_MessageBoxIconSize:
            return look::px(32);
        case PM_ListViewIconSize:
        case PM_ButtonIconSize:
        case PM_SmallIconSize:
        case PM_TabBarIconSize:
        case PM_ToolBarIconSize:
            return look::px(20);
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QIcon LookStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    const Named* const named = find(icon);
    return named ? look::icon(QLatin1String(named->name), named->colour)
                 : QProxyStyle::standardIcon(icon, option, widget);
}

QPixmap LookStyle::standardPixmap(StandardPixmap icon, const QStyleOption* option,
                                  const QWidget* widget) const {
    const Named* const named = find(icon);
    return named ? look::picture(QLatin1String(named->name), look::px(20), named->colour)
                 : QProxyStyle::standardPixmap(icon, option, widget);
}

void LookStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    if (element != PE_FrameFocusRect) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    const int line = look::px(2);
    painter->save();
    painter->setPen(QPen(QColor(look::blue), line));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(line / 2, line / 2, -line / 2 - 1, -line / 2 - 1));
    painter->restore();
}

QPalette LookStyle::standardPalette() const {
    QPalette palette = QProxyStyle::standardPalette();
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, QColor(look::ink));
        palette.setColor(QPalette::Disabled, role, QColor(look::off));
    }
    palette.setColor(QPalette::Window, QColor(look::white));
    palette.setColor(QPalette::Base, QColor(look::white));
    palette.setColor(QPalette::AlternateBase, QColor(look::panel));
    palette.setColor(QPalette::Button, QColor(look::white));
    palette.setColor(QPalette::ToolTipBase, QColor(look::white));
    palette.setColor(QPalette::Highlight, QColor(look::blue));
    palette.setColor(QPalette::HighlightedText, QColor(look::white));
    palette.setColor(QPalette::PlaceholderText, QColor(look::ink3));
    return palette;
}

}  // namespace app
