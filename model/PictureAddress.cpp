#include "model/PictureAddress.h"

#include <algorithm>

namespace tessaly {

namespace {

constexpr QByteArrayView scheme = "file://";
constexpr QByteArrayView folderName = "/Assets/";

/// Whether the character ends an address in Markdown or HTML.
bool endsAddress(char c)
{
    return static_cast<unsigned char>(c) <= ' ' || QByteArrayView("()<>\"'").contains(c);
}

} // namespace

QByteArray withPicturesIn(const QByteArray &markdown, QByteArrayView folder,
                          const std::function<bool(QByteArrayView name)> &isPicture)
{
    QByteArray result;
    qsizetype copied = 0;
    for (qsizetype start = markdown.indexOf(scheme); start >= 0;
         start = markdown.indexOf(scheme, std::max(start + 1, copied))) {
        const auto end = std::find_if(markdown.cbegin() + start, markdown.cend(), endsAddress);
        const QByteArrayView address(markdown.cbegin() + start, end);
        const qsizetype place = address.lastIndexOf(folderName);
        const QByteArrayView name = place < 0 ? QByteArrayView() : address.sliced(place + folderName.size());
        if (name.isEmpty() || !isPicture(name))
            continue;
        result += markdown.sliced(copied, start - copied);
        result += scheme;
        result += folder;
        result += '/';
        result += name;
        copied = start + address.size();
    }
    return copied == 0 ? markdown : result + markdown.sliced(copied);
}

} // namespace tessaly
