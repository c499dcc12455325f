#include "model/LinkAddress.h"

namespace tessaly {

QString trimmedLink(QStringView text)
{
    const auto isInvisible = [](QChar c) {
        return c.isSpace() || c.category() == QChar::Other_Format || c.category() == QChar::Other_Control;
    };
    while (!text.isEmpty() && isInvisible(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isInvisible(text.back()))
        text.chop(1);
    return text.toString();
}

std::optional<QUrl> calendarAddress(const QString &link)
{
    const QUrl url(link);
    const bool isHttp = url.scheme() == u"http" || url.scheme() == u"https";
    return url.isValid() && !url.host().isEmpty() && isHttp ? std::optional(url) : std::nullopt;
}

QString linkName(const QUrl &address)
{
    QString path = address.path(QUrl::FullyEncoded);
    while (path.endsWith(u'/'))
        path.chop(1);
    const QString name = QUrl::fromPercentEncoding(path.section(u'/', -1).toUtf8());
    const qsizetype dot = name.lastIndexOf(u'.');
    const bool hasExtension = dot > 0 && dot < name.size() - 1;
    return name.isEmpty() ? QStringLiteral("iCalendar") : hasExtension ? name.left(dot) : name;
}

std::optional<QString> webcalAsHttps(QStringView text)
{
    const QString link = trimmedLink(text);
    const QString scheme = link.section(u':', 0, 0).toLower();
    const bool isWebcal = scheme == u"webcal" || scheme == u"webcals";
    return isWebcal && link.size() > scheme.size() ? std::optional(QStringLiteral("https") + link.sliced(scheme.size()))
                                                   : std::nullopt;
}

} // namespace tessaly
