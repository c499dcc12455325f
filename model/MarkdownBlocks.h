#pragma once

#include <QList>
#include <QStringView>

namespace tessaly {

/// A part of a Markdown text, [begin, end), whose signs are no Markdown.
struct LiteralBlock
{
    enum class Kind {
        Code, ///< Shown as it stands.
        Html, ///< Read as HTML; the text between its tags is text like any other.
    };

    qsizetype begin = 0;
    qsizetype end = 0;
    Kind kind = Kind::Code;
};

/// The blocks of a Markdown text that are not parsed: code, fenced, indented (CommonMark 0.30, 4.4 and 4.5) or in a
/// <pre> element, comments, and HTML blocks (4.6), also within lists and quotes: in the order of the text, fences and
/// tags included; a block may be told in several pieces.
[[nodiscard]] QList<LiteralBlock> literalBlocks(QStringView markdown);

} // namespace tessaly
