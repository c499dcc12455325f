#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

namespace tessaly {

/// Where the pages load scripts and styles from: the root of a package server with the same paths as a public one
/// ("npm/marked/marked.min.js").
inline const QString packageRoot = QStringLiteral("tessaly://packages/");

/// Where the preview requests pictures that it cannot load itself. The name of the page follows, so that no other
/// page's pictures are reused; the query is the address as written in the document.
inline const QString pictureRoot = packageRoot + QStringLiteral("picture/");

/// Reads a local file; nothing when that fails.
using FileReader = std::function<std::optional<QByteArray>(const QUrl &)>;

/// The Markdown with each image link to a readable local file ("![…](file://…)") turned into a data URL; the type
/// comes from the file's extension, PNG when it is unknown.
[[nodiscard]] QString embeddingLocalImages(const QString &markdown, const FileReader &readFile);

/// The text as the inside of a JavaScript template literal within an inline script (ECMA-262, HTML): the literal's
/// value is the text, and nothing in it ends the literal or the script.
[[nodiscard]] QString templateLiteralText(const QString &text);

/// The preview page: parses the Markdown, highlights code and typesets formulas with the scripts of packageRoot.
[[nodiscard]] QString markdownPage(const QString &markdown);

/// The page that turns Markdown into HTML with inline styles for pasting: formulas become images of a public service,
/// every element carries its computed style, none keeps class or id. Sets `window.brennicCopyReady` when done.
[[nodiscard]] QString inlineStylePage(const QString &markdown);

} // namespace tessaly
