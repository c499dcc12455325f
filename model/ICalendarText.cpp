#include "model/ICalendarText.h"

#include <algorithm>

namespace tessaly {

namespace {

/// Alarms within events within calendars need three.
constexpr qsizetype deepest = 8;

/// Calls back with each parameter: its whole text with the semicolon, its name, its value.
template <class Visitor>
void forEachParameter(const QByteArray &parameters, Visitor visit)
{
    qsizetype begin = 0;
    while (begin < parameters.size()) {
        bool isQuoted = false;
        qsizetype end = begin + 1;
        for (; end < parameters.size() && (isQuoted || parameters[end] != ';'); ++end)
            isQuoted ^= parameters[end] == '"';
        const QByteArray whole = parameters.mid(begin, end - begin);
        const qsizetype equals = whole.indexOf('=');
        QByteArray value = equals < 0 ? QByteArray() : whole.mid(equals + 1);
        if (value.size() >= 2 && value.startsWith('"') && value.endsWith('"'))
            value = value.mid(1, value.size() - 2);
        visit(whole, whole.mid(1, equals < 0 ? -1 : equals - 1).toUpper(), value);
        begin = end;
    }
}

} // namespace

PropertyReader::PropertyReader(const QByteArray &text) : m_text(text), m_next(text.startsWith("\xEF\xBB\xBF") ? 3 : 0)
{
}

bool PropertyReader::next()
{
    while (nextLine()) {
        if (divideLine())
            return true;
    }
    return false;
}

bool PropertyReader::nextLine()
{
    if (m_next >= m_text.size())
        return false;
    property.begin = m_next;
    line += m_linesTaken;
    m_linesTaken = 0;
    m_content.resize(0);
    do {
        const bool isFirst = m_next == property.begin;
        qsizetype feed = m_text.indexOf('\n', m_next);
        const qsizetype after = feed < 0 ? m_text.size() : feed + 1;
        feed = feed < 0 ? m_text.size() : feed;
        const qsizetype from = isFirst ? m_next : m_next + 1;
        const qsizetype to = feed > from && m_text[feed - 1] == '\r' ? feed - 1 : feed;
        m_content.append(m_text.constData() + from, std::max<qsizetype>(0, to - from));
        m_next = after;
        ++m_linesTaken;
    } while (m_next < m_text.size() && (m_text[m_next] == ' ' || m_text[m_next] == '\t'));
    property.end = m_next;
    return true;
}

bool PropertyReader::divideLine()
{
    bool isQuoted = false;
    qsizetype nameEnd = -1;
    for (qsizetype i = 0; i < m_content.size(); ++i) {
        const char c = m_content[i];
        if (nameEnd < 0 && (c == ';' || c == ':'))
            nameEnd = i;
        if (c == '"' && nameEnd >= 0)
            isQuoted = !isQuoted;
        if (c == ':' && !isQuoted) {
            property.name = m_content.left(nameEnd).trimmed().toUpper();
            property.parameters = m_content.mid(nameEnd, i - nameEnd);
            property.value = m_content.mid(i + 1);
            return true;
        }
    }
    return false;
}

std::optional<QByteArray> TextProperty::parameter(QByteArrayView parameterName) const
{
    std::optional<QByteArray> found;
    forEachParameter(parameters, [&](const QByteArray &, const QByteArray &name, const QByteArray &value) {
        if (!found && name == parameterName)
            found = value;
    });
    return found;
}

QByteArray TextProperty::parametersWithout(const QByteArrayList &names) const
{
    QByteArray kept;
    forEachParameter(parameters, [&](const QByteArray &whole, const QByteArray &name, const QByteArray &) {
        if (!names.contains(name))
            kept += whole;
    });
    return kept;
}

const TextProperty *TextComponent::property(QByteArrayView propertyName) const
{
    const auto found = std::ranges::find_if(properties, [&](const auto &each) { return each.name == propertyName; });
    return found == properties.cend() ? nullptr : &*found;
}

std::optional<QList<TextComponent>> readComponents(const QByteArray &text)
{
    QList<TextComponent> open{{}};
    PropertyReader reader(text);
    while (reader.next()) {
        const TextProperty &property = reader.property;
        if (property.name == "BEGIN") {
            if (open.size() > deepest)
                return std::nullopt;
            open.append({.name = property.value.trimmed().toUpper(), .begin = property.begin});
        } else if (property.name == "END") {
            if (open.size() < 2 || open.constLast().name != property.value.trimmed().toUpper())
                return std::nullopt;
            TextComponent closed = open.takeLast();
            closed.contentEnd = property.begin;
            closed.end = property.end;
            open.last().components.append(std::move(closed));
        } else {
            open.last().properties.append(property);
        }
    }
    if (open.size() != 1)
        return std::nullopt;
    return open.constFirst().components;
}

QString unescapedText(const QByteArray &value)
{
    QByteArray text;
    text.reserve(value.size());
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        ++i;
        text += value[i] == 'n' || value[i] == 'N' ? '\n' : value[i];
    }
    return QString::fromUtf8(text);
}

