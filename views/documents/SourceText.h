#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class QTextDocument;

namespace tessaly {

/// The source of a document while it is edited. It follows the field that shows it edit by edit: the whole text is
/// never copied out of the field.
class SourceText : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Starts with the text of a file.
    void load(const QString &text);
    /// Lines end in "\n".
    [[nodiscard]] const QString &text() const { return m_text; }
    /// Whether there are letters that have to be joined or combined to be read, as in Arabic.
    [[nodiscard]] bool needsShaping() const { return m_needsShaping; }
    /// As it was loaded while nothing was changed; after that with the line ends of the file's first line.
    [[nodiscard]] QString textToSave() const;

    /// Shows the text in the document, every line `lineHeight` pixels high, and follows what is typed there. Undoing
    /// begins here.
    void show(QTextDocument &document, int lineHeight);
    /// Adds to the end, as if it were typed.
    void append(const QString &text);
    /// Puts the text in the place of all, likewise.
    void replace(const QString &text);

signals:
    void edited();
    void needsShapingChanged();

private:
    void takeOver(int position, int removed, int added);
    void keepLineHeight(int begin, int end);
    void markEdited();
    void lookForShapes(QStringView text);

    QString m_text;
    QString m_loaded;
    bool m_isEdited = false;
    bool m_needsShaping = false;
    QPointer<QTextDocument> m_document;
    int m_lineHeight = 0;
};

} // namespace tessaly
