#pragma once

#include <QTextBrowser>

namespace app {

/// Shows the handbook in the panel's language, and documents that it links to, from the panel's resources.
/// Pictures are at most as wide as the view.
class HandbookView : public QTextBrowser {
    Q_OBJECT
public:
    explicit HandbookView(QWidget* parent = nullptr);

    /// Opens the handbook at a chapter, named by its English anchor; an unknown one is the beginning.
    void openChapter(const QString& anchor);
    /// Selects the next (or the one before) occurrence of a text, beginning anew at the end. False without
    /// one.
    bool search(const QString& text, bool backward);
    /// The anchor of the chapter at the top of the view; in the handbook the English one.
    [[nodiscard]] QString shownChapter() const;

    QVariant loadResource(int type, const QUrl& name) override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void showPage(const QUrl& page);
    void dressText();
    void follow(const QUrl& link);
    bool goTo(const QString& anchor);
    QStringList anchors() const;

    int pictureWidth_ = 0;  ///< for which the pictures were loaded
};

}  // namespace app
