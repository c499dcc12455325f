#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

namespace tessaly {

/// Where the pages find the scripts and styles that they load: the root of a package server with the paths of a
/// public one ("npm/marked/marked.min.js").
inline const QString packageRoot = QStringLiteral("tessaly://packages/");

/// Where the preview asks for pictures that it cannot load: what follows is the name of the page, so that nothing of
/// another is used again, and as the query the address that the document has.
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
[[nodiscard]] QString markdownPage(const QString &markdown, const FileReader &readFile);

/// The page that turns Markdown into HTML with inline styles for pasting: formulas become images of a public service,
/// every element carries its computed style, none keeps class or id. `window.brennicCopyReady` reports when it is done.
[[nodiscard]] QString inlineStylePage(const QString &markdown);

} // namespace tessaly
