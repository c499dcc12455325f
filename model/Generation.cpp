#include "model/Generation.h"

#include <QDateTime>
#include <QStringList>
#include <QTimeZone>
#include <QUrl>

#include <algorithm>
#include <array>
#include <cmath>

namespace tessaly {

namespace {

using namespace Qt::StringLiterals;

// In the order of GenerationReason. They are part of the file names.
constexpr std::array reasonWords{"hourly"_L1, "clear"_L1,   "unlink"_L1, "link"_L1,  "firstsync"_L1,
                                 "sync"_L1,   "restore"_L1, "import"_L1, "update"_L1};

const QString momentFormat = u"yyyyMMdd'T'HHmmsszzz'Z'"_s;
constexpr QLatin1StringView extension = ".sqlite"_L1;

} // namespace

QString generationFileName(const Generation &generation)
{
    const auto milliseconds = static_cast<qint64>(std::llround(generation.moment.unixSeconds() * 1000));
    QStringList parts{QDateTime::fromMSecsSinceEpoch(milliseconds, QTimeZone::utc()).toString(momentFormat),
                      reasonWords.at(static_cast<size_t>(generation.reason))};
    if (!generation.detail.isEmpty())
        parts.append(QString::fromLatin1(QUrl::toPercentEncoding(generation.detail, {}, "-")));
    parts.append(generation.digest);
    return parts.join(u'-') + extension;
}

std::optional<Generation> generationFromFileName(const QString &name)
{
    if (!name.endsWith(extension))
        return std::nullopt;
    const QStringList parts = name.chopped(extension.size()).split(u'-');
    if (parts.size() < 3 || parts.size() > 4)
        return std::nullopt;
    QDateTime moment = QDateTime::fromString(parts.constFirst(), momentFormat);
    moment.setTimeZone(QTimeZone::utc());
    const auto word = std::find(reasonWords.cbegin(), reasonWords.cend(), parts.at(1));
    if (!moment.isValid() || word == reasonWords.cend() || parts.constLast().isEmpty())
        return std::nullopt;
    // lint-allow(instant): the text is in UTC
    const auto milliseconds = static_cast<double>(moment.toMSecsSinceEpoch());
    return Generation{.moment = Instant::fromUnixSeconds(milliseconds / 1000),
                      .reason = static_cast<GenerationReason>(word - reasonWords.cbegin()),
                      .detail = parts.size() == 4 ? QUrl::fromPercentEncoding(parts.at(2).toLatin1()) : QString(),
                      .digest = parts.constLast()};
}

} // namespace tessaly
