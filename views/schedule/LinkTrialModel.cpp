#include "views/schedule/LinkTrialModel.h"

#include "model/LinkAddress.h"
#include "store/ErrorText.h"
#include "views/schedule/LinkTexts.h"

#include <QPointer>
#include <QUrl>

namespace tessaly {

void LinkTrialModel::setStore(PlannerStore *store)
{
    m_store = store;
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &LinkTrialModel::changed);
}

QString LinkTrialModel::title() const
{
    switch (m_state) {
    case State::Idle:
        return {};
    case State::Running:
        return m_store->text(QStringLiteral("正在测试…"), QStringLiteral("Testing…"));
    case State::Readable:
        return m_found.once.name.isEmpty()
                   ? m_store->text(QStringLiteral("可以读取。"), QStringLiteral("This link can be read."))
                   : m_store->text(QStringLiteral("可以读取："), QStringLiteral("This link can be read: "));
    case State::Failed:
        return m_store->text(QStringLiteral("无法读取：%1。"), QStringLiteral("This link cannot be read: %1."))
            .arg(errorPhrase(m_error, m_store->interfaceLanguage()));
    case State::OtherScheme:
        return m_store->text(QStringLiteral("webcal 链接就是 https 链接，只是写法不同。"),
                             QStringLiteral("A webcal link is an https link by another name."));
    }
    Q_UNREACHABLE();
}

QString LinkTrialModel::name() const
{
    return m_state == State::Readable ? m_found.once.name : QString();
}

QString LinkTrialModel::facts() const
{
    return m_state == State::Readable ? factsText(*m_store, chosenFacts()) : QString();
}

void LinkTrialModel::setUrl(const QString &url)
{
    if (m_url == url)
        return;
    m_url = url;
    m_file.clear();
    m_choices = {};
    ++m_trial;
    setState(webcalAsHttps(url) ? State::OtherScheme : State::Idle);
}

void LinkTrialModel::setKeptUpToDate(bool isOn)
{
    m_choices.isKeptUpToDate = isOn ? std::optional(true) : std::nullopt;
    emit changed();
}

void LinkTrialModel::setReadsRepetitions(bool isOn)
{
    m_choices.readsRepetitions = isOn ? std::optional(true) : std::nullopt;
    emit changed();
}

void LinkTrialModel::tryLink()
{
    if (!canTry())
        return;
    if (m_state == State::OtherScheme)
        useHttps();
    const auto take = [self = QPointer(this), trial = ++m_trial](const Result<CalendarTrial> &found) {
        if (!self || self->m_trial != trial)
            return;
        if (found)
            self->m_found = found.value();
        else
            self->m_error = found.error();
        self->setState(found ? State::Readable : State::Failed);
    };
    if (isFile()) {
        setState(State::Running);
        m_store->calendarFiles().tryFile(m_file, take);
    } else if (m_store->calendarLinks().tryLink(m_url, take)) {
        setState(State::Running);
    }
}

void LinkTrialModel::open(const QString &place)
{
    const QUrl url(place);
    const QString file = url.isLocalFile() ? url.toLocalFile() : place.startsWith(u'/') ? place : QString();
    setUrl(file.isEmpty() ? place : file);
    m_file = file;
    tryLink();
}

void LinkTrialModel::importFile()
{
    m_store->calendarFiles().importFile(m_file, readsRepetitions());
    setUrl(QString());
}

void LinkTrialModel::useHttps()
{
    if (const std::optional<QString> link = webcalAsHttps(m_url))
        setUrl(*link);
}

void LinkTrialModel::setState(State state)
{
    m_state = state;
    emit changed();
}

} // namespace tessaly
