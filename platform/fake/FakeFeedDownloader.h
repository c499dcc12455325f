#pragma once

#include "platform/FeedDownloader.h"

#include <QList>
#include <QTimer>

#include <optional>

namespace tessaly {

/// Keeps each download waiting until the test answers it, or gives all the same answer.
class FakeFeedDownloader final : public FeedDownloader
{
public:
    void download(const QUrl &url, const FeedVersion &known, Completion completion) override
    {
        if (m_answer)
            QTimer::singleShot(0, [answer = *m_answer, completion = std::move(completion)] { completion(answer); });
        else
            m_pending.append({url, known, std::move(completion)});
    }

    [[nodiscard]] qsizetype pendingCount() const { return m_pending.size(); }
    [[nodiscard]] QUrl pendingUrl(qsizetype index) const { return m_pending.at(index).url; }
    [[nodiscard]] FeedVersion pendingVersion(qsizetype index) const { return m_pending.at(index).known; }
    /// Answers the waiting download at `index`, in any order.
    void answer(qsizetype index, Result<FeedAnswer> answer)
    {
        const Pending pending = m_pending.takeAt(index);
        pending.completion(std::move(answer));
    }
    void answerAllWith(const FeedAnswer &answer) { m_answer = answer; }
    void answer(qsizetype index, const QByteArray &body) { answer(index, FeedAnswer{.body = body}); }

private:
    struct Pending
    {
        QUrl url;
        FeedVersion known;
        Completion completion;
    };
    QList<Pending> m_pending;
    std::optional<FeedAnswer> m_answer;
};

} // namespace tessaly
