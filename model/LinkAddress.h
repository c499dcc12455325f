#pragma once

#include <QString>
#include <QStringView>
#include <QUrl>

#include <optional>

namespace tessaly {

/// Without blanks and without the invisible characters that come along when a link is copied, such as zero-width
/// blanks, marks of direction and byte order marks.
[[nodiscard]] QString trimmedLink(QStringView text);

/// The address of a calendar on the web; nothing for anything but an http or https link.
[[nodiscard]] std::optional<QUrl> calendarAddress(const QString &link);

/// The link's last path component without its extension; "iCalendar" where there is none.
[[nodiscard]] QString linkName(const QUrl &address);

/// A webcal or webcals link as the https link that it stands for; nothing for other links.
[[nodiscard]] std::optional<QString> webcalAsHttps(QStringView text);

} // namespace tessaly
