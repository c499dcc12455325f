#pragma once

#include "platform/Backups.h"
#include "platform/fake/FakePreferences.h"

namespace tessaly {

/// Generations in memory, kept and read at once. Both can be made to fail.
class FakeBackups final : public Backups
{
public:
    explicit FakeBackups(const FakePreferences &preferences) : m_preferences(preferences) {}

    void keep(const Generation &generation, KeepCompletion completion) override
    {
        if (m_failure)
            return completion(*m_failure);
        Kept kept{generation, m_preferences};
        kept.generation.size = generationSize;
        kept.generation.digest = QString::number(++m_count);
        m_kept.prepend(kept);
        completion(kept.generation);
    }

    [[nodiscard]] QList<Generation> list() const override
    {
        QList<Generation> generations;
        for (const Kept &kept : m_kept)
            generations.append(kept.generation);
        return generations;
    }

    void remove(const QList<Generation> &generations) override
    {
        m_kept.removeIf([&](const Kept &kept) { return generations.contains(kept.generation); });
    }

    void read(const Generation &generation, std::function<void(const Preferences &)> read,
              ReadCompletion completion) override
    {
        for (const Kept &kept : std::as_const(m_kept)) {
            if (kept.generation == generation && !m_failure) {
                read(kept.preferences);
                return completion({});
            }
        }
        completion(m_failure.value_or(Error{ErrorCode::StorageCorrupt, {}}));
    }

    void checkPresent(ReadCompletion completion) override
    {
        completion(m_failure ? Result<void>(*m_failure) : Result<void>());
    }

    /// Until it is called with nothing.
    void failWith(std::optional<Error> error) { m_failure = std::move(error); }

private:
    static constexpr qint64 generationSize = 1000;
    struct Kept
    {
        Generation generation;
        FakePreferences preferences;
    };

    const FakePreferences &m_preferences;
    QList<Kept> m_kept;
    int m_count = 0;
    std::optional<Error> m_failure;
};

} // namespace tessaly
