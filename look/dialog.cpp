#include "look/dialog.h"

#include "look/icon.h"
#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QGridLayout>
#include <QLabel>
#include <QLayout>
#include <QListView>
#include <QMessageBox>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>

namespace look {

namespace {

constexpr int padding = 24;
constexpr qreal edgePen = 2;
constexpr qreal corner = 8;

/// Dims what lies under a dialog.
class Veil final : public QWidget {
public:
    explicit Veil(QWidget* over) : QWidget(over) {
        setObjectName(QStringLiteral("veil"));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setGeometry(over->rect());
        over->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == parent() && event->type() == QEvent::Resize) {
            setGeometry(parentWidget()->rect());
        }
        return false;
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter(this).fillRect(rect(), QColor::fromRgba(veil));
    }
};

QWidget* veiledAbove(const QWidget* dialog) {
    QWidget* widget = dialog->parentWidget();
    while (widget && !widget->property(veiledProperty).toBool()) {
        widget = widget->parentWidget();
    }
    return widget;
}

/// Where an interval of this length lies in the middle of a room; it sticks out at the end if it is longer.
int middle(int room, int length) {
    return std::max(0, (room - length) / 2);
}

/// Paints the dialog that owns it, puts it into its place and dims what it blocks.
class Dress : public QObject {
public:
    explicit Dress(QDialog* dialog) : QObject(dialog), dialog_(dialog) {
        dialog->setWindowFlag(Qt::FramelessWindowHint);
        dialog->setAttribute(Qt::WA_TranslucentBackground);
        dialog->installEventFilter(this);
    }
    ~Dress() override { delete veil_; }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched != dialog_) {
            return false;
        }
        switch (event->type()) {
            case QEvent::Paint:
                paint();
                break;
            case QEvent::Show:
                appear();
                break;
            case QEvent::Hide:
                delete veil_;
                break;
            case QEvent::Resize:
                arrange();
                if (dialog_->isVisible()) {
                    place();
                }
                break;
            case QEvent::WindowTitleChange:
                arrange();
                break;
            case QEvent::StyleChange:  // a message puts its style's own sign into its place
                QMetaObject::invokeMethod(
                    this, [this] { arrange(); }, Qt::QueuedConnection);
                break;
            default:
                break;
        }
        return false;
    }

protected:
    [[nodiscard]] QDialog* dialog() const { return dialog_; }
    /// After the size, the title or the scale has changed.
    virtual void arrange() {}
    /// When the dialog is shown, before Qt looks for its default button.
    virtual void prepare() {}

private:
    void appear() {
        const QList<QLabel*> texts = dialog_->findChildren<QLabel*>();
        for (QLabel* const text : texts) {
            text->ensurePolished();  // bold type is wider
        }
        prepare();
        arrange();
        QEvent sizeNow(QEvent::LayoutRequest);  // a message gets its size only when it is shown
        QCoreApplication::sendEvent(dialog_, &sizeNow);
        place();
        QWidget* const under = veiledAbove(dialog_);
        if (under && dialog_->windowModality() != Qt::NonModal && !veil_) {
            veil_ = new Veil(under);
            veil_->show();
        }
    }

    void place() const {
        const QWidget* under = veiledAbove(dialog_);
        if (!under && dialog_->parentWidget()) {
            under = dialog_->parentWidget()->window();
        }
        if (under) {
            dialog_->move(under->mapToGlobal(QPoint(middle(under->width(), dialog_->width()),
                                                    middle(under->height(), dialog_->height()))));
        }
    }

    /// A grey edge that the dialog's own style sheet asks for is seen within the navy one.
    void paint() const {
        QPainter painter(dialog_);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(dialog_->rect(), Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(navy), edgePen));
        painter.setBrush(QColor(white));
        QRectF edge = QRectF(dialog_->rect()).adjusted(1, 1, -1, -1);
        painter.drawRoundedRect(edge, corner - 1, corner - 1);
        static const QString greyEdge = QStringLiteral("#CCCCCC");
        if (dialog_->styleSheet().contains(greyEdge)) {
            edge.adjust(edgePen, edgePen, -edgePen, -edgePen);
            painter.setPen(QPen(QColor(greyEdge), edgePen));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(edge, corner - 1 - edgePen, corner - 1 - edgePen);
        }
    }

    QDialog* const dialog_;
    QPointer<Veil> veil_;
};

/// With the window's title as a heading, above what Qt has laid out.
class TitledDress : public Dress {
public:
    explicit TitledDress(QDialog* dialog) : Dress(dialog), title_(new QLabel(dialog)) {
        title_->setObjectName(QStringLiteral("lblTitle"));
        title_->setTextFormat(Qt::PlainText);
        TitledDress::arrange();
    }

protected:
    void arrange() override {
        constexpr int above = 16;
        const QString title = dialog()->windowTitle();
        title_->setText(title);
        title_->setVisible(!title.isEmpty());
        title_->setFont(font(Size::Title, Weight::Strong));
        const QSize size = title_->sizeHint();
        title_->setGeometry(px(padding), px(above), dialog()->width() - 2 * px(padding), size.height());
        const QMargins own = dialog()->layout()->contentsMargins();
        const int top = title.isEmpty() ? px(padding) - own.top() : px(above) + size.height();
        const QMargins margins(px(padding) - own.left(), top, px(padding) - own.right(),
                               px(padding) - own.bottom());
        if (dialog()->contentsMargins() != margins) {
            dialog()->setContentsMargins(margins);
        }
    }
    [[nodiscard]] int titleWidth() const { return title_->isHidden() ? 0 : title_->sizeHint().width(); }

private:
    QLabel* const title_;
};

