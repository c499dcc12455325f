#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <functional>

namespace tessaly {

/// The Markdown text with the addresses of its pictures in another folder: each "file://…/Assets/NAME" whose name
/// `isPicture` accepts becomes `folder`, a percent-encoded path that begins with "/", and "/NAME". All else stays as it
/// is, byte for byte.
[[nodiscard]] QByteArray withPicturesIn(const QByteArray &markdown, QByteArrayView folder,
                                        const std::function<bool(QByteArrayView name)> &isPicture);

} // namespace tessaly
