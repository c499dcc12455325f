#pragma once

#include "platform/FeedDownloader.h"

#include <QList>

namespace tessaly {

/// Keeps each download waiting until the test answers it.
class FakeFeedDownloader final : public FeedDownloader
{
public:
    void download(const QUrl &url, Completion completion) override { m_pending.append({url, std::move(completion)}); }

    [[nodiscard]] qsizetype pendingCount() const { return m_pending.size(); }
    [[nodiscard]] QUrl pendingUrl(qsizetype index) const { return m_pending.at(index).url; }
    /// Answers the waiting download at `index`, in any order.
    void answer(qsizetype index, Result<QByteArray> body)
    {
        const Pending pending = m_pending.takeAt(index);
        pending.completion(std::move(body));
    }

private:
    struct Pending
    {
        QUrl url;
        Completion completion;
    };
    QList<Pending> m_pending;
};

} // namespace tessaly