struct Sign {
    const char* icon;
    QRgb colour;
};

Sign signOf(QMessageBox::Icon icon) {
    switch (icon) {
        case QMessageBox::Information:
            return {"info", blue};
        case QMessageBox::Warning:
            return {"warn", amberInk};
        case QMessageBox::Critical:
            return {"octagon", red};
        case QMessageBox::Question:
            return {"question", blue};
        case QMessageBox::NoIcon:
            break;
    }
    return {"", ink2};
}

class MessageDress final : public TitledDress {
public:
    explicit MessageDress(QMessageBox* message) : TitledDress(message), message_(message) {
        MessageDress::arrange();
    }

protected:
    void arrange() override {
        constexpr int signSize = 40;
        TitledDress::arrange();
        const Sign sign = signOf(message_->icon());
        auto* const place = message_->findChild<QLabel*>(QStringLiteral("qt_msgboxex_icon_label"));
        if (place && message_->icon() != QMessageBox::NoIcon) {
            place->setPixmap(picture(QLatin1String(sign.icon), px(signSize), sign.colour));
        }
        if (auto* const text = message_->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
            text->setMinimumWidth(std::max(widthFor(*text), titleWidth()));
        }
        if (message_->icon() == QMessageBox::NoIcon) {
            alignLeft();
        }
    }

    /// A new window flag has taken the focus from the default button, and Qt would make the first one
    /// default.
    void prepare() override {
        if (QPushButton* const button = message_->defaultButton()) {
            button->setDefault(true);
            button->setFocus();
        }
    }

private:
    /// Without a sign, the margin in its place is not needed.
    void alignLeft() {
        auto* const grid = qobject_cast<QGridLayout*>(message_->layout());
        QLayoutItem* const before = grid ? grid->itemAtPosition(0, 0) : nullptr;
        if (before && before->spacerItem()) {
            before->spacerItem()->changeSize(0, 0);
            grid->setHorizontalSpacing(0);
        }
        if (auto* const text = message_->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
            text->setContentsMargins(0, 0, 0, 0);
            text->setIndent(0);
        }
    }

    /// A longer text is broken into lines: with this width the message exceeds what Qt shows as one line.
    static int widthFor(const QLabel& label) {
        constexpr int least = 320, most = 424, margins = 8;
        const int width = label.fontMetrics().size(0, label.text()).width() + margins;
        return std::clamp(width, px(least), px(most));
    }

    QMessageBox* const message_;
};

/// Icons in the one style of lines.
class Files final : public QFileIconProvider {
public:
    [[nodiscard]] QIcon icon(IconType type) const override {
        switch (type) {
            case Folder:
                return look::icon(QStringLiteral("open"));
            case File:
                return look::icon(QStringLiteral("document"));
            default:
                return look::icon(QStringLiteral("device"));
        }
    }
    [[nodiscard]] QIcon icon(const QFileInfo& file) const override {
        return icon(file.isDir() ? Folder : File);
    }
};

class FilesDress final : public TitledDress {
public:
    explicit FilesDress(QFileDialog* files) : TitledDress(files), files_(files) {
        static Files icons;
        files->setIconProvider(&icons);
        files->setViewMode(QFileDialog::List);
        files->setSizeGripEnabled(false);
        // What a finger does not need in one list of names.
        for (const char* name : {"forwardButton", "listModeButton", "detailModeButton", "newFolderButton"}) {
            if (auto* const button = files->findChild<QToolButton*>(QLatin1String(name))) {
                button->hide();
            }
        }
        say("backButton", "back");
        say("toParentButton", "up");
        if (auto* const names = files->findChild<QListView*>(QStringLiteral("listView"))) {
            names->setWrapping(false);
        }
        FilesDress::arrange();
    }

protected:
    void arrange() override {
        constexpr int iconSize = 24;
        TitledDress::arrange();
        for (const char* name : {"listView", "sidebar"}) {
            if (auto* const rows = files_->findChild<QAbstractItemView*>(QLatin1String(name))) {
                rows->setIconSize({px(iconSize), px(iconSize)});
            }
        }
    }

private:
    /// An icon with the word that Qt has for the button.
    void say(const char* name, const char* icon) {
        if (auto* const button = files_->findChild<QToolButton*>(QLatin1String(name))) {
            button->setIcon(look::icon(QLatin1String(icon)));
            button->setText(button->toolTip());
            button->setMinimumSize(0, 0);
            button->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
            button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        }
    }

    QFileDialog* const files_;
};

}  // namespace

void dress(QDialog* dialog) {
    new Dress(dialog);
}

void dress(QMessageBox* message) {
    new MessageDress(message);
}

void dress(QFileDialog* files) {
    new FilesDress(files);
}

}  // namespace look