QString unescapedLine(const QByteArray &value)
{
    return unescapedText(value).replace(u'\n', u' ');
}

std::optional<EventDuration> durationFrom(QByteArrayView value)
{
    constexpr qint64 greatest = 1'000'000'000;
    constexpr qsizetype longest = 60;
    const QByteArray text = value.trimmed().toByteArray().toUpper();
    const bool isNegative = text.startsWith('-');
    qsizetype at = isNegative || text.startsWith('+') ? 1 : 0;
    if (text.size() > longest || text.size() < at + 3 || text[at] != 'P')
        return std::nullopt;
    EventDuration result;
    bool isTime = false;
    while (++at < text.size()) {
        if (text[at] == 'T' && !isTime && at + 1 < text.size()) {
            isTime = true;
            continue;
        }
        const qsizetype from = at;
        qint64 number = 0;
        for (; at < text.size() && text[at] >= '0' && text[at] <= '9' && number < greatest; ++at)
            number = number * 10 + (text[at] - '0');
        if (at == from || at == text.size())
            return std::nullopt;
        if (!isTime && (text[at] == 'W' || text[at] == 'D'))
            result.days += number * (text[at] == 'W' ? 7 : 1);
        else if (isTime && (text[at] == 'H' || text[at] == 'M' || text[at] == 'S'))
            result.seconds += number * (text[at] == 'H' ? 3600 : text[at] == 'M' ? 60 : 1);
        else
            return std::nullopt;
    }
    return isNegative ? EventDuration{} : result;
}

QByteArray escapedText(const QString &text)
{
    QByteArray value;
    for (const char c : text.toUtf8()) {
        if (c == '\n')
            value += "\\n";
        else if (c == '\\' || c == ';' || c == ',')
            (value += '\\') += c;
        else if (static_cast<unsigned char>(c) >= ' ' || c == '\t')
            value += c;
    }
    return value;
}

QByteArray edited(const QByteArray &text, QList<TextEdit> edits)
{
    std::ranges::stable_sort(edits, {}, [](const TextEdit &edit) { return std::pair(edit.begin, edit.end); });
    QByteArray result;
    qsizetype copied = 0;
    for (const TextEdit &edit : std::as_const(edits)) {
        result += text.mid(copied, edit.begin - copied) + edit.replacement;
        copied = edit.end;
    }
    return result + text.mid(copied);
}

QByteArray lineEndOf(const QByteArray &text)
{
    const qsizetype feed = text.indexOf('\n');
    return feed < 0 || (feed > 0 && text[feed - 1] == '\r') ? QByteArrayLiteral("\r\n") : QByteArrayLiteral("\n");
}

QByteArray contentLine(const QByteArray &content, const QByteArray &lineEnd)
{
    constexpr qsizetype longest = 75;
    const auto isWithinCharacter = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
    QByteArray line;
    qsizetype begin = 0;
    while (content.size() - begin > longest - (begin > 0)) {
        qsizetype end = begin + longest - (begin > 0);
        while (end > begin + 1 && isWithinCharacter(content[end]))
            --end;
        line += content.mid(begin, end - begin) + lineEnd + ' ';
        begin = end;
    }
    return line + content.mid(begin) + lineEnd;
}

} // namespace tessaly
