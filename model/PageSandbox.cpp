#include "model/PageSandbox.h"

#include "model/MarkdownPage.h"

#include <QCryptographicHash>
#include <QRegularExpression>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

/// The hashes of the page's inline scripts, as a policy lists them. MarkdownPage escapes both tags in the user's text,
/// so this finds exactly the scripts that the HTML parser sees.
QByteArray scriptHashes(const QByteArray &page)
{
    static const QByteArray start = "<script>";
    static const QByteArray end = "</script>";
    QByteArray hashes;
    for (qsizetype at = page.indexOf(start); at >= 0; at = page.indexOf(start, at)) {
        at += start.size();
        const qsizetype length = page.indexOf(end, at) - at;
        const QByteArray hash =
            QCryptographicHash::hash(QByteArrayView(page).sliced(at, length), QCryptographicHash::Sha256);
        hashes += "'sha256-" + hash.toBase64() + "' ";
        at += length;
    }
    return hashes;
}

} // namespace

QByteArray sandboxedPage(const QByteArray &markup)
{
    // Normalized like the HTML parser's input, because the browser hashes the parsed script.
    QByteArray page = markup;
    page.replace("\r\n", "\n").replace('\r', '\n').replace(QByteArrayView("\0", 1), "\xEF\xBF\xBD");
    static const QByteArray charset = R"(<meta charset="utf-8">)";
    const QByteArray packages = packageRoot.toLatin1() + "npm/";
    const QByteArray policy = R"(<meta http-equiv="Content-Security-Policy" content="default-src 'none';script-src )" +
                              scriptHashes(page) + packages + ";style-src 'unsafe-inline' " + packages + ";font-src " +
                              packages + R"(;img-src data: https: )" + pictureRoot.toLatin1() +
                              R"(;base-uri 'none';form-action 'none'">)";
    const qsizetype place = page.indexOf(charset) + charset.size();
    QByteArray result;
    result.reserve(page.size() + policy.size());
    return result.append(page.first(place)).append(policy).append(QByteArrayView(page).sliced(place));
}

QSet<QByteArray> namedAddresses(const QString &markdown)
{
    static const QRegularExpression address(uR"(https://[^\s<>"'`]+)"_s, QRegularExpression::CaseInsensitiveOption);
    QSet<QByteArray> result;
    QRegularExpressionMatchIterator matches = address.globalMatch(markdown);
    while (matches.hasNext()) {
        QString text = matches.next().captured();
        text.replace(u"&amp;"_s, u"&"_s);
        // Limited, because a line of brackets would otherwise take quadratic time.
        constexpr int mostEnds = 8;
        for (int ends = 0; ends < mostEnds && !text.isEmpty(); ++ends) {
            result.insert(canonicalAddress(QUrl(text)));
            const qsizetype bracket = std::max(text.lastIndexOf(u')'), text.lastIndexOf(u']'));
            text.truncate(std::max<qsizetype>(bracket, 0));
        }
    }
    return result;
}

bool namesFile(const QString &markdown, const QString &path)
{
    const auto plain = [](const QString &text) {
        QString result = QUrl::fromPercentEncoding(text.toUtf8());
        return result.remove(u'\\').replace(u"&amp;"_s, u"&"_s);
    };
    return plain(markdown).contains(plain(path));
}

QByteArray canonicalAddress(const QUrl &url)
{
    QUrl result = url;
    if (result.path().isEmpty())
        result.setPath(u"/"_s);
    return result.toEncoded(QUrl::FullyEncoded | QUrl::RemoveFragment | QUrl::NormalizePathSegments);
}

} // namespace tessaly
