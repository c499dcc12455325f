#include "store/DocumentSearch.h"

#include "model/SearchText.h"
#include "platform/FileSystem.h"

namespace tessaly {

DocumentSearch::DocumentSearch(const FileSystem &files, QObject *parent) : QObject(parent), m_files(files)
{
    m_thread.setMaxThreadCount(1);
    m_thread.setThreadPriority(QThread::LowPriority);
}

DocumentSearch::~DocumentSearch()
{
    cancel();
    m_thread.clear();
    m_thread.waitForDone();
}

void DocumentSearch::prepare(const QList<File> &files, const std::function<void()> &opened)
{
    const int search = m_search;
    m_thread.start([this, files, opened, search] {
        // lint-allow(text): any character will do
        // ICU reads its rules with the first characters, which takes longer than a frame.
        static_cast<void>(searchFolded(u"中"));
        static_cast<void>(pinyinInitials(u"中"));
        if (opened)
            QMetaObject::invokeMethod(this, opened);
        static_cast<void>(hits(files, {}, search));
    });
}

void DocumentSearch::find(const QList<File> &files, const SearchQuery &query, const Completion &completion)
{
    const int search = ++m_search;
    m_thread.start([this, files, query, completion, search] {
        const QList<DocumentHit> found = hits(files, query, search);
        QMetaObject::invokeMethod(this, [this, completion, found, search] {
            if (search == m_search)
                completion(found);
        });
    });
}

QList<DocumentHit> DocumentSearch::hits(const QList<File> &files, const SearchQuery &query, int search)
{
    QList<DocumentHit> found;
    for (const File &file : files) {
        if (search != m_search)
            return {};
        Known &known = m_known[file.id];
        const QByteArray stamp = m_files.stamp(file.path);
        const bool isKnown = known.stamp == stamp && !stamp.isEmpty();
        if (isKnown && (query.isEmpty() || !known.signature.mayHave(query)))
            continue;
        const QByteArray bytes = m_files.read(file.path).value_or(QByteArray());
        const QString text = QString::fromUtf8(bytes);
        const QString folded = searchFolded(text);
        if (!isKnown)
            known = {.stamp = stamp, .signature = TextSignature(folded, bytes.size())};
        if (const std::optional<SearchExcerpt> part = excerpt(text, folded, query))
            found.append({.id = file.id, .excerpt = *part});
    }
    return found;
}

qsizetype DocumentSearch::rememberedBytes()
{
    m_thread.waitForDone();
    qsizetype bytes = 0;
    for (const Known &known : std::as_const(m_known))
        bytes += known.signature.bytes();
    return bytes;
}

} // namespace tessaly
