#include "views/shell/PhraseReader.h"

#include "platform/Clock.h"

namespace tessaly {

using namespace Qt::StringLiterals;

void PhraseReader::setStore(PlannerStore *store)
{
    if (m_store || !store)
        return;
    m_store = store;
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &PhraseReader::changed);
    emit storeChanged();
}

void PhraseReader::setPhrase(const QString &phrase)
{
    if (!m_store || m_phrase == phrase)
        return;
    m_phrase = phrase;
    const Instant now = m_store->clock().now();
    m_entry = quickEntry(phrase, now, m_store->calendar());
    m_schedule = scheduleOf(m_entry, now, m_store->calendar());
    if (phrase.isEmpty())
        m_dismissed.clear();
    emit changed();
}

QString PhraseReader::understood() const
{
    if (!m_store || !m_entry.start)
        return {};
    const auto label = [this](std::optional<Instant> end) {
        return timeLabel(*m_entry.start, end, m_store->clock().now(), m_store->calendar(),
                         m_store->interfaceLanguage());
    };
    return m_isForToDo ? m_store->text(u"截止 %1"_s, u"due %1"_s).arg(label({})) : label(m_schedule.endDate);
}

QString PhraseReader::label() const
{
    const QString text = understood();
    return text == m_dismissed ? QString() : text;
}

QDateTime PhraseReader::start() const
{
    return m_store && m_entry.start ? m_store->calendar().dateTime(*m_entry.start) : QDateTime();
}

QDateTime PhraseReader::end() const
{
    return m_store && m_entry.start ? m_store->calendar().dateTime(m_schedule.end()) : QDateTime();
}

void PhraseReader::dismiss()
{
    m_dismissed = understood();
    emit changed();
}

} // namespace tessaly
