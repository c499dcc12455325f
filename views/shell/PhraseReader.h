#pragma once

#include "model/QuickAdd.h"
#include "store/PlannerStore.h"

#include <QDateTime>
#include <QObject>
#include <QtQml/qqml.h>

namespace tessaly {

/// What the title in a form says of time, to be offered to the user.
class PhraseReader : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(QString phrase READ phrase WRITE setPhrase NOTIFY changed)
    Q_PROPERTY(bool isForToDo MEMBER m_isForToDo NOTIFY changed)
    Q_PROPERTY(QString label READ label NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QDateTime start READ start NOTIFY changed)
    Q_PROPERTY(QDateTime end READ end NOTIFY changed)

public:
    using QObject::QObject;

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the reader.
    void setStore(PlannerStore *store);
    [[nodiscard]] const QString &phrase() const { return m_phrase; }
    void setPhrase(const QString &phrase);

    /// "tomorrow 15:00–16:00", for a to-do "due tomorrow 15:00"; empty where nothing is understood, or the user has
    /// dismissed just that.
    [[nodiscard]] QString label() const;
    /// The phrase without what is understood.
    [[nodiscard]] const QString &title() const { return m_entry.title; }
    /// Local wall-clock times, invalid where nothing is understood; the end is that of a schedule.
    [[nodiscard]] QDateTime start() const;
    [[nodiscard]] QDateTime end() const;

    /// The phrase stays as it is: what it says now is not offered again until it is empty.
    Q_INVOKABLE void dismiss();

signals:
    void storeChanged();
    void changed();

private:
    [[nodiscard]] QString understood() const;

    PlannerStore *m_store = nullptr;
    QString m_phrase;
    QString m_dismissed;
    QuickEntry m_entry;
    ScheduleItem m_schedule;
    bool m_isForToDo = false;
};

} // namespace tessaly
