#pragma once

#include "store/DocumentLibrary.h"
#include "store/Message.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

namespace tessaly {

/// One document from the moment it is opened for editing until it is left. Typing does not save it; saving and leaving
/// do. Until then a draft on the disk keeps what was typed, and the next session restores it should the program crash.
/// Text that cannot be read is neither changed nor saved.
class DocumentSession : public QObject
{
    Q_OBJECT

public:
    /// `text` returns the text as it is to be saved; it is asked only when something is written.
    explicit DocumentSession(std::function<QString()> text, QObject *parent = nullptr);
    /// Saves once more, unless the document was left.
    ~DocumentSession() override;

    /// Takes effect once; returns the text to edit. The library must outlive the session. An unknown id opens nothing:
    /// the session then saves nothing.
    std::optional<QString> open(DocumentLibrary &library, const QUuid &id);

    [[nodiscard]] const QString &title() const { return m_title; }
    void setTitle(const QString &title);
    [[nodiscard]] const std::optional<QUuid> &categoryID() const { return m_categoryID; }
    void setCategoryID(const std::optional<QUuid> &categoryID);
    /// The user changed the text.
    void edit();
    /// Copies the picture beside the documents; the URL of the copy, or nothing, and the message says why.
    [[nodiscard]] std::optional<QString> importImage(const QUrl &image);

    /// Saves title, category and text. False when the text is not on the disk; the message then says so.
    bool save();
    /// Saves before the window closes. A text that cannot be saved holds the window once; the message then says what
    /// becomes of the text the next time.
    bool mayCloseWindow();
    /// Saves, and ends the session when everything that was typed is on the disk; otherwise false.
    bool leave();

    /// Whether text can be edited.
    [[nodiscard]] bool isEditable() const { return m_state > State::Unreadable; }
    /// Whether something was changed that save() has not saved.
    [[nodiscard]] bool hasUnsavedChanges() const { return isTextUnsaved() || m_areDetailsUnsaved; }
    /// The last report on the document and on what was done with it.
    [[nodiscard]] Message message() const;
    /// Says where the last save kept the version of another program; empty when there was none.
    [[nodiscard]] Message keptVersion() const;
    /// Reports on something done with the document, such as copying it.
    void report(const Message &message);
    void dismissMessage();

signals:
    /// The message, what can be edited or what is unsaved.
    void changed();
    /// Everything is on the disk.
    void saved();

private:
    enum class State {
        Closed,
        Unreadable, ///< the text cannot be read, and there is no draft
        Blank,      ///< there is no file, and nothing was typed
        Saved,
        Typed, ///< and not saved
        Held,  ///< not saved, and the window was held once
    };

    [[nodiscard]] bool isTextUnsaved() const { return m_state >= State::Typed; }
    [[nodiscard]] Message openingMessage(bool hasDraft) const;
    void detailsEdited();
    void startDraftTimers();
    bool keepDraft();
    /// Keeps the draft while typing; the message says so while that fails.
    void keepDraftInTime();

    std::function<QString()> m_text;
    DocumentLibrary *m_library = nullptr;
    /// As it was when it was opened.
    MarkdownDocument m_document;
    QString m_title;
    std::optional<QUuid> m_categoryID;
    State m_state = State::Closed;
    bool m_areDetailsUnsaved = false;
    /// Of opening and saving.
    Message m_textMessage;
    /// Of what else was done.
    Message m_actionMessage;
    /// The draft is written when typing pauses, and now and then while it does not.
    QTimer m_pauseTimer;
    QTimer m_draftTimer;
};

} // namespace tessaly
