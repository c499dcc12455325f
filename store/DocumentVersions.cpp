#include "store/DocumentVersions.h"

#include "model/Uuid.h"
#include "platform/FileSystem.h"

#include <QStringDecoder>

#include <algorithm>
#include <cmath>
#include <functional>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

const QString extension = u".z"_s;

/// Milliseconds since 1970: names of one length, which sort by moment.
QString fileName(Instant moment)
{
    return QString::number(std::llround(moment.unixSeconds() * 1000)) + extension;
}

} // namespace

QString DocumentVersions::folderOf(const QUuid &documentID) const
{
    return m_folder + u'/' + uuidText(documentID);
}

void DocumentVersions::keep(const QUuid &documentID, Instant moment, const QByteArray &text)
{
    const QString folder = folderOf(documentID);
    if (!m_files.makeFolder(folder) || !m_files.write(folder + u'/' + fileName(moment), qCompress(text)))
        return;
    const QList<Instant> versions = list(documentID);
    for (qsizetype index = kept; index < versions.size(); ++index)
        m_files.remove(folder + u'/' + fileName(versions.at(index)));
}

QList<Instant> DocumentVersions::list(const QUuid &documentID) const
{
    QList<Instant> moments;
    for (const QString &name : m_files.fileNames(folderOf(documentID))) {
        bool isNumber = false;
        const qint64 milliseconds = name.endsWith(extension) ? name.chopped(extension.size()).toLongLong(&isNumber) : 0;
        if (isNumber)
            moments.append(Instant::fromUnixSeconds(static_cast<double>(milliseconds) / 1000));
    }
    std::ranges::sort(moments, std::greater());
    return moments;
}

std::optional<QString> DocumentVersions::text(const QUuid &documentID, Instant moment) const
{
    const auto compressed = m_files.read(folderOf(documentID) + u'/' + fileName(moment));
    const QByteArray bytes = compressed ? qUncompress(*compressed) : QByteArray();
    if (!compressed || (bytes.isEmpty() && *compressed != qCompress(QByteArray())))
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
}

void DocumentVersions::drop(const QUuid &documentID)
{
    for (const Instant moment : list(documentID))
        m_files.remove(folderOf(documentID) + u'/' + fileName(moment));
}

} // namespace tessaly
