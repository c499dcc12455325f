#include "views/documents/engine/PagePublisher.h"

#include "model/MarkdownPage.h"
#include "model/PageSandbox.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

std::optional<QByteArray> pictureBytes(const QUrl &url)
{
    const std::optional<Picture> picture = url.host().isEmpty() ? readPicture(url.toLocalFile()) : std::nullopt;
    return picture ? std::optional(picture->bytes) : std::nullopt;
}

/// The text as the page's script reads it: line ends and invalid characters as the HTML parser replaces them.
QString asParsed(QString text)
{
    if (!text.isValidUtf16())
        text = QString::fromUtf8(text.toUtf8());
    return text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(QChar::Null, QChar::ReplacementCharacter);
}

/// A replacement of characters (UTF-16) that turns one text into the other.
QJsonObject difference(const QString &before, const QString &after)
{
    const qsizetype most = std::min(before.size(), after.size());
    qsizetype start = std::mismatch(before.begin(), before.begin() + most, after.begin()).first - before.begin();
    if (start > 0 && before.at(start - 1).isHighSurrogate())
        --start;
    qsizetype rest =
        std::mismatch(before.rbegin(), before.rbegin() + (most - start), after.rbegin()).first - before.rbegin();
    if (rest > 0 && before.at(before.size() - rest).isLowSurrogate())
        --rest;
    return {{u"start"_s, start},
            {u"removed"_s, before.size() - start - rest},
            {u"text"_s, after.mid(start, after.size() - start - rest)},
            {u"length"_s, after.size()}};
}

} // namespace

PagePublisher::PagePublisher(QObject *parent) : QObject(parent)
{
    m_worker.setMaxThreadCount(1);
}

PagePublisher::~PagePublisher()
{
    m_worker.clear();
    m_worker.waitForDone();
}

void PagePublisher::publish(const QString &markdown, const QUrl &folder)
{
    m_worker.start([this, markdown, folder] {
        const QString text = embeddingLocalImages(markdown, pictureBytes);
        const QByteArray page = sandboxedPage(markdownPage(text).toUtf8());
        const QSet<QByteArray> named = namedAddresses(markdown);
        const auto publishPage = [=, this, shown = asParsed(text)] {
            if (!m_profile)
                return;
            m_text = shown;
            m_folder = folder;
            m_profile->pictures().forgetAnswers();
            allowPictures(markdown, named);
            emit published(m_profile->server().publish(page));
        };
        QMetaObject::invokeMethod(this, publishPage, Qt::QueuedConnection);
    });
}

void PagePublisher::revise(const QString &markdown, const QUrl &folder)
{
    if (folder != m_folder) {
        publish(markdown, folder);
        return;
    }
    m_worker.start([this, markdown, before = m_text] {
        const QString text = asParsed(embeddingLocalImages(markdown, pictureBytes));
        const QSet<QByteArray> named = namedAddresses(markdown);
        const auto reviseText = [=, this, change = difference(before, text)] {
            if (!m_profile)
                return;
            m_text = text;
            allowPictures(markdown, named);
            QJsonObject revision = change;
            revision.insert(u"stale"_s, QJsonArray::fromStringList(m_profile->pictures().outdated()));
            emit revised(QString::fromUtf8(QJsonDocument(revision).toJson(QJsonDocument::Compact)));
        };
        QMetaObject::invokeMethod(this, reviseText, Qt::QueuedConnection);
    });
}

void PagePublisher::allowPictures(const QString &markdown, const QSet<QByteArray> &named)
{
    m_profile->gate().setAllowedPictures(named);
    m_profile->pictures().setDocument(markdown, m_folder.toLocalFile(), named);
}

} // namespace tessaly
