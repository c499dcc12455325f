#include "model/MarkdownPage.h"

#include <QFile>
#include <QHash>
#include <QRegularExpression>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

QString imageType(const QUrl &url)
{
    static const QHash<QString, QString> types{
        {u"jpg"_s, u"image/jpeg"_s},  {u"jpeg"_s, u"image/jpeg"_s}, {u"gif"_s, u"image/gif"_s},
        {u"webp"_s, u"image/webp"_s}, {u"heic"_s, u"image/heic"_s}, {u"svg"_s, u"image/svg+xml"_s},
    };
    const QString name = url.fileName();
    const QString extension = name.mid(name.lastIndexOf(u'.') + 1).toLower();
    return types.value(extension, u"image/png"_s);
}

/// A page from web/ with the text inserted.
QString page(const QString &name, const QString &markdown)
{
    static const QString place = u"@MARKDOWN@"_s;
    QFile file(u":/tessaly-pages/"_s + name);
    const QString markup = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
    const qsizetype at = markup.indexOf(place);
    return markup.first(at) + templateLiteralText(markdown) + markup.sliced(at + place.size());
}

} // namespace

QString embeddingLocalImages(const QString &markdown, const FileReader &readFile)
{
    static const QRegularExpression link(uR"(!\[([^\]]*)\]\((file://[^)]+)\))"_s);
    QString result;
    qsizetype copied = 0;
    QRegularExpressionMatchIterator matches = link.globalMatch(markdown);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QUrl url(match.captured(2));
        const std::optional<QByteArray> bytes = url.isValid() ? readFile(url) : std::nullopt;
        if (!bytes)
            continue;
        result += QStringView(markdown).mid(copied, match.capturedStart() - copied);
        result += u"!["_s + match.captured(1) + u"](data:"_s + imageType(url) + u";base64,"_s +
                  QString::fromLatin1(bytes->toBase64()) + u')';
        copied = match.capturedEnd();
    }
    if (copied == 0)
        return markdown;
    result += QStringView(markdown).mid(copied);
    return result;
}

QString templateLiteralText(const QString &text)
{
    QString result = text;
    result.replace(u'\\', u"\\\\"_s).replace(u'`', u"\\`"_s).replace(u"${"_s, u"\\${"_s);
    // An HTML parser looks for these in every inline script, even inside a literal.
    static const QRegularExpression scriptSequence(u"<(?=/script|script|!--)"_s,
                                                   QRegularExpression::CaseInsensitiveOption);
    return result.replace(scriptSequence, u"<\\"_s);
}

QString markdownPage(const QString &markdown)
{
    return page(u"preview.html"_s, markdown);
}

QString inlineStylePage(const QString &markdown)
{
    return page(u"copy.html"_s, markdown);
}

} // namespace tessaly
