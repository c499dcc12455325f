#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

#include <optional>

namespace tessaly {

/// A property of iCalendar text (RFC 5545, 3.1), and the bytes that it takes up: from the first of its name to the last
/// of its line end, folds included.
struct TextProperty
{
    /// Upper-case.
    QByteArray name = {};
    /// As they stand, unfolded, with the semicolon before each.
    QByteArray parameters = {};
    QByteArray value = {};
    qsizetype begin = 0;
    qsizetype end = 0;

    /// Without quotation marks; nothing where the property has no such parameter.
    [[nodiscard]] std::optional<QByteArray> parameter(QByteArrayView parameterName) const;
    /// The parameters but those named.
    [[nodiscard]] QByteArray parametersWithout(const QByteArrayList &names) const;
};

/// Takes the properties of a text one after the other, the BEGIN and END of components too. Folded lines are joined;
/// what is no property is passed over, as is a byte-order mark.
class PropertyReader
{
public:
    /// The text has to live as long as the reader.
    explicit PropertyReader(const QByteArray &text);

    /// False at the end.
    bool next();

    TextProperty property;
    /// Where the property begins, counted from 1.
    qsizetype line = 1;

private:
    bool nextLine();
    /// False where the line is no property.
    bool divideLine();

    const QByteArray &m_text;
    qsizetype m_next;
    qsizetype m_linesTaken = 0;
    QByteArray m_content;
};

/// A component, from its BEGIN to the line end of its END.
struct TextComponent
{
    QByteArray name = {};
    QList<TextProperty> properties = {};
    QList<TextComponent> components = {};
    qsizetype begin = 0;
    /// Where the line of its END begins.
    qsizetype contentEnd = 0;
    qsizetype end = 0;

    /// The first with that name; null where there is none.
    [[nodiscard]] const TextProperty *property(QByteArrayView propertyName) const;
};

/// The components of a text, outermost first. Nothing where a component does not end or ends another, so where a file
/// was not written to its end. What is no property is passed over.
[[nodiscard]] std::optional<QList<TextComponent>> readComponents(const QByteArray &text);

/// Text values (RFC 5545, 3.3.11).
[[nodiscard]] QString unescapedText(const QByteArray &value);
[[nodiscard]] QByteArray escapedText(const QString &text);

/// The same on one line, for titles: a blank stands for a line break.
[[nodiscard]] QString unescapedLine(const QByteArray &value);

/// A duration (RFC 5545, 3.3.6): days of the calendar, then seconds.
struct EventDuration
{
    qint64 days = 0;
    qint64 seconds = 0;
};
/// Nothing where it cannot be read; negative ones are none at all. Small letters and blanks around it are no matter.
[[nodiscard]] std::optional<EventDuration> durationFrom(QByteArrayView value);

/// Puts bytes in the place of others.
struct TextEdit
{
    qsizetype begin = 0;
    qsizetype end = 0;
    QByteArray replacement = {};
};
/// The edits do not overlap; of those at one place the first comes first.
[[nodiscard]] QByteArray edited(const QByteArray &text, QList<TextEdit> edits);
/// The line end that the text uses first; of a text without any, that of the standard.
[[nodiscard]] QByteArray lineEndOf(const QByteArray &text);
/// Folded where it is longer than 75 bytes, never within a character, and ended.
[[nodiscard]] QByteArray contentLine(const QByteArray &content, const QByteArray &lineEnd);

} // namespace tessaly
