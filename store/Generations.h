#pragma once

#include "model/AppLanguage.h"
#include "model/Generation.h"
#include "model/Result.h"

#include <QList>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace tessaly {

class Alarm;
class StoredValues;
struct PlannerPorts;

/// What a check of the database and its generations has found.
struct GenerationsReport
{
    /// Why the database is not sound.
    std::optional<Error> present = {};
    QList<Generation> damaged = {};
    qsizetype checked = 0;
};

/// Decides when the state of the planner is kept as a generation, and how long. Main thread only.
class Generations : public QObject
{
    Q_OBJECT

public:
    /// The pause between two generations that are kept because something changed, in seconds.
    static constexpr double hourSeconds = 3600;
    /// How long after a change the state is kept at the earliest, in seconds: what is done together stays together.
    static constexpr double settlingSeconds = 60;

    /// Keeps nothing before start(). Both must outlive the object.
    Generations(const PlannerPorts &ports, StoredValues &values);
    ~Generations() override;
    Q_DISABLE_COPY_MOVE(Generations)

    /// From now on the state is kept when something has changed, and what changed since the newest generation counts.
    /// The first start of another version of the program keeps a restore point. To be called once, before anything is
    /// written.
    void start(const QString &programVersion);
    /// Keeps a restore point with the state of this moment, for a change that the caller is about to make.
    void keepBefore(GenerationReason reason, const QString &detail = {});

    /// The newest first.
    [[nodiscard]] QList<Generation> list() const;
    /// Checks every byte of the database and of all generations; the completion runs later.
    void check(const std::function<void(const GenerationsReport &)> &completion) const;
    /// The newest restore points, at most this many.
    [[nodiscard]] QList<Generation> restorePoints(qsizetype most) const;

signals:
    /// Generations have come or gone.
    void changed();
    /// A restore point could not be kept.
    void failed(const tessaly::Error &error);

private:
    void noteVersion(const QString &programVersion);
    void noteChange();
    void keepIfDue();
    void keep(GenerationReason reason, const QString &detail);
    /// When the state may be kept because it changed.
    [[nodiscard]] Instant nextHourly() const;

    const PlannerPorts &m_ports;
    StoredValues &m_values;
    std::unique_ptr<Alarm> m_alarm;
    /// When the state was last kept, or tried to, because something had changed.
    std::optional<Instant> m_lastHourly;
    std::optional<Instant> m_due;
    bool m_isStarted = false;
};

/// Why a restore point was kept, such as "Before clearing content"; empty for a generation that is none.
[[nodiscard]] TextPair reasonText(const Generation &generation);

} // namespace tessaly
