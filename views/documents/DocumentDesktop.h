#pragma once

#include <QObject>
#include <QtQml/qqml.h>
#include <QUrl>

class QJSEngine;
class QQmlEngine;

namespace tessaly {

class FileDialogs;

/// What the document screens use besides the store: the desktop's file dialogs, and the files that load the web
/// engine. A singleton in QML.
class DocumentDesktop : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QUrl previewSource READ previewSource CONSTANT)
    Q_PROPERTY(QUrl copierSource READ copierSource CONSTANT)

public:
    /// The dialogs must outlive it.
    explicit DocumentDesktop(FileDialogs &fileDialogs, QObject *parent = nullptr);

    /// Must be called before an engine first asks for the singleton; the object must outlive every engine.
    static void setInstance(DocumentDesktop *desktop) { s_instance = desktop; }
    static DocumentDesktop *create(QQmlEngine *, QJSEngine *);

    [[nodiscard]] FileDialogs &fileDialogs() const { return m_fileDialogs; }

    /// QML file whose root is a PreviewSlot, loaded when the first document opens.
    [[nodiscard]] const QUrl &previewSource() const { return m_previewSource; }
    /// QML file whose root is a CopierSlot, loaded when a document is first copied.
    [[nodiscard]] const QUrl &copierSource() const { return m_copierSource; }
    /// False for a HEIC picture where Qt lacks the plugin that reads it.
    [[nodiscard]] static bool canShow(const QUrl &picture);
    /// To be called before one of them is loaded.
    Q_INVOKABLE void prepareEngine();
    /// What is said when a document has been copied, or could not be, in Chinese and in English.
    Q_INVOKABLE static QStringList copyOutcome(bool isCopied);
    /// Takes other files for the two, in tests and where no engine is wanted. To be called before a document opens.
    void setSources(const QUrl &preview, const QUrl &copier);

private:
    static inline DocumentDesktop *s_instance = nullptr;

    FileDialogs &m_fileDialogs;
    QUrl m_previewSource;
    QUrl m_copierSource;
};

} // namespace tessaly
