#pragma once

#include <QList>
#include <QStringView>

namespace tessaly {

/// A part of a text, [begin, end).
struct TextRange
{
    qsizetype begin = 0;
    qsizetype end = 0;
};

/// The code blocks of a Markdown text, fenced and indented (CommonMark 0.30, 4.4 and 4.5), also within lists and
/// quotes: in the order of the text, fences included; a block may be told in several pieces.
[[nodiscard]] QList<TextRange> codeBlocks(QStringView markdown);

} // namespace tessaly
