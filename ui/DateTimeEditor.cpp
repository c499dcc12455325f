#include "ui/DateTimeEditor.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTimeZone>

#include <algorithm>

namespace tessaly {

using namespace Qt::StringLiterals;

DateTimeEditor::DateTimeEditor(QObject *parent) : QObject(parent)
{
}

void DateTimeEditor::setValue(const QDateTime &value)
{
    if (m_value == value)
        return;
    m_typing.reset();
    m_former.clear();
    m_isRefused = false;
    m_isAllChosen = false;
    m_value = value;
    emit valueChanged();
    emit partChanged();
}

void DateTimeEditor::setEnglish(bool isEnglish)
{
    if (m_isEnglish == isEnglish)
        return;
    settle();
    m_isEnglish = isEnglish;
    emit valueChanged();
    emit partChanged();
}

void DateTimeEditor::setDateOnly(bool isDateOnly)
{
    if (m_isDateOnly == isDateOnly)
        return;
    m_isDateOnly = isDateOnly;
    m_partIndex = 0;
    emit valueChanged();
    emit partChanged();
}

QList<DateTimePiece> DateTimeEditor::pieces() const
{
    return dateTimePieces(m_typing ? m_typing->parts : dateTimeParts(m_value), m_isEnglish, m_isDateOnly);
}

QList<DateTimePart> DateTimeEditor::order() const
{
    QList<DateTimePart> parts;
    for (const DateTimePiece &piece : pieces()) {
        if (piece.isEditable)
            parts.append(piece.part);
    }
    return parts;
}

QString DateTimeEditor::text() const
{
    if (m_typing && m_typing->isWhole)
        return m_typing->whole;
    QString result;
    for (const DateTimePiece &piece : pieces())
        result += piece.text;
    return result;
}

int DateTimeEditor::partStart() const
{
    if (m_isAllChosen)
        return 0;
    if (m_typing && m_typing->isWhole)
        return static_cast<int>(m_typing->whole.size());
    qsizetype start = 0;
    int index = 0;
    for (const DateTimePiece &piece : pieces()) {
        if (piece.isEditable && index++ == m_partIndex)
            return static_cast<int>(start);
        start += piece.text.size();
    }
    return 0;
}

int DateTimeEditor::partLength() const
{
    if (m_isAllChosen)
        return static_cast<int>(text().size());
    if (m_typing && m_typing->isWhole)
        return 0;
    int index = 0;
    for (const DateTimePiece &piece : pieces()) {
        if (piece.isEditable && index++ == m_partIndex)
            return static_cast<int>(piece.text.size());
    }
    return 0;
}

void DateTimeEditor::choosePart(int index)
{
    if (m_typing && m_typing->isWhole && !finishTyping())
        return;
    m_isAllChosen = false;
    if (m_typing) {
        completePart();
        applyTyping();
        m_typing->whole.clear();
        // What is not a moment yet can become one in another part.
        if (!m_isRefused) {
            m_typing.reset();
            m_former.clear();
        }
    }
    m_partIndex = std::clamp(index, 0, static_cast<int>(order().size()) - 1);
    emit valueChanged();
    emit partChanged();
}

void DateTimeEditor::chooseAll()
{
    m_isAllChosen = true;
    emit partChanged();
}

void DateTimeEditor::movePart(int delta)
{
    choosePart(m_partIndex + delta);
}

void DateTimeEditor::choosePartAt(int textPosition)
{
    qsizetype end = 0;
    int index = -1;
    for (const DateTimePiece &piece : pieces()) {
        end += piece.text.size();
        index += piece.isEditable ? 1 : 0;
        if (textPosition < end && index >= 0)
            break;
    }
    choosePart(index);
}

void DateTimeEditor::commit(const QDateTime &value)
{
    if (value == m_value)
        return;
    m_value = value;
    emit valueChanged();
    emit partChanged();
    emit edited(value);
}

void DateTimeEditor::settle()
{
    if (!finishTyping())
        cancelTyping();
}

void DateTimeEditor::edit(QDate date, QTime time)
{
    settle();
    const QDateTime changed = momentOf(date, QTime(time.hour(), time.minute()), m_value.timeZone());
    if (changed.isValid())
        commit(changed);
}

void DateTimeEditor::step(int delta)
{
    settle();
    const QDate date = m_value.date();
    const QTime time = m_value.time();
    switch (part()) {
    case DateTimePart::Year:
        return edit(date.addYears(delta), time);
    case DateTimePart::Month:
        return edit(date.addMonths(delta), time);
    case DateTimePart::Day:
        return edit(date.addDays(delta), time);
    case DateTimePart::Hour:
        return stepTime(delta * 3600);
    case DateTimePart::Minute:
        return stepTime(delta * 60);
    }
}

void DateTimeEditor::stepHour(int delta)
{
    settle();
    stepTime(delta * 3600);
}

void DateTimeEditor::stepTime(int seconds)
{
    const QTimeZone zone = m_value.timeZone();
    QTime time = m_value.time().addSecs(seconds);
    // Not into a gap of daylight saving but over it, in either direction.
    while (time != m_value.time() && momentOf(m_value.date(), time, zone).time() != time)
        time = time.addSecs(seconds);
    edit(m_value.date(), time);
}

void DateTimeEditor::paste()
{
    const QString pasted = QGuiApplication::clipboard()->text().simplified();
    if (pasted.isEmpty())
        return;
    beginTyping(true);
    m_typing->whole = pasted;
    finishTyping();
}

void DateTimeEditor::copy() const
{
    QGuiApplication::clipboard()->setText(text());
}

void DateTimeEditor::setTime(int hour, int minute)
{
    edit(m_value.date(), QTime(std::clamp(hour, 0, 23), std::clamp(minute, 0, 59)));
}

void DateTimeEditor::moveDay(int days)
{
    edit(m_value.date().addDays(days), m_value.time());
}

void DateTimeEditor::moveMonth(int months)
{
    edit(m_value.date().addMonths(months), m_value.time());
}

void DateTimeEditor::chooseDate(QDate date)
{
    edit(date, m_value.time());
}

} // namespace tessaly
