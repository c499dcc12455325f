#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>
#include <QUrl>

namespace tessaly {

/// The page (UTF-8, from MarkdownPage) with a policy (Content Security Policy Level 3) in its head. Only the page's own
/// scripts, identified by their hashes, and those of packageRoot run. Pictures come as data, by https or from
/// pictureRoot. The policy blocks everything else, such as frames, forms and base addresses.
[[nodiscard]] QByteArray sandboxedPage(const QByteArray &markup);

/// The addresses in the text that begin with https, in the form of canonicalAddress. Where an address ends is not
/// always clear from the text around it, so each possible end gives one.
[[nodiscard]] QSet<QByteArray> namedAddresses(const QString &markdown);

/// Whether the text names a local file by its absolute path: plainly, encoded as in an address, or with the escapes of
/// Markdown and HTML.
[[nodiscard]] bool namesFile(const QString &markdown, const QString &path);

/// One spelling for all that mean the same place: encoded, without fragment, the root as "/".
[[nodiscard]] QByteArray canonicalAddress(const QUrl &url);

} // namespace tessaly
