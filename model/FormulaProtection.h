#pragma once

#include <QString>

namespace tessaly {

/// Markdown in which the formulas between $…$, $$…$$, \(…\) and \[…\] (outside code) reach the reader of the parsed
/// text as they were written: every character that a Markdown parser would take for its own (CommonMark 0.30, backslash
/// escapes, emphasis, line starts) gets a backslash. So does an escaped dollar that another could make a formula with.
/// A text without such characters is returned unchanged.
[[nodiscard]] QString protectFormulas(const QString &markdown);

/// Markdown for a page that takes $…$ and $$…$$ out of the text before it parses it: dollars within code, and escaped
/// ones, cannot be taken for their delimiters (U+FDD1 stands for each, until the text is parsed), and \(…\) and \[…\],
/// which such a page does not know, reach the reader as they were written. A text without any of these is returned
/// unchanged.
[[nodiscard]] QString protectDollars(const QString &markdown);

} // namespace tessaly
