#pragma once

#include "store/PlannerStore.h"
#include "views/documents/DocumentDesktop.h"
#include "views/documents/SourceText.h"

#include <QFont>
#include <QObject>
#include <QQuickTextDocument>
#include <QTimer>
#include <QtQml/qqml.h>

#include <optional>

namespace tessaly {

/// The state of the editor of one document. The document is not saved while typing, but at the latest when the editor
/// goes; should the program go down before that, the next editor brings back what was typed from a draft. The text of a
/// document that cannot be read is neither changed nor saved.
class MarkdownEditorModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store MEMBER m_store NOTIFY opened REQUIRED)
    Q_PROPERTY(tessaly::DocumentDesktop *desktop MEMBER m_desktop NOTIFY opened REQUIRED)
    Q_PROPERTY(QString title MEMBER m_title NOTIFY titleChanged)
    Q_PROPERTY(QStringList categories READ categories NOTIFY categoriesChanged)
    Q_PROPERTY(int category READ category WRITE setCategory NOTIFY categoryChanged)
    Q_PROPERTY(tessaly::MarkdownEditorModel::MarkdownMode mode MEMBER m_mode NOTIFY modeChanged)
    Q_PROPERTY(QString previewContent READ previewContent NOTIFY previewContentChanged)
    Q_PROPERTY(QString message READ message NOTIFY messageChanged)
    Q_PROPERTY(QStringList keptVersionTexts READ keptVersionTexts NOTIFY messageChanged)
    Q_PROPERTY(bool isUnreadable MEMBER m_isUnreadable NOTIFY opened)
    Q_PROPERTY(bool needsShaping READ needsShaping NOTIFY needsShapingChanged)
    Q_PROPERTY(bool hasFailed READ hasFailed NOTIFY messageChanged)

public:
    enum class MarkdownMode {
        Edit,
        Preview,
        Split, ///< both, side by side
    };
    Q_ENUM(MarkdownMode)

    explicit MarkdownEditorModel(QObject *parent = nullptr);
    /// Saves once more, unless close() did.
    ~MarkdownEditorModel() override;

    /// Reads the document, once. Store and desktop must be set and outlive the model. An unknown id opens nothing: the
    /// model then saves nothing.
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

    /// Entries of the choice of a category; the first is that of none.
    [[nodiscard]] QStringList categories() const;
    [[nodiscard]] int category() const;
    void setCategory(int entry);
    /// What the preview shows: the source, 240 milliseconds after the last key of a burst.
    [[nodiscard]] const QString &previewContent() const { return m_previewContent; }
    /// Why the text could not be saved, read or will not be saved, else where the last save kept the version of another
    /// program and how the last copy went, else that the text is that of a draft; may be empty.
    [[nodiscard]] QString message() const;
    /// Where the last save kept the version of another program, in Chinese and in English; both empty if it did not.
    [[nodiscard]] QStringList keptVersionTexts() const
    {
        return {m_keptVersionMessage.chinese, m_keptVersionMessage.english};
    }
    /// Whether the message tells of a failure.
    [[nodiscard]] bool hasFailed() const
    {
        return !m_saveFailure.isEmpty() || !m_openFailure.isEmpty() || m_hasCopyFailed;
    }

    /// Saves title, category and text. False when the text is not on the disk; the message then says so.
    Q_INVOKABLE bool save();
    /// Saves before the window goes. What cannot be saved holds the window once, and the message then says that the
    /// next time it is given up.
    Q_INVOKABLE bool mayLeave();
    /// Saves, and emits closed() when everything that was typed is on the disk.
    Q_INVOKABLE void close();
    /// Lets the user choose a picture and adds its link to the end of the source.
    Q_INVOKABLE void insertImage();
    /// Saves, and emits copyRequested().
    Q_INVOKABLE void copyForWeChat();
    /// Tells how the copy went.
    Q_INVOKABLE void finishCopy(bool isCopied);
    /// Tells that there is nothing to copy with.
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
    void messageChanged();
    void needsShapingChanged();
    /// Everything is on the disk.
    void saved();
    void copyRequested(const QString &markdown);
    void closed();

private:
    [[nodiscard]] DocumentLibrary &library() const { return m_store->documentLibrary(); }
    void updatePreview();
    void takeUpDraft();
    void tellOfFault(DocumentText::State state);
    void onTextEdited();
    void changed();
    bool keepDraft();
    void setCopyMessage(const QString &message, bool hasFailed);
    void takeImage(const QUrl &image);

    PlannerStore *m_store = nullptr;
    DocumentDesktop *m_desktop = nullptr;
    /// As it was when it was opened.
    std::optional<MarkdownDocument> m_document;
    QString m_title;
    std::optional<QUuid> m_categoryID;
    SourceText m_source;
    QString m_previewContent;
    QTimer m_previewTimer;
    /// The draft is written when typing pauses, and now and then while it does not.
    QTimer m_pauseTimer;
    QTimer m_draftTimer;
    MarkdownMode m_mode = MarkdownMode::Split;
    QString m_copyMessage;
    bool m_hasCopyFailed = false;
    /// Whether the file could not be read, and there is no draft in its place.
    bool m_isUnreadable = false;
    /// Whether the text is neither that of a file nor one that somebody has typed.
    bool m_isBlank = true;
    bool m_isTextUnsaved = false; ///< it was typed and is not on the disk
    QString m_openFailure;
    QString m_saveFailure;
    TextPair m_keptVersionMessage;
    QString m_draftMessage;
    bool m_isClosed = false;
    bool m_isLeaveRefused = false;
};

} // namespace tessaly
