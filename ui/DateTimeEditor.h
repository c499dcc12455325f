#pragma once

#include "ui/DateTimeText.h"

#include <QObject>
#include <QtQml/qqml.h>

#include <optional>

namespace tessaly {

/// The rules of a date-time field: its text, which part of it is chosen, and what keys do to that part. Wall-clock
/// time of the value's own time zone; seconds are cleared by every change.
///
/// Typing lasts from the first character until another part is chosen or the field loses the focus. Typed text goes
/// into the parts. If it is a complete date in another form, replaces all of the text, or is not understood, it is
/// shown as typed. While the typed text is a valid moment, the value follows it; otherwise the value is the one before
/// typing. Invalid text stays when the field loses the focus. isRefused is then true until the text is corrected or
/// cancelled, or the value is set.
class DateTimeEditor : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QDateTime value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(bool isEnglish READ isEnglish WRITE setEnglish NOTIFY valueChanged)
    Q_PROPERTY(bool isDateOnly READ isDateOnly WRITE setDateOnly NOTIFY valueChanged)
    /// The value, or what is being typed.
    Q_PROPERTY(QString text READ text NOTIFY valueChanged)
    /// What was typed or pasted is not understood, or no such moment exists.
    Q_PROPERTY(bool isRefused READ isRefused NOTIFY valueChanged)
    Q_PROPERTY(int partStart READ partStart NOTIFY partChanged)
    Q_PROPERTY(int partLength READ partLength NOTIFY partChanged)
    Q_PROPERTY(int hour READ hour NOTIFY valueChanged)
    Q_PROPERTY(int minute READ minute NOTIFY valueChanged)

public:
    explicit DateTimeEditor(QObject *parent = nullptr);

    [[nodiscard]] QDateTime value() const { return m_value; }
    void setValue(const QDateTime &value);
    [[nodiscard]] bool isEnglish() const { return m_isEnglish; }
    void setEnglish(bool isEnglish);
    [[nodiscard]] bool isDateOnly() const { return m_isDateOnly; }
    void setDateOnly(bool isDateOnly);

    [[nodiscard]] QString text() const;
    [[nodiscard]] bool isRefused() const { return m_isRefused; }
    [[nodiscard]] int partStart() const;
    [[nodiscard]] int partLength() const;
    [[nodiscard]] int hour() const { return m_value.time().hour(); }
    [[nodiscard]] int minute() const { return m_value.time().minute(); }

    // Each of these that changes the value emits edited().
    Q_INVOKABLE void step(int delta);
    /// As step() does to the hour, whatever part is chosen.
    Q_INVOKABLE void stepHour(int delta);
    /// Takes a digit, a letter of a month's name or a separator, which leads to the next part, and the characters of a
    /// whole date. False when the character is not for the text: a blank before anything is typed, a control character.
    Q_INVOKABLE bool type(const QString &character);
    /// As if each character were typed; the wide digits and signs of an input method count as the plain ones.
    Q_INVOKABLE void write(const QString &text);
    /// Takes the last character back, or empties the text when all of it is chosen.
    Q_INVOKABLE void erase();
    /// Drops what is being typed and chooses the part where it began; false when there is nothing.
    Q_INVOKABLE bool cancelTyping();
    /// Ends typing; false when what was typed is no moment. Nothing typed over the whole text leaves it as it was.
    Q_INVOKABLE bool finishTyping();
    /// Chooses the whole text: the next character replaces it.
    Q_INVOKABLE void chooseAll();
    /// Takes over a whole date, or date and time, from the clipboard.
    Q_INVOKABLE void paste();
    Q_INVOKABLE void copy() const;
    Q_INVOKABLE void chooseDate(QDate date);
    Q_INVOKABLE void moveDay(int days);
    Q_INVOKABLE void moveMonth(int months);
    Q_INVOKABLE void setTime(int hour, int minute);

    /// By so many parts, as far as there are any.
    Q_INVOKABLE void movePart(int delta);
    Q_INVOKABLE void choosePartAt(int textPosition);

signals:
    void valueChanged();
    void partChanged();
    /// The user changed the value.
    void edited(const QDateTime &value);

private:
    struct Typing
    {
        QDateTime valueBefore;
        DateTimeParts parts;
        int firstPartIndex = 0;
        /// What was typed of the current part.
        QString text = {};
        bool isDayTyped = false;
        /// A separator other than a blank was typed since the last digit or letter.
        bool hasSeparator = false;
        /// All that was typed without another key between.
        QString whole = {};
        /// The field shows, and reads, `whole` instead of the parts.
        bool isWhole = false;
    };
    struct FormerTyping
    {
        Typing typing;
        int partIndex = 0;
    };

    [[nodiscard]] QList<DateTimePiece> pieces() const;
    [[nodiscard]] QList<DateTimePart> order() const;
    [[nodiscard]] DateTimePart part() const { return order().value(m_partIndex); }
    [[nodiscard]] bool isLastPart() const { return m_partIndex == order().size() - 1; }
    void choosePart(int index);
    void typeDigit(QChar digit);
    void typeLetter(QChar letter);
    void typeSeparator(QChar separator);
    /// Takes the sign that follows a number in Chinese; false where it does not belong to what was typed.
    bool typeUnit(QChar sign);
    /// Nothing more is typed of the current part.
    void completePart();
    void leaveTypedPart();
    [[nodiscard]] DateTimeReading readWhole() const;
    /// The moment that is typed into the parts; invalid when there is none.
    [[nodiscard]] QDateTime typedMoment() const;
    [[nodiscard]] bool isPartOpen() const;
    void beginTyping(bool isWhole);
    void recogniseWhole();
    void applyTyping();
    /// Ends typing, dropping what is no moment.
    void settle();
    void stepTime(int seconds);
    void edit(QDate date, QTime time);
    void commit(const QDateTime &value);

    QDateTime m_value;
    std::optional<Typing> m_typing;
    /// Typing as it was before each of the characters.
    QList<FormerTyping> m_former;
    int m_partIndex = 0;
    bool m_isEnglish = false;
    bool m_isDateOnly = false;
    bool m_isRefused = false;
    bool m_isAllChosen = false;
};

} // namespace tessaly
