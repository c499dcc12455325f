#pragma once

#include "store/DocumentSession.h"
#include "store/PlannerStore.h"
#include "views/documents/DocumentDesktop.h"
#include "views/documents/SourceText.h"

#include <QFont>
#include <QObject>
#include <QQuickTextDocument>
#include <QTimer>
#include <QtQml/qqml.h>

namespace tessaly {

/// The screen state of the editor of one document: the mode, the preview and the choice of a category. The document
/// itself is that of a DocumentSession, which ends with the editor.
class MarkdownEditorModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store MEMBER m_store NOTIFY opened REQUIRED)
    Q_PROPERTY(tessaly::DocumentDesktop *desktop MEMBER m_desktop NOTIFY opened REQUIRED)
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(QStringList categories READ categories NOTIFY categoriesChanged)
    Q_PROPERTY(int category READ category WRITE setCategory NOTIFY categoryChanged)
    Q_PROPERTY(tessaly::MarkdownEditorModel::MarkdownMode mode MEMBER m_mode NOTIFY modeChanged)
    Q_PROPERTY(QString previewContent READ previewContent NOTIFY previewContentChanged)
    Q_PROPERTY(QUrl baseUrl READ baseUrl NOTIFY opened)
    Q_PROPERTY(QString message READ message NOTIFY sessionChanged)
    Q_PROPERTY(QStringList keptVersionTexts READ keptVersionTexts NOTIFY sessionChanged)
    Q_PROPERTY(bool hasFailed READ hasFailed NOTIFY sessionChanged)
    Q_PROPERTY(bool isMessagePassing READ isMessagePassing NOTIFY sessionChanged)
    Q_PROPERTY(bool hasUnsavedChanges READ hasUnsavedChanges NOTIFY sessionChanged)
    Q_PROPERTY(bool isEditable READ isEditable NOTIFY sessionChanged)
    Q_PROPERTY(bool needsShaping READ needsShaping NOTIFY needsShapingChanged)

public:
    enum class MarkdownMode {
        Edit,
        Preview,
        Split, ///< both, side by side
    };
    Q_ENUM(MarkdownMode)

    explicit MarkdownEditorModel(QObject *parent = nullptr);

    /// Opens the document, once. Store and desktop must be set and outlive the model. An unknown id opens nothing.
    Q_INVOKABLE void open(const QString &documentId);
    /// Shows the source in the field's document, and follows what is typed there.
    Q_INVOKABLE void showSource(QQuickTextDocument *document, int lineHeight);
    /// Whether the document holds no more than its heading, so that writing goes on at its end.
    Q_INVOKABLE bool isFresh() const;
    [[nodiscard]] const QString &content() const { return m_source.text(); }
    /// Whether the source has letters that must be joined or combined to be read, as in Arabic.
    [[nodiscard]] bool needsShaping() const { return m_source.needsShaping(); }
    /// Adds to the end of the source.
    void append(const QString &text) { m_source.append(text); }

    [[nodiscard]] const QString &title() const { return m_session.title(); }
    void setTitle(const QString &title);
    /// Entries of the choice of a category; the first is that of none.
    [[nodiscard]] QStringList categories() const;
    [[nodiscard]] int category() const;
    void setCategory(int entry);
    /// What the preview shows: the source, 240 milliseconds after the last key of a burst.
    [[nodiscard]] const QString &previewContent() const { return m_previewContent; }
    /// The folder that the document's relative addresses start from.
    [[nodiscard]] QUrl baseUrl() const;
    /// What the session reports, in the interface language; may be empty.
    [[nodiscard]] QString message() const;
    /// Where the last save kept the version of another program, in Chinese and in English; both empty if it did not.
    [[nodiscard]] QStringList keptVersionTexts() const;
    /// Whether the message reports a failure.
    [[nodiscard]] bool hasFailed() const { return m_session.message().kind == MessageKind::Failure; }
    /// Whether the message disappears after a while.
    [[nodiscard]] bool isMessagePassing() const { return m_session.message().kind == MessageKind::Success; }
    Q_INVOKABLE void dismissMessage() { m_session.dismissMessage(); }
    [[nodiscard]] bool hasUnsavedChanges() const { return m_session.hasUnsavedChanges(); }
    [[nodiscard]] bool isEditable() const { return m_session.isEditable(); }

    /// Saves the text, which thus stays as a version, puts the other in its place and saves that. Nothing happens to a
    /// text that cannot be saved; the message then says why.
    Q_INVOKABLE void restoreText(const QString &text);
    /// The source as it is.
    Q_INVOKABLE QString presentText() const { return m_source.text(); }

    /// Saves title, category and text.
    Q_INVOKABLE bool save() { return m_session.save(); }
    /// Saves before the window closes; false if text would be lost and the user has not been warned yet.
    Q_INVOKABLE bool mayCloseWindow() { return m_session.mayCloseWindow(); }
    /// Saves, and emits closed() when everything that was typed is on the disk.
    Q_INVOKABLE void close();
    /// Lets the user choose a picture and adds its link to the end of the source.
    Q_INVOKABLE void insertImage();
    /// Saves, and emits copyRequested().
    Q_INVOKABLE void copyForWeChat();
    /// Reports the result of the copy.
    Q_INVOKABLE void finishCopy(bool isCopied);
    /// Reports that the web engine is missing.
    Q_INVOKABLE void refuseCopy();

    /// A font of the first of the families that is there, and of the others for what it lacks; letters are
    /// joined and combined only if it is shaped.
    Q_INVOKABLE static QFont fontOf(const QStringList &families, int pixelSize, bool isShaped);

signals:
    void opened();
    void titleChanged();
    void categoriesChanged();
    void categoryChanged();
    void modeChanged();
    void previewContentChanged();
    void sessionChanged();
    void needsShapingChanged();
    /// Everything is on the disk.
    void saved();
    /// At the end of the source.
    void imageInserted();
    void copyRequested(const QString &markdown);
    void closed();

private:
    void updatePreview();
    void takeImage(const QUrl &image);

    PlannerStore *m_store = nullptr;
    DocumentDesktop *m_desktop = nullptr;
    SourceText m_source;
    /// Reads the source when it goes, so it goes first.
    DocumentSession m_session;
    QString m_previewContent;
    QTimer m_previewTimer;
    MarkdownMode m_mode = MarkdownMode::Split;
};

} // namespace tessaly
