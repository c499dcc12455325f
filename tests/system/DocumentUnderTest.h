#pragma once

#include <QQuickView>
#include <QStringList>
#include <QVariant>

#include <memory>

namespace tessaly {

/// A window with the preview of one document, as the editor holds it.
class DocumentUnderTest
{
public:
    DocumentUnderTest();

    /// Gives the preview a text and waits until it is on screen.
    [[nodiscard]] bool show(const QString &markdown);
    /// The same in a new page.
    [[nodiscard]] bool showAnew(const QString &markdown);
    /// Gives the preview a text and does not wait.
    void type(const QString &markdown);
    [[nodiscard]] bool isRendering() const { return m_preview->property("isRendering").toBool(); }
    /// Where the document is.
    void setFolder(const QString &path);
    void setDark(bool isDark);
    void setPreviewVisible(bool isVisible);
    void showEnd() { QMetaObject::invokeMethod(m_preview, "showEnd"); }
    /// The process that draws the page that is shown.
    [[nodiscard]] int pageProcess() const;
    /// What a script in the page that is shown answers; invalid when no answer comes.
    [[nodiscard]] QVariant ask(const QString &script);
    /// The links that the preview reported.
    [[nodiscard]] QStringList links() const { return m_preview->property("links").toStringList(); }
    [[nodiscard]] QImage picture() { return m_view.grabWindow(); }
    [[nodiscard]] QQuickView &view() { return m_view; }

private:
    QQuickView m_view;
    QObject *m_preview = nullptr;
    QString m_folder = QStringLiteral("/nowhere");
    bool m_hasOtherSpelling = false;
};

/// Must run before the application object exists: like the program, without a choice about OpenGL.
void fixEngineEnvironment();

} // namespace tessaly
