#pragma once

#include "model/Search.h"

#include <QHash>
#include <QObject>
#include <QThreadPool>
#include <QUuid>

#include <atomic>
#include <functional>
#include <memory>

namespace tessaly {

class FileSystem;

/// A document whose text has the words of a query.
struct DocumentHit
{
    QUuid id = {};
    SearchExcerpt excerpt = {};
};

/// Searches the texts of documents, in a thread of its own. What it remembers of a text is a fifth of its size, and
/// spares reading it again for words that it does not have.
class DocumentSearch : public QObject
{
    Q_OBJECT

public:
    struct File
    {
        QUuid id = {};
        QString path = {};
    };
    using Completion = std::function<void(const QList<DocumentHit> &)>;

    /// The files must outlive the search.
    explicit DocumentSearch(const FileSystem &files, QObject *parent = nullptr);
    ~DocumentSearch() override;

    /// Opens what comparing texts needs and then calls `opened` in this thread; reads what has changed, so that the
    /// next search is quick.
    void prepare(const QList<File> &files, const std::function<void()> &opened = {});
    /// Calls `completion` in this thread with the hits in the order of the files, unless another search has begun
    /// until then.
    void find(const QList<File> &files, const SearchQuery &query, const Completion &completion);
    void cancel() { ++m_search; }

    /// Bytes that are remembered; for the benchmark. Waits for what is going on.
    [[nodiscard]] qsizetype rememberedBytes();

private:
    struct Known
    {
        QByteArray stamp = {};
        TextSignature signature = {};
    };
    [[nodiscard]] QList<DocumentHit> hits(const QList<File> &files, const SearchQuery &query, int search);

    const FileSystem &m_files;
    /// Only in the thread.
    QHash<QUuid, Known> m_known;
    std::atomic<int> m_search = 0;
    /// Last, so that its thread has ended before anything else goes.
    QThreadPool m_thread;
};

} // namespace tessaly
