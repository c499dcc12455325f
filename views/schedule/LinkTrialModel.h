#pragma once

#include "model/CalendarFeed.h"
#include "store/PlannerStore.h"

#include <QObject>
#include <QtQml/qqml.h>

namespace tessaly {

/// What is behind the link that is being typed, and how it is to be added.
class LinkTrialModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Belongs to CalendarSelectionModel")
    Q_PROPERTY(State state READ state NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString name READ name NOTIFY changed)
    Q_PROPERTY(QString facts READ facts NOTIFY changed)
    Q_PROPERTY(QString url READ url WRITE setUrl NOTIFY changed)
    Q_PROPERTY(bool isFile READ isFile NOTIFY changed)
    Q_PROPERTY(bool canTry READ canTry NOTIFY changed)
    Q_PROPERTY(bool isKeptUpToDate READ isKeptUpToDate WRITE setKeptUpToDate NOTIFY changed)
    Q_PROPERTY(bool readsRepetitions READ readsRepetitions WRITE setReadsRepetitions NOTIFY changed)

public:
    enum class State {
        Idle,
        Running,
        Readable,
        Failed,
        /// The link is a webcal link, which is an https link under another name.
        OtherScheme,
    };
    Q_ENUM(State)

    using QObject::QObject;

    /// The store must outlive the model.
    void setStore(PlannerStore *store);

    [[nodiscard]] State state() const { return m_state; }
    /// What the trial found, without the calendar's own name, which is apart; empty while idle.
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString name() const;
    [[nodiscard]] QString facts() const;
    [[nodiscard]] const QString &url() const { return m_url; }
    /// Whether a file of this machine is shown, whose events can only be imported.
    [[nodiscard]] bool isFile() const { return !m_file.isEmpty(); }
    [[nodiscard]] bool canTry() const { return m_state != State::Running && !m_url.trimmed().isEmpty(); }
    [[nodiscard]] bool isKeptUpToDate() const { return m_choices.isKeptUpToDate.value_or(false); }
    [[nodiscard]] bool readsRepetitions() const { return m_choices.readsRepetitions.value_or(false); }
    /// How the link is to be added.
    [[nodiscard]] const CalendarFeed &choices() const { return m_choices; }

    /// Forgets what was found.
    void setUrl(const QString &url);
    void setKeptUpToDate(bool isOn);
    void setReadsRepetitions(bool isOn);
    /// Fetches the link and tells what is behind it, a webcal link as https. What is no link to a server is refused on
    /// the status line.
    Q_INVOKABLE void tryLink();
    /// Writes a webcal link as https.
    Q_INVOKABLE void useHttps();
    /// Shows what is behind a link, or in a file.
    void open(const QString &place);
    /// Makes the events of the file own schedules, and forgets the file.
    Q_INVOKABLE void importFile();

signals:
    void changed();

private:
    /// What the calendar holds, read as chosen.
    [[nodiscard]] const CalendarFacts &chosenFacts() const { return readsRepetitions() ? m_found.whole : m_found.once; }
    void setState(State state);

    PlannerStore *m_store = nullptr;
    QString m_url;
    QString m_file;
    State m_state = State::Idle;
    CalendarTrial m_found;
    Error m_error;
    CalendarFeed m_choices;
    /// Counts the trials: the answer of an earlier one comes too late.
    int m_trial = 0;
};

} // namespace tessaly
