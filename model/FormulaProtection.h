#pragma once

#include <QString>

namespace tessaly {

/// Markdown in which the formulas between $…$, $$…$$, \(…\) and \[…\] (outside code) reach the reader of the parsed
/// text as they were written: every character that a Markdown parser would take for its own (CommonMark 0.30, backslash
/// escapes, emphasis, line starts) gets a backslash. A text without such characters in formulas is returned unchanged.
[[nodiscard]] QString protectFormulas(const QString &markdown);

} // namespace tessaly
